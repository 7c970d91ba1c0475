// The simulator's headers come before Qt's, whose keyword macros clash with their names.
#include "flow/car_rig.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QProgressBar>

#include "core/main_screen.h"
#include "display/displays.h"
#include "display/fuel_economy.h"
#include "platform/sqlite_db.h"
#include "qt/display_windows.h"
#include "qt_fixture.h"
#include "screens/frm_custom_data.h"
#include "screens/frm_mpg.h"
#include "screens/frm_real_display.h"

namespace ketrel::test {
namespace {

// The four data displays over a count-byte converter and a VPW pick-up, on virtual time: each
// window shows what its screen holds while the values move.
TEST(DisplayWindows, EachDisplayShowsWhatItsScreenHolds) {
    CarRig r(kBr3, "vpw", 1);
    App& app = r.app();
    FrmMain& m = app.frmMain();
    app.Speed = "MPH";
    app.Pressure = "PSI";
    std::filesystem::create_directories(r.t.dir.path() / "System");
    SqliteDb db;
    ASSERT_TRUE(db.open(MpgStorePath(r.t.dir.path()), true) &&
                db.execScript(ReadFile(std::string(KETREL_DATA_DIR) + "/db/MPGAve1.sql")));
    db.close();
    InstallDisplays(app);
    InstallMainScreen(app);
    RigWindows w(app);
    RegisterDisplayViews(w.windows, app);
    w.windows.adoptScreens();
    r.connect(MsgAnswer::Cancel);
    ASSERT_TRUE(app.Connected);
    r.run(3000);
    auto text = [&](const char* screen, const char* name) {
        return w.find<QLabel>(screen, name)->text().toStdString();
    };

    m.mnuViewRPM.click();
    r.run(1000);
    auto& large = *dynamic_cast<FrmRealDisplay*>(app.screenByName("frmRealDisplay"));
    auto* bar = w.find<QProgressBar>("frmRealDisplay", "ProgressBar1");
    ASSERT_TRUE(bar && Shown(large.lblValue));
    EXPECT_EQ(text("frmRealDisplay", "lblValue"), large.lblValue.text());
    EXPECT_EQ(bar->maximum(), large.ProgressBar1.max());
    EXPECT_EQ(bar->value(), large.ProgressBar1.value());
    w.shot("frmRealDisplay", "large_display_rpm");

    m.mnuViewMPG.click();  // closes the large display
    r.run(12000);          // the average comes every 10 s
    auto& mpg = *dynamic_cast<FrmMPG*>(app.screenByName("frmMPG"));
    EXPECT_EQ(text("frmMPG", "lblInstMPG"), mpg.lblInstMPG.text());
    EXPECT_EQ(text("frmMPG", "lblMPGAve"), mpg.lblMPGAve.text());
    w.shot("frmMPG", "fuel_economy");
    mpg.unload();

    // The custom list is modal: it is looked at while it is up, then left unchanged.
    auto& list = *dynamic_cast<FrmCustomData*>(app.screenByName("frmCustomData"));
    bool looked = false;
    r.after(100, [&] {
        auto* rpm = w.find<QCheckBox>("frmCustomData", "Check1(12)");
        ASSERT_NE(rpm, nullptr);
        EXPECT_EQ(rpm->isChecked(), list.Check1[12].value());
        EXPECT_EQ(rpm->text().toStdString(), list.Check1[12].caption());
        w.shot("frmCustomData", "custom_list");
        looked = true;
        list.cmdCancel.click();
    });
    m.mnuOptionList.click();
    EXPECT_TRUE(looked);

    m.mnuOptionData.click();
    r.run(5000);
    ASSERT_TRUE(Shown(app.frmNewPids().lblBaro));
    EXPECT_EQ(text("frmNewPids", "lblBaro"), app.frmNewPids().lblBaro.text());
    w.shot("frmNewPids", "extended_list");
}

}  // namespace
}  // namespace ketrel::test
