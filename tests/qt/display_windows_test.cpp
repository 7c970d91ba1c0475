#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QProgressBar>
#include <QTimer>

#include "display/fuel_economy.h"
#include "link/port_map.h"
#include "platform/sqlite_db.h"
#include "qt_fixture.h"
#include "screens/frm_custom_data.h"
#include "screens/frm_mpg.h"

namespace ketrel {
namespace {

bool filled(const std::string& text) {
    return !text.empty() && text != "N/A" && text != "-";
}

// The four data displays on an in-process count-byte converter and a pick-up that drives off
// at once, each looked at with its values moving.
TEST(DisplayWindows, ShowTheMovingValuesOfTheSimulatedCar) {
    test::GuiApp g;
    const auto car =
        test::EditedCopy(std::string(KETREL_DATA_DIR) + "/sim/vpw.vehicle", "idle-time  15",
                         "idle-time  0", g.dir.path() / "car.vehicle");
    std::filesystem::create_directories(g.dir.path() / "System");
    SqliteDb db;
    ASSERT_TRUE(db.open(MpgStorePath(g.dir.path()), true) &&
                db.execScript(test::ReadFile(std::string(KETREL_DATA_DIR) + "/db/MPGAve1.sql")));
    db.close();
    g.settings.save(kAppName, kSection, "OBDIIHardware", kBr3);
    g.settings.save(kAppName, kSection, "ConnectPort", "1");
    g.settings.save(kAppName, kSection, "Log File", "False");
    SavePortDevicePath(g.settings, 1, "sim:" + car.string());
    g.startPastSplash();
    App& app = g.app();
    FrmMain& m = app.frmMain();
    m.mnuVehicleConnect.click();
    ASSERT_TRUE(app.Connected);
    ASSERT_TRUE(test::WaitFor([&] { return filled(m.lblRPM.text()); }, 30000));
    auto window = [&](const char* screen) { return g.desktop->windows().windowOf(screen); };

    // The large display: the main screen's RPM, large, and its bar.
    m.mnuViewRPM.click();
    ASSERT_TRUE(test::WaitFor([&] { return window("frmRealDisplay") != nullptr; }));
    QApplication::processEvents();
    auto* value = g.find<QLabel>("frmRealDisplay", "lblValue");
    auto* bar = g.find<QProgressBar>("frmRealDisplay", "ProgressBar1");
    ASSERT_TRUE(value && bar);
    EXPECT_TRUE(test::WaitFor([&] { return value->text().toStdString() == m.lblRPM.text(); }));
    EXPECT_EQ(bar->maximum(), 8000);
    EXPECT_GT(bar->value(), 0);
    EXPECT_GE(value->font().pointSizeF(),
              3 * g.find<QLabel>("frmMain", "lblRPM")->font().pointSizeF());
    test::Screenshot(window("frmRealDisplay"), "large_display_rpm");

    // The fuel economy closes it, and shows a figure once the car moves.
    m.mnuViewMPG.click();
    auto& mpg = *dynamic_cast<FrmMPG*>(app.screenByName("frmMPG"));
    EXPECT_FALSE(app.screenByName("frmRealDisplay")->loaded());
    EXPECT_TRUE(test::WaitFor([&] { return filled(mpg.lblInstMPG.text()); }, 30000));
    mpg.Timer1.setInterval(500);  // the average, sooner than its 10 s
    EXPECT_TRUE(test::WaitFor([&] { return filled(mpg.lblMPGAve.text()); }, 20000));
    QApplication::processEvents();
    EXPECT_EQ(g.find<QLabel>("frmMPG", "lblInstMPG")->text().toStdString(), mpg.lblInstMPG.text());
    test::Screenshot(window("frmMPG"), "fuel_economy");
    mpg.unload();

    // The custom list, looked at while it is up (it is modal), then left unchanged.
    auto& list = *dynamic_cast<FrmCustomData*>(app.screenByName("frmCustomData"));
    bool looked = false;
    QTimer::singleShot(300, [&] {
        auto* rpmBox = g.find<QCheckBox>("frmCustomData", "Check1(12)");
        EXPECT_TRUE(rpmBox && rpmBox->isChecked() && rpmBox->text() == "ENABLED");
        test::Screenshot(window("frmCustomData"), "custom_list");
        looked = true;
        list.cmdCancel.click();
    });
    m.mnuOptionList.click();
    EXPECT_TRUE(looked);

    // The extended list with the car's PIDs 21, 2F and 33.
    m.mnuOptionData.click();
    EXPECT_TRUE(test::WaitFor([&] { return filled(app.frmNewPids().lblBaro.text()); }, 30000));
    QApplication::processEvents();
    EXPECT_EQ(g.find<QLabel>("frmNewPids", "lblBaro")->text().toStdString(),
              app.frmNewPids().lblBaro.text());
    test::Screenshot(window("frmNewPids"), "extended_list");
    app.frmNewPids().mnuFileExit.click();
    EXPECT_TRUE(test::WaitFor([&] { return !app.frmNewPids().loaded(); }));
    m.mnuVehicleDisconnect.click();
}

}  // namespace
}  // namespace ketrel
