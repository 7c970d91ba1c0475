#pragma once
#include <string>

namespace ketrel {

class App;

// Cuts the echo of our own bytes off a read of the one-wire K-line. `raw` and `lastRequestHex`
// are hex text; the result is the shortest tail of `raw` whose head is the end of what was
// sent (all of `raw` when none is), empty when all of `raw` is echo.
std::string KeshStripEcho(const std::string& raw, const std::string& lastRequestHex);

// frmMain.KeshDelay has ticked: the answer to the last request is read on the ISO 9141 or
// the KWP 2000 routine.
void KeshDelayTick(App& app);

// KeshReceiveISO and KeshReceiveKWP, one routine: reads KeshMSComm into Text2, strips the echo
// into txtKesh and decodes. While a log plays, RawFrame holds a recorded txtKesh and is
// decoded as it stands, and nothing is sent.
void KeshReceiveISO(App& app);
void KeshReceiveKWP(App& app);

// Decodes the text of txtKesh as an ISO 9141 / KWP 2000 answer and sends the next request.
void KeshDecode(App& app);

}  // namespace ketrel
