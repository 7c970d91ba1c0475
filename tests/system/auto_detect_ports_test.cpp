// The auto-detect sweep over real Qt serial ports, against ketrel-sim on a pseudo-terminal
// mapped to one port number while the others map to missing devices. A few seconds.
#include <gtest/gtest.h>

#include <string>

#include "link/auto_detect.h"
#include "link/port_map.h"
#include "qt/qt_fixture.h"
#include "screens/frm_auto_detect.h"
#include "system/child_process.h"

namespace ketrel {
namespace {

// The count-byte converter on port 2: the text sweep passes over it and the missing devices,
// then the count-byte probe finds it.
TEST(AutoDetectPorts, FindsTheSimulatedConverterOnItsPortAndSavesIt) {
    test::ChildProcess sim(KETREL_SIM_BINARY, {"--converter", "br3", "--vehicle",
                                               std::string(KETREL_DATA_DIR) + "/sim/pwm.vehicle"});
    std::string pty = sim.firstLine();
    ASSERT_EQ(pty.rfind("/dev/pts/", 0), 0u) << pty << sim.errors();
    test::GuiApp g;  // real serial ports
    for (int n = 1; n <= 4; ++n)
        SavePortDevicePath(g.settings, n, n == 2 ? pty : (g.dir.path() / "missing-tty").string());
    g.dialogs.answerNext(MsgAnswer::Cancel);  // a failed sweep ends instead of retrying
    FrmAutoDetect& d = *AutoDetectScreen(g.app());

    d.show();  // the text-converter sweep runs inside
    ASSERT_TRUE(test::WaitFor([&] { return d.cmdConnectAD.visible(); }, 6000))
        << d.Label1[0].text() << ", " << g.dialogs.shown().size() << " questions";
    EXPECT_EQ(d.Label1[0].text(), std::string(kBr3) + " FOUND");
    // The probes let go of the port for the connect, and the sweep's timers stop.
    EXPECT_FALSE(d.MSComm2->portOpen() || d.BR3AutoDetect->portOpen() || d.TimeOut.enabled() ||
                 d.Timer1.enabled());
    EXPECT_EQ(g.settings.get(kAppName, kSection, "ConnectPort"), "2");
    EXPECT_EQ(g.settings.get(kAppName, kSection, "OBDIIHardware"), kBr3);
    d.unload();
}

}  // namespace
}  // namespace ketrel
