#include <gtest/gtest.h>

#include <QLabel>
#include <QListWidget>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableWidget>

#include "qt_fixture.h"

namespace ketrel {
namespace {

TEST(CodeLibraryWindows, TheLibraryFollowsTabsOptionsAndAPickedNumber) {
    test::GuiApp g;
    g.startPastSplash();
    App& app = g.app();
    app.Connected = true;
    app.frmMain().lstCodes.addItem("P0301");
    app.frmMain().lstFreezeCodes.addItem("P0301");
    app.frmMain().lstPendingCodes.addItem("P0171");
    app.frmMain().tbDTC.click();
    QApplication::processEvents();
    auto* tabs = g.find<QTabWidget>("frmTroubleCode", "SSTab1");
    auto* list = g.find<QListWidget>("frmTroubleCode", "List1");
    ASSERT_NE(tabs, nullptr);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->item(0)->text(), "P0100");
    EXPECT_EQ(g.find<QListWidget>("frmTroubleCode", "lstTCodes")->count(), 2);
    EXPECT_EQ(g.find<QListWidget>("frmTroubleCode", "lstPend")->item(0)->text(), "P0171");

    tabs->setCurrentIndex(1);
    QApplication::processEvents();
    g.find<QRadioButton>("frmTroubleCode", "GMP1600")->click();
    QApplication::processEvents();
    const auto found = list->findItems("P1641.", Qt::MatchExactly);
    ASSERT_EQ(found.size(), 1);
    list->setCurrentItem(found[0]);
    QApplication::processEvents();
    EXPECT_EQ(g.find<QLabel>("frmTroubleCode", "lblDefine")->text(),
              "Malfunction Indicator Lamp Control Circuit");
    test::Screenshot(g.desktop->windows().windowOf("frmTroubleCode"), "trouble_code_library");
}

TEST(CodeLibraryWindows, TheGlossaryShowsTheBuiltTable) {
    test::GuiApp g;
    std::filesystem::create_directories(g.dir.path() / "System");
    std::filesystem::copy_file(KETREL_SYSTEM_DIR "/Terms.db", g.dir.path() / "System/Terms.db");
    g.startPastSplash();
    g.app().frmMain().mnuViewTerms.click();
    QApplication::processEvents();
    auto* grid = g.find<QTableWidget>("frmTerms", "MSFlexGrid1");
    ASSERT_NE(grid, nullptr);
    EXPECT_EQ(grid->rowCount(), 75);
    EXPECT_EQ(grid->item(0, 1)->text(), "OBD II TERMS");
    test::Screenshot(g.desktop->windows().windowOf("frmTerms"), "terms_glossary");
}

}  // namespace
}  // namespace ketrel
