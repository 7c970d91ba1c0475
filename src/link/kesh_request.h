#pragma once
#include <string>

namespace ketrel {

class App;

// The two vehicle protocols of the raw K-line cables: ISO 9141 ("03") and KWP 2000 ("04").
enum class KeshLine { Iso, Kwp };

// One tick of the scan chain (KeshRequestISO, KeshRequestKWP): sends on frmMain.KeshMSComm the
// request the one-shot flags or the PID cycle choose, keeps its hex text in LastRequestHex for
// the echo strip, and arms KeshDelay. Returns without arming when the port is closed or the
// session is over.
void KeshRequest(App& app, KeshLine line);
// One step of the freeze-frame sweep (KeshRequestFreezeISO, KeshRequestFreezeKWP).
void KeshRequestFreeze(App& app, KeshLine line);
// The request of the extended list (KeshRequestNewISO, KeshRequestNewKWP): PIDs 0x21 to 0x4E
// while CustomListActive is up.
void KeshRequestNew(App& app, KeshLine line);

// The request routine of the protocol in ProtocolCode; nothing on any other code.
void KeshRequestNext(App& app);

}  // namespace ketrel
