#pragma once

#include "link/converters.h"

namespace ketrel {

class App;

// The count-byte converter's branch of frmConnecting.StartTimer: opens BR3Connecting, wakes
// the converter, probes the protocols from the BR3Start row, reads the support lists and PID
// 1C, and starts the request cycle. Runs to its end inside the timer's handler, pumping.
// Throws SerialError when the port can't be opened; Retry when the user asks for the connect
// again after "No Response".
ConnectOutcome BR3Connect(App& app);

// The one-shot read of BR3Connecting when BR3ConnectDelay ticks: the answer as hex text in
// txtConnectingInput and a "RECEIVED:  " log line.
void BR3ConnectDelayTick(App& app);

// The Mode 01 support list of the protocol being probed; goes on to the Mode 02 list and PID
// 1C when it is answered, else sets the probe's flag.
void BR3ConnectMode1List(App& app);
// The Mode 02 support list; goes on to PID 1C whether answered or not.
void BR3ConnectMode2List(App& app);
// PID 1C, the link up and the start of the request cycle.
void BR3ConnectPid1C(App& app);

// The handlers of the count-byte converter's connecting timer and scan timer.
void InstallBr3(App& app);
// The type word of a log recorded now: "BR3" on J1850, "BR3ISO" on ISO 9141 and KWP 2000.
const char* Br3LogType(const App& app);

}  // namespace ketrel
