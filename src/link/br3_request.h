#pragma once
#include <string>

namespace ketrel {

class App;

// The four vehicle protocols the count-byte converter scans on. Each request routine is one
// routine over the row of its protocol: frame family, header, flag order and counters.
enum class Br3Line { Pwm, Vpw, Iso, Kwp };

// The line of a ProtocolCode: "01" VPW, "02" PWM, "03" ISO 9141, "04" KWP 2000.
Br3Line Br3LineFor(const std::string& protocolCode);

// One tick of the scan chain (BR3RequestPWM, BR3RequestVPW, BR3RequestISO, BR3RequestKWP):
// sends the request that the one-shot flags or the PID cycle choose on frmMain.BR3MSComm and
// arms BR3Delay. Returns without arming when the port is closed or the session is over.
void BR3Request(App& app, Br3Line line);
// One step of the freeze-frame sweep (BR3RequestFreezePWM and its three siblings).
void BR3RequestFreeze(App& app, Br3Line line);
// The request of the extended list (BR3RequestNewPWM and its three siblings): PIDs 0x21 to
// 0x4E while CustomListActive is up.
void BR3RequestNew(App& app, Br3Line line);

}  // namespace ketrel
