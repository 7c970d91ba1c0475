#pragma once
#include <string>
#include <vector>

#include "core/session.h"
#include "link/conn_log.h"
#include "sim/dorvane_converter.h"
#include "sim/sim_serial_port.h"
#include "sim/sim_wire.h"
#include "support/test_app.h"

namespace ketrel::test {

// What every session rig sets up: the user chose `hardware` on port 1 with the connecting log
// on, a 10 s watchdog and this request delay; then the session logic and the main screen.
inline void SetUpSessionRig(TestApp& t, const char* hardware, const char* delay) {
    App& app = *t;
    t.settings.save(kAppName, kSection, "OBDIIHardware", hardware);
    t.settings.save(kAppName, kSection, "ConnectPort", "1");
    app.TimeOut = 10000;
    app.frmMain().TimeOutConnect.setInterval(10000);
    app.SaveInfo = app.ConnectLogEnabled = true;
    app.BR3Delay = delay;
    std::filesystem::create_directories(t.dir.path() / "Log");
    InstallSession(app);
    app.frmMain().load();
}

// The application joined to a simulated text converter on port 1, on virtual time, with the
// session logic installed and the settings a user would have after choosing that converter.
struct DorvaneRig {
    DorvaneRig() : t(&ports) {
        ports.plug(1, wire);
        SetUpSessionRig(t, kDorvane, "180");
    }
    App& app() { return *t; }
    // Everything the converter was asked, in order.
    const std::vector<std::string>& commands() const { return converter.commands(); }
    // Runs the connect command; returns when frmConnecting has gone.
    void connect() { ConnectSession(app()); }
    void run(int ms) { t.loop.runFor(ms); }
    // The connecting log as it stands on disk.
    std::string log() const { return ReadFile(ConnectLog::pathFor(t.dir.path())); }

    sim::SimSerialPortFactory ports;
    TestApp t;
    sim::SimVehicle vehicle = sim::SimVehicle::Default();
    sim::DorvaneConverter converter{vehicle};
    sim::SimWire wire{t.loop.scheduler(), converter};
};

}  // namespace ketrel::test
