// The enabled state of the main window's entries and buttons over a whole session with the
// simulated text converter: at start, while connecting, connected, and after a disconnect.
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <map>

#include "core/application.h"
#include "core/startup.h"
#include "sim/dorvane_converter.h"
#include "sim/sim_serial_port.h"
#include "sim/sim_wire.h"
#include "support/test_app.h"

namespace ketrel::test {
namespace {

// The phases in which the states are read.
enum Phase { kStart, kConnecting, kConnected, kAfter, kPhases };

// The whole program on virtual time with the simulated converter on port 1.
struct Program {
    Program() : t(&ports) {
        ports.plug(1, wire);
        std::filesystem::create_directories(t.dir.path() / "Log");
        t.settings.save(kAppName, kSection, "OBDIIHardware", kDorvane);
        t.settings.save(kAppName, kSection, "ConnectPort", "1");
        InstallApplication(*t);
        StartApplication(*t);
        t.loop.runFor(2000);  // past the splash screen
    }
    FrmMain& m() { return t->frmMain(); }

    // Runs the session through its phases, reading every control's state in each.
    std::map<std::string, std::array<bool, kPhases>> run(const std::vector<Control*>& controls) {
        std::map<std::string, std::array<bool, kPhases>> seen;
        auto read = [&](Phase p) {
            for (Control* c : controls)
                seen[name(*c)][p] = c->enabled();
        };
        read(kStart);
        bool taken = false;
        Timer watch(t.loop.scheduler(), 5);
        watch.setHandler([&] {
            if (taken || !t->Connecting) return;
            taken = true;
            read(kConnecting);
        });
        watch.start();
        m().mnuVehicleConnect.click();  // returns once the connecting screen has gone
        watch.stop();
        EXPECT_TRUE(taken);
        EXPECT_TRUE(t->Connected);
        t.loop.runFor(1000);
        read(kConnected);
        m().mnuVehicleDisconnect.click();
        read(kAfter);
        return seen;
    }
    static std::string name(Control& c) {
        if (c.kind() == ControlKind::ToolButton)
            return "button " + static_cast<ToolButton&>(c).key();
        return c.fullName();
    }

    sim::SimSerialPortFactory ports;
    TestApp t;
    sim::SimVehicle vehicle = sim::SimVehicle::Default();
    sim::DorvaneConverter converter{vehicle};
    sim::SimWire wire{t.loop.scheduler(), converter};
};

struct Row {
    const char* control;
    std::array<bool, kPhases> on;  // start, connecting, connected, after
};

void check(const std::vector<Row>& rows) {
    Program p;
    FrmMain& m = p.m();
    std::vector<Control*> controls;
    for (const Row& r : rows) {
        Control* c = m.findControl(r.control);
        if (!c) c = m.buttonByKey(r.control);
        ASSERT_NE(c, nullptr) << r.control;
        controls.push_back(c);
    }
    auto seen = p.run(controls);
    const char* phases[] = {"start", "connecting", "connected", "after"};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        for (int ph = 0; ph < kPhases; ++ph) {
            EXPECT_EQ(seen[Program::name(*controls[i])][ph], rows[i].on[ph])
                << rows[i].control << " " << phases[ph];
        }
    }
}

TEST(MainScreenStates, FollowTheSessionFromStartToDisconnect) {
    check({
        {"mnuVehicleConnect", {1, 0, 0, 1}},
        {"Connect", {1, 0, 0, 1}},
        // Ending a session leaves the entry on; pressing it again only ends the
        // ended session once more.
        {"mnuVehicleDisconnect", {0, 1, 1, 1}},
        {"Disconnect", {0, 1, 1, 0}},
        {"mnuOptionSettings", {1, 0, 0, 1}},
        {"cmdRequestTC", {0, 0, 1, 0}},
        {"cmdRequestFF", {0, 0, 1, 0}},
        {"cmdRequestPending", {0, 0, 1, 0}},
        {"cmdClearCodes", {0, 0, 1, 0}},
        {"cmdRequestInfo", {0, 0, 1, 0}},
        {"mnuVehicleRequestTC", {0, 0, 1, 0}},
        {"mnuVehicleRequestFF", {0, 0, 1, 0}},
        {"mnuVehicleRequestPending", {0, 0, 1, 0}},
        {"mnuVehicleClear", {0, 0, 1, 0}},
        {"mnuVehicleInfo", {0, 0, 1, 0}},
        {"mnuAboutHardware", {0, 0, 1, 0}},
        {"mnuViewMode6", {0, 0, 1, 0}},
        {"Mode6", {0, 0, 1, 0}},
        {"mnuEditPidsOver", {1, 1, 1, 1}},
        {"mnuHelpHistory", {1, 1, 1, 1}},
        {"mnuOptionData", {1, 1, 1, 1}},
        {"mnuFileOpen", {1, 0, 0, 1}},
        // The log controller comes with the session.
        {"mnuEditRecord", {0, 0, 1, 0}},
        {"Controller", {0, 0, 1, 0}},
        {"mnuViewCodes", {1, 1, 1, 1}},
        {"DTC", {1, 1, 1, 1}},
        // The data displays are in: their entries follow the session.
        {"Custom Display", {0, 0, 1, 0}},
        {"mnuViewCoolant", {0, 0, 1, 0}},
        {"mnuViewMPG", {0, 0, 1, 0}},
        {"mnuViewResetMPG", {0, 0, 1, 0}},
        {"mnuOptionList", {0, 0, 1, 0}},
        {"mnuViewMode5", {0, 0, 1, 0}},
        {"Mode5", {0, 0, 1, 0}},
        {"mnuViewScope", {1, 1, 1, 1}},
    });
}

}  // namespace
}  // namespace ketrel::test
