// The simulator's headers come before Qt's, whose keyword macros clash with their names.
#include "flow/car_rig.h"

#include <gtest/gtest.h>

#include <QLabel>

#include "display/gauges.h"
#include "display/scope.h"
#include "qt/graph_windows.h"
#include "qt_fixture.h"
#include "screens/frm_guage.h"
#include "screens/frm_mult_guage.h"
#include "screens/frm_scope.h"

namespace ketrel::test {
namespace {

// The scope and both gauge screens over the text converter and a car with fuel pressure, on
// virtual time: each window shows what its screen holds while the car drives.
TEST(GraphWindows, TheScopeAndBothGaugeScreensShowWhatTheirScreensHold) {
    CarRig r(kDorvane, "default", 1, nullptr,
             [](sim::SimVehicle& v) { v.ecus[0].mode1.insert(0x0A); });
    App& app = r.app();
    InstallScope(app);
    InstallGauges(app);
    RigWindows w(app);
    w.windows.registerView("frmScope",
                           [](Screen& s) { return MakeScopeWindow(static_cast<FrmScope&>(s)); });
    w.windows.registerView("frmGuage",
                           [](Screen& s) { return MakeGuageWindow(static_cast<FrmGuage&>(s)); });
    w.windows.registerView("frmMultGuage", [](Screen& s) {
        return MakeMultGuageWindow(static_cast<FrmMultGuage&>(s));
    });
    w.windows.adoptScreens();
    r.connect();
    ASSERT_TRUE(app.Connected);
    r.run(1500);
    auto text = [&](const char* screen, const char* name) {
        return w.find<QLabel>(screen, name)->text().toStdString();
    };

    FrmScope& scope = *ScopeScreen(app);
    scope.show();
    scope.mnuRPM.click();
    scope.cmdIncrease.click();
    r.run(3000);
    EXPECT_EQ(text("frmScope", "lblScopePID"), scope.lblScopePID.text());
    EXPECT_EQ(text("frmScope", "lblSpeed"), scope.lblSpeed.text());
    w.shot("frmScope", "scope_rpm");
    scope.unload();

    FrmGuage& tacho = *GuageScreen(app);
    tacho.show();
    r.run(2000);
    ASSERT_TRUE(Shown(tacho.lblRPM[27]));
    EXPECT_EQ(text("frmGuage", "lblRPM(27)"), tacho.lblRPM[27].text());
    w.shot("frmGuage", "gauge_rpm");
    tacho.unload();

    FrmMultGuage& dials = *MultGuageScreen(app);
    dials.show();
    r.run(600);
    EXPECT_EQ(text("frmMultGuage", "Label1(9)"), "88888");  // the lamp test
    w.shot("frmMultGuage", "gauges_lamp_test");
    r.run(25000);
    EXPECT_EQ(text("frmMultGuage", "Label1(13)"), dials.Label1[13].text());
    w.shot("frmMultGuage", "gauges_multi");
    dials.unload();
}

}  // namespace
}  // namespace ketrel::test
