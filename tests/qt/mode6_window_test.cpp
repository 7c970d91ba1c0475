#include <gtest/gtest.h>
#include <QApplication>
#include <QLabel>
#include <QTableWidget>

#include "link/port_map.h"
#include "qt/qt_fixture.h"
#include "screens/frm_mode6.h"
#include "sweeps/mode6_sweep.h"

namespace ketrel::test {
namespace {

// The program on the in-process simulated KWP car behind the count-byte converter: a sweep from
// the menu fills the window's grid, the definitions fill the descriptions, and the picture is
// kept for a look.
TEST(Mode6Window, ASweepOnTheSimulatorFillsTheGrid) {
    GuiApp g;
    g.settings.save(kAppName, kSection, "OBDIIHardware", kBr3);
    g.settings.save(kAppName, kSection, "ConnectPort", "1");
    g.settings.save(kAppName, kSection, "BR3 Start", "5");
    g.settings.save(kAppName, kSection, "Log File", "False");
    SavePortDevicePath(g.settings, 1, "sim:" KETREL_DATA_DIR "/sim/iso14230.vehicle");
    g.startPastSplash();
    App& app = g.app();
    app.hooks.Connect();
    ASSERT_TRUE(app.Connected);

    FrmMode6& f = *Mode6Screen(app);
    app.frmMain().mnuViewMode6.click();
    ASSERT_TRUE(f.visible());
    QApplication::processEvents();
    auto* grid = g.find<QTableWidget>("frmMode6", "MSFlexGrid1");
    ASSERT_NE(grid, nullptr);
    // A picture in the middle of the test phase, taken as the status turns to test 3.
    bool during = false;
    const int watch = f.Panel2.observe([&] {
        if (during || f.Panel2.text() != "REQUESTING MODE 6 TEST ID 3...") return;
        during = true;
        Screenshot(g.desktop->windows().windowOf("frmMode6"), "mode6_during_sweep");
    });
    ASSERT_TRUE(WaitFor([&] { return f.Panel1.text() == "END OF PROCESS"; }, 30000));
    f.Panel2.unobserve(watch);
    EXPECT_TRUE(during);
    f.cmdFordDef.click();
    QApplication::processEvents();
    EXPECT_EQ(grid->item(1, 0)->text().toStdString(), "01");
    EXPECT_EQ(grid->item(2, 8)->text().toStdString(), "FAIL");
    EXPECT_EQ(grid->item(1, 2)->text().toStdString(), "HO2S11 Voltage Amplitude Voltage Threshold");
    EXPECT_EQ(g.find<QLabel>("frmMode6", "Panel1")->text().toStdString(), "END OF PROCESS");
    Screenshot(g.desktop->windows().windowOf("frmMode6"), "mode6_after_sweep");
    EXPECT_TRUE(f.unload());
    app.hooks.EndSession();
}

}  // namespace
}  // namespace ketrel::test
