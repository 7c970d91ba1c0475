#include <gtest/gtest.h>

#include <QLabel>
#include <QTableWidget>

#include "platform/sqlite_db.h"
#include "qt_fixture.h"
#include "recording/log_catalogue.h"

namespace ketrel {
namespace {

TEST(RecordedLogWindow, ShowsTheCatalogueWithItsHighlightAndFollowsAClick) {
    test::GuiApp g;
    {
        std::filesystem::create_directories(g.dir.path() / "System");
        SqliteDb db;
        ASSERT_TRUE(db.open(g.dir.path() / "System" / "LogRecords.db", true));
        ASSERT_TRUE(
            db.execScript(test::ReadFile(std::string(KETREL_DATA_DIR) + "/db/LogRecords.sql")));
    }
    LogCatalogue cat;
    ASSERT_TRUE(cat.open(g.dir.path()));
    cat.add({"Morning run", "11/2/2026", "2004", "Vantor", "Cresta", "1HGCM82633A004352", "KTR 100",
             412, "DORVANE", "48210"});
    cat.add({"Idle test", "11/3/2026", "N/A", "N/A", "N/A", "N/A", "N/A", 57, "BR3ISO", "N/A"});
    cat.add({"Highway", "11/5/2026", "1999", "Orlen", "Tessa", "N/A", "QX-22", 1380, "KESHISO-9141",
             "120400"});
    g.startPastSplash();
    g.app().frmMain().mnuFileOpen.click();
    QApplication::processEvents();
    auto* table = g.find<QTableWidget>("frmRecordedLog", "gridLog");
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->rowCount(), 4);
    EXPECT_EQ(table->item(1, 3)->background().color(), QColor(0xFF, 0xFF, 0x00));
    EXPECT_EQ(g.find<QLabel>("frmRecordedLog", "lbltotalRecord")->text(), "3");
    EXPECT_FALSE(g.desktop->windows().windowOf("frmMain")->isEnabled());

    emit table->cellClicked(3, 2);
    QApplication::processEvents();
    EXPECT_EQ(table->item(1, 3)->background().color(), QColor(0xE0, 0xE0, 0xE0));
    EXPECT_EQ(table->item(3, 0)->background().color(), QColor(0xFF, 0xFF, 0x00));
    test::Screenshot(g.desktop->windows().windowOf("frmRecordedLog"), "recorded_log");
}

}  // namespace
}  // namespace ketrel
