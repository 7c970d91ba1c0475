#include <gtest/gtest.h>

#include "recording/catalogue_fixture.h"

namespace ketrel {
namespace {

using test::CatalogueApp;
using test::Row;

constexpr std::int64_t kYellow = 0xFFFF00, kGrey = 0xE0E0E0;

TEST(RecordedLog, ActivationFollowsTheTableAndTheHighlightMoves) {
    for (int count : {0, 3}) {
        std::vector<LogRecord> rows;
        for (int i = 0; i < count; ++i)
            rows.push_back(Row("log" + std::to_string(i)));
        CatalogueApp a(rows);
        a.open();
        FrmRecordedLog& s = *a.s;
        EXPECT_TRUE(s.visible());
        EXPECT_FALSE(a.app().frmMain().enabled());
        EXPECT_EQ(s.lbltotalRecord.text(), std::to_string(count));
        EXPECT_EQ(s.gridLog.rows(), count + 1);
        EXPECT_EQ(s.gridLog.text(0, 8), "Interface Type");
        for (Field* f : {&s.cmdPlay, &s.cmdDelete, &s.cmdSearch, &s.cmdDeleteAll})
            EXPECT_EQ(f->enabled(), count > 0) << f->name();
        EXPECT_EQ(s.cmbSearchMethod.text(), "Name");
        if (count < 3) continue;
        EXPECT_EQ(s.gridLog.cellBackColor(1, 9), kYellow);
        s.gridMouseUp(3, 4);
        EXPECT_EQ(s.Row, 3);
        EXPECT_EQ(s.Col, 0);
        EXPECT_EQ(s.gridLog.cellBackColor(1, 0), kGrey);
        EXPECT_EQ(s.gridLog.cellBackColor(3, 5), kYellow);
        s.mnuFileExit.click();
        EXPECT_FALSE(s.loaded());
        EXPECT_TRUE(a.app().frmMain().enabled());
    }
}

TEST(RecordedLog, SearchMatchesWholeValuesIgnoringCaseAndNoPatterns) {
    struct Case {
        const char *method, *word;
        int row;  // the row found, 0: "Not Found"; -1: the keyword is asked for
    } cases[] = {
        {"Name", "o'brien \"x\"", 2}, {"Name", "100%", 3},
        {"Name", "10%", 0},           {"Name", "a_b", 4},
        {"Name", "axb", 0},           {"Name", "%", 0},
        {"Name", "O'BRIEN", 0},       {"Vin", "n/a", 1},
        {"Vin", "1hgcm", 0},          {"Vin", "1HGCM82633A00435", 2},
        {"Plate", "abc 123", 4},      {"Name", "", -1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.method) + " " + c.word);
        CatalogueApp a({Row("first"), Row("O'Brien \"x\"", "1hgcm82633a00435"), Row("100%"),
                        Row("a_b", "WVW", "ABC 123")});
        a.open();
        a.s->cmbSearchMethod.setText(c.method);
        a.s->txtSearchWord.setText(c.word);
        a.s->cmdSearch.click();
        const auto& shown = a.t.dialogs.shown();
        if (c.row > 0) {
            EXPECT_TRUE(shown.empty());
            EXPECT_EQ(a.s->Row, c.row);
            EXPECT_EQ(a.s->TopRow, c.row);
            EXPECT_EQ(a.s->gridLog.cellBackColor(c.row, 0), kYellow);
            continue;
        }
        ASSERT_EQ(shown.size(), 1u);
        EXPECT_EQ(shown[0].text,
                  c.row == 0 ? "No Word Found In Database" : "Enter A Keyword To Search");
        EXPECT_EQ(shown[0].title, c.row == 0 ? "Not Found" : "Ketrel");
    }
}

TEST(RecordedLog, DeleteRemovesTheFirstRowOfTheNameAndDeleteAllEmptiesLog) {
    CatalogueApp a({Row("trip", "N/A", "N/A", "1/1/2026"), Row("trip", "N/A", "N/A", "2/2/2026"),
                    Row("other")});
    const auto log = a.t.dir.path() / "Log";
    test::WriteFile(log / "trip.log", "\"x\"\r\n");
    test::WriteFile(log / "other.log", "\"y\"\r\n");
    test::WriteFile(log / "Connect.log", "z");
    a.open();
    a.t.dialogs.answerNext(MsgAnswer::No);
    a.s->cmdDelete.click();
    EXPECT_EQ(a.names().size(), 3u);
    a.s->cmdDelete.click();  // answered Yes
    EXPECT_EQ(a.names(), (std::vector<std::string>{"trip@2/2/2026", "other@1/2/2026"}));
    EXPECT_FALSE(std::filesystem::exists(log / "trip.log"));
    EXPECT_TRUE(std::filesystem::exists(log / "other.log"));
    EXPECT_EQ(a.s->lbltotalRecord.text(), "2");
    EXPECT_EQ(a.s->gridLog.cellBackColor(1, 0), kYellow);

    a.s->cmdDeleteAll.click();
    EXPECT_EQ(a.t.dialogs.shown().back().text, "Are You Sure You Want To Delete All Records?");
    EXPECT_TRUE(a.names().empty());
    EXPECT_TRUE(std::filesystem::is_empty(log));
    EXPECT_EQ(a.s->lbltotalRecord.text(), "0");
    EXPECT_FALSE(a.s->cmdPlay.enabled());
}

// A damaged table is the flow test DamagedDatabase's.
TEST(RecordedLog, AMissingTableShowsTheErrorAndTheProgramGoesOn) {
    CatalogueApp a({Row("trip")});
    std::filesystem::remove(a.t.dir.path() / "System" / "LogRecords.db");
    a.open();
    ASSERT_EQ(a.t.dialogs.titles(), std::vector<std::string>{"Error"});
    EXPECT_FALSE(a.t.dialogs.shown()[0].text.empty());
    EXPECT_TRUE(a.s->visible());
    EXPECT_EQ(a.s->lbltotalRecord.text(), "0");
    EXPECT_FALSE(a.s->cmdSearch.enabled());
}

TEST(RecordedLog, OpeningALogFillsTheMainScreenAndShowsTheLogController) {
    struct Case {
        const char* name;
        bool file;
        bool opens;
    } cases[] = {{"trip", true, true}, {"trip", false, false}, {"../x", true, false}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        LogRecord r{c.name, "3/4/2026", "N/A", "Vantor", "Cresta",
                    "VIN1", "PL8",      77,    "BR3ISO", "12000"};
        CatalogueApp a({r});
        if (c.file) test::WriteFile(a.t.dir.path() / "Log" / (std::string(c.name) + ".log"), "");
        FrmMain& m = a.app().frmMain();
        const std::string title = m.caption();
        a.open();
        a.s->cmdPlay.click();
        if (!c.opens) {
            EXPECT_EQ(a.t.dialogs.titles(), std::vector<std::string>{"Error"});
            EXPECT_TRUE(a.s->visible());
            EXPECT_EQ(m.caption(), title);
            EXPECT_EQ(a.app().LogName, "");
            EXPECT_EQ(m.txtVin.text(), "");
            EXPECT_FALSE(a.rec->loaded());
            continue;
        }
        EXPECT_TRUE(a.t.dialogs.shown().empty());
        EXPECT_FALSE(a.s->loaded());
        EXPECT_TRUE(m.enabled());
        EXPECT_EQ(a.app().LogName, "trip");
        EXPECT_EQ(a.app().LogFrames, 77);
        EXPECT_EQ(a.app().LogType, "BR3ISO");
        EXPECT_EQ(m.cmbYear.text(), "N/A");
        EXPECT_EQ(m.txtPlate.text(), "PL8");
        EXPECT_EQ(m.txtMileage.text(), "12000");
        EXPECT_EQ(m.caption(), "Ketrel (OBD II Generic) Version 0.77 -  Vantor - Cresta");
        EXPECT_TRUE(a.rec->visible());
        EXPECT_EQ(a.rec->caption(), "Log Controller - trip.log");
        EXPECT_EQ(a.rec->Panel1.text(), "STATUS:  -----");
        EXPECT_EQ(a.rec->Panel2.text(), "FRAME:");
        EXPECT_TRUE(a.rec->cmdPlay.enabled());
        EXPECT_TRUE(m.mnuEditPlay.enabled());
        EXPECT_FALSE(m.mnuFileOpen.enabled());
    }
}

}  // namespace
}  // namespace ketrel
