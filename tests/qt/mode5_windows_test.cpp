#include <gtest/gtest.h>

// The simulator's headers come before Qt's, whose keyword macros clash with their names.
#include "flow/mode5_rig.h"

#include <QLabel>
#include <QPushButton>
#include <QTableWidget>

#include "qt/mode5_windows.h"
#include "qt/window_manager.h"
#include "qt_fixture.h"

namespace ketrel {
namespace {

// The two windows over a run on the simulated car, on virtual time: the views only draw what
// the screens hold.
TEST(Mode5Windows, ShowTheTestsOfASensorAndTheMakersSweepDuringAndAfterARun) {
    test::EnsureQApp();
    test::Mode5Rig r(kBr3, "vpw", 1);
    r.connect();
    WindowManager windows(r.app());
    windows.registerView("frmMain", [](Screen&) { return new QWidget; });
    windows.registerView("frmMode5", [&r](Screen&) { return MakeMode5Window(r.sae()); });
    windows.registerView("frmMode5Manuf",
                         [&r](Screen&) { return MakeMode5ManufWindow(r.manuf()); });
    windows.adoptScreens();
    auto label = [&](const char* name) {
        return windows.windowOf("frmMode5")->findChild<QLabel*>(name);
    };

    r.sae().show();
    r.at(1200, [&] {
        QApplication::processEvents();
        EXPECT_FALSE(windows.windowOf("frmMode5")->findChild<QPushButton*>("cmdOk")->isEnabled());
        test::Screenshot(windows.windowOf("frmMode5"), "mode5_sae_during");
    });
    r.runTests(1);  // sensor 2 lacks some tests: their rows stay greyed out
    QApplication::processEvents();
    ASSERT_TRUE(label("lblRaw5"));
    EXPECT_EQ(label("lblRaw5")->text(), "64");
    EXPECT_EQ(label("lblMax5")->text(), "0.576 Sec");
    EXPECT_FALSE(label("lblRaw3")->isEnabled());
    EXPECT_EQ(label("StatusBar1.Panels(1)")->text(), "End Of Progress");
    test::Screenshot(windows.windowOf("frmMode5"), "mode5_sae_sensor2");
    r.runTests(0);
    QApplication::processEvents();
    EXPECT_TRUE(label("lblRaw3")->isEnabled());
    test::Screenshot(windows.windowOf("frmMode5"), "mode5_sae_sensor1");

    windows.windowOf("frmMode5")->findChild<QPushButton*>("cmdManuf")->click();
    bool during = false;
    r.at(3200, [&] {
        QApplication::processEvents();
        test::Screenshot(windows.windowOf("frmMode5Manuf"), "mode5_manuf_during");
        during = true;
    });
    r.run(5500);
    QApplication::processEvents();
    EXPECT_TRUE(during);
    auto* grid = windows.windowOf("frmMode5Manuf")->findChild<QTableWidget*>("MSFlexGrid1");
    ASSERT_TRUE(grid);
    EXPECT_EQ(grid->item(0, 2)->text(), "TEST VALUE(RAW)");
    EXPECT_EQ(grid->item(2, 6)->text(), "FAIL");
    test::Screenshot(windows.windowOf("frmMode5Manuf"), "mode5_manuf_after");
}

TEST(Mode5Windows, TheProgramDrawsBothScreensWithTheirOwnLayouts) {
    test::GuiApp g;
    Mode5Screen(g.app())->show();
    Mode5ManufScreen(g.app())->show();
    QApplication::processEvents();
    EXPECT_TRUE(g.find("frmMode5", "cmbO2"));
    EXPECT_TRUE(g.find("frmMode5Manuf", "MSFlexGrid1"));
    EXPECT_EQ(g.desktop->windows().windowOf("frmMode5")->windowTitle(), "MODE 5 (SAE)");
}

}  // namespace
}  // namespace ketrel
