#pragma once

#include "link/converters.h"

namespace ketrel {

class App;

// The raw K-line cables' branch of frmConnecting.StartTimer: opens frmMain.KeshMSComm, idles
// the line 4 s with a countdown, clocks out the 5-baud address 0x33 with the port's break, or
// arms the fast initialisation (KeshStart 3). The handshake then runs on the port's events and
// KeshTimeOut; this routine pumps until the link is up, the user cancels, or "No Communication"
// is answered. Retry when the user asks for the whole connect again. Throws SerialError when
// the port can't be opened.
ConnectOutcome KeshConnect(App& app);

// KeshMSComm's received-data event during the handshake: each byte as a log line, and every
// byte but 0x00 appended to txtConnectingInput, the handshake running on each append.
void KeshOnComm(App& app);
// The handshake on the text of txtConnectingInput: sync and key bytes, then the vehicle's
// inverted address and the first request.
void KeshConnectingInputChanged(App& app);
// The answer to the ISO 9141 or the KWP 2000 Mode 01 PID 00 request of the connect.
void KeshCheckISO(App& app);
void KeshCheckKWP(App& app);
// The fast initialisation: 0xF0 at 200 baud, then StartCommunication at 10400.
void KeshFastInit(App& app);
// KeshTimeOut has expired: the fast initialisation or "No Communication".
void KeshTimeOutTick(App& app);

// The handlers of the K-line port and timers.
void InstallKesh(App& app);
// The type word of a log recorded now: "KESHISO-9141" or "TACTRIXISO-9141".
const char* KeshLogType(const App& app);

}  // namespace ketrel
