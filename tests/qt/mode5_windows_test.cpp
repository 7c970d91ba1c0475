#include <gtest/gtest.h>

// The simulator's headers come before Qt's, whose keyword macros clash with their names.
#include "flow/mode5_rig.h"

#include <QLabel>
#include <QPushButton>
#include <QTableWidget>

#include "qt/mode5_windows.h"
#include "qt_fixture.h"

namespace ketrel {
namespace {

// The two windows over a run on the simulated car, on virtual time: the views only draw what
// the screens hold.
TEST(Mode5Windows, ShowTheTestsOfASensorAndTheMakersSweepDuringAndAfterARun) {
    test::Mode5Rig r(kBr3, "vpw", 1);
    r.connect();
    test::RigWindows w(r.app());
    w.windows.registerView("frmMode5", [&r](Screen&) { return MakeMode5Window(r.sae()); });
    w.windows.registerView("frmMode5Manuf",
                           [&r](Screen&) { return MakeMode5ManufWindow(r.manuf()); });
    w.windows.adoptScreens();
    auto label = [&](const char* name) { return w.find<QLabel>("frmMode5", name); };

    r.sae().show();
    r.at(1200, [&] {
        EXPECT_FALSE(w.find<QPushButton>("frmMode5", "cmdOk")->isEnabled());
        w.shot("frmMode5", "mode5_sae_during");
    });
    r.runTests(1);  // sensor 2 lacks some tests: their rows stay greyed out
    ASSERT_TRUE(label("lblRaw5"));
    EXPECT_EQ(label("lblRaw5")->text().toStdString(), r.sae().lblRaw(5).text());
    EXPECT_FALSE(label("lblRaw3")->isEnabled());
    EXPECT_EQ(label("StatusBar1.Panels(1)")->text().toStdString(), r.sae().Panel1.text());
    w.shot("frmMode5", "mode5_sae_sensor2");
    r.runTests(0);
    EXPECT_TRUE(label("lblRaw3")->isEnabled());
    w.shot("frmMode5", "mode5_sae_sensor1");

    w.find<QPushButton>("frmMode5", "cmdManuf")->click();
    r.at(3200, [&] { w.shot("frmMode5Manuf", "mode5_manuf_during"); });
    r.run(5500);
    auto* grid = w.find<QTableWidget>("frmMode5Manuf", "MSFlexGrid1");
    ASSERT_TRUE(grid);
    EXPECT_EQ(grid->item(2, 6)->text().toStdString(), r.manuf().MSFlexGrid1.text(2, 6));
    w.shot("frmMode5Manuf", "mode5_manuf_after");
}

}  // namespace
}  // namespace ketrel
