// The simulator's headers come before Qt's, whose keyword macros clash with their names.
#include "flow/car_rig.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QTableWidget>

#include "qt/mode6_window.h"
#include "qt_fixture.h"
#include "screens/frm_mode6.h"
#include "sweeps/mode6_sweep.h"

namespace ketrel::test {
namespace {

// A sweep on the simulated KWP car behind the count-byte converter, on virtual time: the grid
// and the status follow the screen during the sweep and after the definitions came in.
TEST(Mode6Window, TheGridAndStatusFollowASweep) {
    CarRig r(kBr3, "iso14230", 5);
    App& app = r.app();
    InstallMode6(app);
    FrmMode6& f = *Mode6Screen(app);
    RigWindows w(app);
    w.windows.registerView("frmMode6", [&f](Screen&) { return MakeMode6Window(f); });
    w.windows.adoptScreens();
    r.connect();
    ASSERT_TRUE(app.Connected);
    bool during = false;
    const int watch = f.Panel2.observe([&] {
        if (during || f.Panel2.text() != "REQUESTING MODE 6 TEST ID 3...") return;
        during = true;
        r.after(0, [&] { w.shot("frmMode6", "mode6_during_sweep"); });
    });
    f.show();
    r.run(200);
    f.Panel2.unobserve(watch);
    EXPECT_TRUE(during);
    f.cmdFordDef.click();
    auto* grid = w.find<QTableWidget>("frmMode6", "MSFlexGrid1");
    ASSERT_NE(grid, nullptr);
    ASSERT_EQ(grid->rowCount(), f.MSFlexGrid1.rows());
    for (auto [row, col] : {std::pair{1, 0}, {1, 2}, {2, 8}})
        EXPECT_EQ(grid->item(row, col)->text().toStdString(), f.MSFlexGrid1.text(row, col));
    EXPECT_EQ(f.Panel1.text(), "END OF PROCESS");
    EXPECT_EQ(w.find<QLabel>("frmMode6", "Panel1")->text().toStdString(), f.Panel1.text());
    w.shot("frmMode6", "mode6_after_sweep");
}

}  // namespace
}  // namespace ketrel::test
