#pragma once
#include <filesystem>

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

}  // namespace ketrel::test
