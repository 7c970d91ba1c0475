#include <gtest/gtest.h>

#include <QLabel>

#include "display/gauges.h"
#include "platform/text_convert.h"
#include "display/scope.h"
#include "link/port_map.h"
#include "qt/picture_view.h"
#include "qt_fixture.h"
#include "screens/frm_guage.h"
#include "screens/frm_mult_guage.h"
#include "screens/frm_scope.h"

namespace ketrel {
namespace {

using test::GuiApp;
using test::WaitFor;

// Lets the real clock run for ms while Qt works.
void RunFor(int ms) {
    QElapsedTimer t;
    t.start();
    WaitFor([&] { return t.elapsed() >= ms; }, ms + 1000);
}

// The program connected to the in-process simulated car behind the text converter: the
// sample car with fuel pressure, idling for only a second, so the values move at once.
struct ConnectedGui {
    ConnectedGui() {
        const std::string data = std::string(KETREL_DATA_DIR) + "/sim/idle_then_drive.vehicle";
        auto quick = test::EditedCopy(data, "idle-time  20", "idle-time  1", dir.path() / "q");
        auto car = test::EditedCopy(quick.string(), "mode1      01 03 04 05 06 07 0B",
                                    "mode1      01 03 04 05 06 07 0A 0B", dir.path() / "car");
        for (auto [key, value] : {std::pair{"OBDIIHardware", kDorvane},
                                  {"ConnectPort", "1"},
                                  {"Log File", "False"},
                                  {"Temp", "F"},
                                  {"Pressure", "PSI"},
                                  {"Speed", "MPH"}})
            g.settings.save(kAppName, kSection, key, value);
        SavePortDevicePath(g.settings, 1, "sim:" + car.string());
        g.startPastSplash();
        g.app().frmMain().mnuVehicleConnect.click();
    }
    test::TempDir dir;
    GuiApp g;
};

TEST(DisplayWindows, TheScopeTracesRpmAndBothGaugeScreensFollowTheCar) {
    ConnectedGui c;
    GuiApp& g = c.g;
    App& app = g.app();
    ASSERT_TRUE(app.Connected);
    FrmMain& m = app.frmMain();
    ASSERT_TRUE(WaitFor([&] { return Val(m.lblRPM.text()) > 0; }, 30000));

    // The scope, opened from the main menu, at "2x" for some seconds of trace.
    m.mnuViewScope.click();
    FrmScope& s = *ScopeScreen(app);
    QWidget* scope = g.desktop->windows().windowOf("frmScope");
    ASSERT_NE(scope, nullptr);
    EXPECT_EQ(scope->windowTitle(), "SCOPE GRAPH");
    s.mnuRPM.click();
    s.cmdIncrease.click();
    EXPECT_TRUE(WaitFor([&] { return s.Signal.ops().size() > 40; }, 30000));
    auto* lblScopePID = scope->findChild<QLabel*>("lblScopePID");
    ASSERT_NE(lblScopePID, nullptr);
    EXPECT_EQ(lblScopePID->text(), "RPM");
    EXPECT_EQ(scope->findChild<QLabel*>("lbl5")->text(), "10000 -");
    EXPECT_EQ(scope->findChild<PictureView*>("Signal")->size(), QSize(600, 300));
    test::Screenshot(scope, "scope_rpm");
    s.unload();
    EXPECT_TRUE(m.enabled());

    // The tachometer through its toolbar button.
    m.tbGuage.click();
    FrmGuage& rpm = *GuageScreen(app);
    ASSERT_TRUE(rpm.loaded());
    QWidget* tacho = g.desktop->windows().windowOf("frmGuage");
    ASSERT_NE(tacho, nullptr);
    EXPECT_TRUE(WaitFor([&] { return rpm.lblRPM[27].text() != "0"; }, 20000));
    RunFor(500);
    EXPECT_EQ(tacho->findChild<QLabel*>("lblRPM(27)")->text().toStdString(), rpm.lblRPM[27].text());
    test::Screenshot(tacho, "gauge_rpm");
    rpm.unload();

    // The five dials, after their lamp test.
    m.mnuViewMultiGuage.click();
    FrmMultGuage& multi = *MultGuageScreen(app);
    QWidget* dials = g.desktop->windows().windowOf("frmMultGuage");
    ASSERT_NE(dials, nullptr);
    EXPECT_TRUE(WaitFor([&] { return multi.Label1[9].text() == "88888"; }, 10000));
    test::Screenshot(dials, "gauges_lamp_test");
    EXPECT_TRUE(WaitFor(
        [&] { return Val(multi.Label1[9].text()) > 0 && multi.Label1[9].text() != "88888"; },
        20000));
    RunFor(1000);
    EXPECT_EQ(dials->findChild<QLabel*>("Label1(13)")->text().toStdString(),
              multi.Label1[13].text());
    test::Screenshot(dials, "gauges_multi");
    multi.unload();
    m.mnuVehicleDisconnect.click();
}

}  // namespace
}  // namespace ketrel
