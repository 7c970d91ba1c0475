#include <QTableWidget>
#include <fstream>

#include <gtest/gtest.h>

#include "link/dorvane_receive.h"
#include "link/log_frames.h"
#include "qt/qt_fixture.h"

namespace ketrel::test {
namespace {

// Plays the recorded frames of the export test's log through the receive path, as playback
// does, so the data tab shows values without a car.
void Replay(App& app) {
    std::ifstream in(KETREL_SESSION_LOG);
    ASSERT_TRUE(in) << KETREL_SESSION_LOG;
    LogFrameReader reader(in);
    LogFrame frame;
    app.PlayingLog = true;
    while (reader.next(frame)) {
        SetDorvaneFrame(app, frame.text);
        DORVANERECEIVE(app);
    }
    app.PlayingLog = false;
}

TEST(DataTab, ReplayedFramesShowInLabelStyleAndInGridStyle) {
    GuiApp g;
    g.startPastSplash();
    App& app = g.app();
    Replay(app);
    FrmMain& m = app.frmMain();
    ASSERT_EQ(m.lblRPM.text(), "1726");
    QApplication::processEvents();
    Screenshot(g.desktop->windows().windowOf("frmMain"), "data_tab_labels");

    m.mnuViewStyleGrid.click();
    QApplication::processEvents();
    auto* grid = g.find<QTableWidget>("frmMain", "GridData");
    ASSERT_NE(grid, nullptr);
    EXPECT_TRUE(grid->isVisible());
    EXPECT_EQ(grid->item(3, 5)->text().toStdString(), "1726");  // RPM row, value column
    EXPECT_EQ(grid->item(1, 1)->text().toStdString(), "248");   // coolant
    // A frame decoded while the grid shows goes on mirroring into it.
    SetDorvaneFrame(app, "V486B10410C0FA0");
    app.PlayingLog = true;
    DORVANERECEIVE(app);
    QApplication::processEvents();
    EXPECT_EQ(grid->item(3, 5)->text().toStdString(), "1000");
    Screenshot(g.desktop->windows().windowOf("frmMain"), "data_tab_grid");
    m.mnuViewDefault.click();
    QApplication::processEvents();
    EXPECT_FALSE(grid->isVisible());
}

}  // namespace
}  // namespace ketrel::test
