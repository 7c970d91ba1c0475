#include <gtest/gtest.h>

#include <QLabel>
#include <QListWidget>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableWidget>

#include "codes/terms_glossary.h"
#include "codes/trouble_code_browser.h"
#include "qt_fixture.h"
#include "screens/frm_terms.h"
#include "screens/frm_trouble_code.h"

namespace ketrel {
namespace {

// The library follows a tab, an option and a picked number, and shows the vehicle's codes; the
// glossary shows the Terms.db the build made.
TEST(CodeLibraryWindows, TheLibraryFollowsItsChoicesAndTheGlossaryShowsItsTable) {
    test::GuiApp g;
    std::filesystem::create_directories(g.dir.path() / "System");
    std::filesystem::copy_file(KETREL_SYSTEM_DIR "/Terms.db", g.dir.path() / "System/Terms.db");
    g.startPastSplash();
    App& app = g.app();
    app.Connected = true;
    app.frmMain().lstCodes.addItem("P0301");
    app.frmMain().lstPendingCodes.addItem("P0171");
    app.frmMain().tbDTC.click();
    QApplication::processEvents();
    FrmTroubleCode& s = *TroubleCodeScreen(app);
    auto* list = g.find<QListWidget>("frmTroubleCode", "List1");
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(g.find<QListWidget>("frmTroubleCode", "lstPend")->item(0)->text(), "P0171");

    g.find<QTabWidget>("frmTroubleCode", "SSTab1")->setCurrentIndex(1);
    EXPECT_EQ(s.SSTab1.tab(), 1);
    g.find<QRadioButton>("frmTroubleCode", "GMP1600")->click();
    QApplication::processEvents();
    EXPECT_TRUE(s.option("GMP1600")->value());
    ASSERT_EQ(list->count(), s.List1.count());
    const auto found = list->findItems("P1641.", Qt::MatchExactly);
    ASSERT_EQ(found.size(), 1);
    list->setCurrentItem(found[0]);
    QApplication::processEvents();
    ASSERT_FALSE(s.lblDefine.text().empty());
    EXPECT_EQ(g.find<QLabel>("frmTroubleCode", "lblDefine")->text().toStdString(),
              s.lblDefine.text());
    test::Screenshot(g.desktop->windows().windowOf("frmTroubleCode"), "trouble_code_library");
    s.unload();

    app.frmMain().mnuViewTerms.click();
    QApplication::processEvents();
    const Grid& terms = TermsScreen(app)->MSFlexGrid1;
    auto* grid = g.find<QTableWidget>("frmTerms", "MSFlexGrid1");
    ASSERT_NE(grid, nullptr);
    ASSERT_GT(terms.rows(), 50);
    EXPECT_EQ(grid->rowCount(), terms.rows());
    EXPECT_EQ(grid->item(0, 1)->text().toStdString(), terms.text(0, 1));
    test::Screenshot(g.desktop->windows().windowOf("frmTerms"), "terms_glossary");
}

}  // namespace
}  // namespace ketrel
