// The auto-detect sweep over real Qt serial ports, against ketrel-sim on a pseudo-terminal
// mapped to one port number while the others map to missing devices. A few seconds per case.
#include <gtest/gtest.h>

#include <string>

#include "link/auto_detect.h"
#include "link/port_map.h"
#include "qt/qt_fixture.h"
#include "screens/frm_auto_detect.h"
#include "system/child_process.h"

namespace ketrel {
namespace {

TEST(AutoDetectPorts, FindsTheSimulatedConverterOnItsPortAndSavesIt) {
    const struct {
        const char* converter;
        const char* vehicle;
        int port;
        const char* hardware;
    } cases[] = {{"dorvane", "idle_then_drive.vehicle", 3, kDorvane},
                 {"br3", "pwm.vehicle", 2, kBr3}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.converter);
        test::ChildProcess sim(KETREL_SIM_BINARY,
                               {"--converter", c.converter, "--vehicle",
                                std::string(KETREL_DATA_DIR) + "/sim/" + c.vehicle});
        std::string pty = sim.firstLine();
        ASSERT_EQ(pty.rfind("/dev/pts/", 0), 0u) << pty << sim.errors();
        test::GuiApp g;  // real serial ports
        for (int n = 1; n <= 4; ++n)
            SavePortDevicePath(g.settings, n, n == c.port ? pty : (g.dir.path() / "missing-tty").string());
        g.dialogs.answerNext(MsgAnswer::Cancel);  // a failed sweep ends instead of retrying
        FrmAutoDetect& d = *AutoDetectScreen(g.app());

        d.show();  // the text-converter sweep runs inside
        ASSERT_TRUE(test::WaitFor([&] { return d.cmdConnectAD.visible(); }, 6000))
            << d.Label1[0].text() << ", " << g.dialogs.shown().size() << " questions";
        EXPECT_EQ(d.Label1[0].text(), std::string(c.hardware) + " FOUND");
        // The probes let go of the port for the connect, and the sweep's timers stop.
        EXPECT_FALSE(d.MSComm2->portOpen() || d.BR3AutoDetect->portOpen() || d.TimeOut.enabled() ||
                     d.Timer1.enabled());
        EXPECT_EQ(g.settings.get(kAppName, kSection, "ConnectPort"), std::to_string(c.port));
        EXPECT_EQ(g.settings.get(kAppName, kSection, "OBDIIHardware"), c.hardware);
        d.unload();
    }
}

}  // namespace
}  // namespace ketrel
