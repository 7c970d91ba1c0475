#include "obd/monitor_status.h"

#include <gtest/gtest.h>

#include "obd/value_fields.h"
#include "reply_cells.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

using test::E;

TEST(MonitorStatus, CodeCountShowsOnlyWhileTheLampIsOn) {
    struct Case {
        std::optional<int> a;
        const char* count;
        const char* lamp;
        const char* picture;
    } cases[] = {
        {0x83, "3", "ON", kImgConnected},     {0x80, "0", "ON", kImgConnected},
        {0x03, "0", "OFF", kImgNotConnected}, {0x05, "0", "OFF", kImgNotConnected},
        {0xFF, "127", "ON", kImgConnected},   {E, "0", "old", "old"},
    };
    for (const Case& c : cases) {
        test::TestApp t;
        FrmMain& m = t->frmMain();
        m.lblMil.setText("old");
        m.imgMIL.setPicture("old");
        test::SetReply(*t, "01", 0x01, {c.a, 0x07, 0x00, 0x00});
        DecodeMonitorStatus(*t);
        EXPECT_EQ(m.lblNumberCodes.text(), c.count);
        EXPECT_EQ(m.lblMil.text(), c.lamp);
        EXPECT_EQ(m.imgMIL.picture(), c.picture);
        // The rest runs whatever the lamp byte.
        EXPECT_EQ(m.msGridReady.text(1, 2), "3");
    }
}

// Status and support columns of rows 1 to 12 after one reply.
struct Rows {
    std::array<const char*, 13> status;
    std::array<const char*, 13> support;
};

TEST(MonitorStatus, EachMonitorReadsItsOwnSupportAndReadyBits) {
    struct Case {
        int b, c, d;
        Rows rows;
        std::array<const char*, 4> totals;
    } cases[] = {
        {0x07,
         0x00,
         0x00,
         {{"", "READY", "READY", "READY", "", "N/A", "N/A", "N/A", "N/A", "N/A", "N/A", "N/A",
           "N/A"},
          {"", "YES", "YES", "YES", "", "NO", "NO", "NO", "NO", "NO", "NO", "NO", "NO"}},
         {"3", "0", "3", "8"}},
        {0x17,
         0x00,
         0x00,
         {{"", "READY", "NOT DONE", "READY", "", "N/A", "N/A", "N/A", "N/A", "N/A", "N/A", "N/A",
           "N/A"},
          {"", "YES", "YES", "YES", "", "NO", "NO", "NO", "NO", "NO", "NO", "NO", "NO"}},
         {"2", "1", "3", "8"}},
        {0x00,
         0x01,
         0x01,
         {{"", "N/A", "N/A", "N/A", "", "N/A", "N/A", "NOT DONE", "N/A", "N/A", "N/A", "N/A",
           "N/A"},
          {"", "NO", "NO", "NO", "", "NO", "NO", "YES", "NO", "NO", "NO", "NO", "NO"}},
         {"0", "1", "1", "10"}},
        {0x00,
         0x01,
         0x00,
         {{"", "N/A", "N/A", "N/A", "", "N/A", "N/A", "READY", "N/A", "N/A", "N/A", "N/A", "N/A"},
          {"", "NO", "NO", "NO", "", "NO", "NO", "YES", "NO", "NO", "NO", "NO", "NO"}},
         {"1", "0", "1", "10"}},
        // C bits 1 to 7 in turn: heated catalyst, evaporative, air, A/C, O2, heater, EGR; D
        // marks every other one not done.
        {0x77,
         0xFE,
         0xAA,
         {{"", "NOT DONE", "NOT DONE", "NOT DONE", "", "READY", "NOT DONE", "N/A", "READY",
           "NOT DONE", "NOT DONE", "NOT DONE", "READY"},
          {"", "YES", "YES", "YES", "", "YES", "YES", "NO", "YES", "YES", "YES", "YES", "YES"}},
         {"3", "7", "10", "1"}},
    };
    for (const Case& c : cases) {
        test::TestApp t;
        FrmMain& m = t->frmMain();
        ResetMonitorGrids(*t);
        test::SetReply(*t, "01", 0x01, {0x00, c.b, c.c, c.d});
        DecodeMonitorStatus(*t);
        for (int r = 1; r <= 12; ++r) {
            EXPECT_EQ(m.msMonitorGrid.text(r, 1), c.rows.status[std::size_t(r)])
                << "B " << c.b << " C " << c.c << " D " << c.d << " row " << r;
            EXPECT_EQ(m.msMonitorGrid.text(r, 2), c.rows.support[std::size_t(r)])
                << "B " << c.b << " C " << c.c << " D " << c.d << " row " << r;
        }
        EXPECT_EQ(m.msMonitorGrid.text(4, 0), "");
        for (int col = 0; col < 4; ++col)
            EXPECT_EQ(m.msGridReady.text(1, col), c.totals[std::size_t(col)]) << col;
    }
}

TEST(MonitorStatus, AShortReplyReadsAsAllMonitorsUnsupported) {
    test::TestApp t;
    test::SetReply(*t, "01", 0x01, {0x81, E, E, E});
    DecodeMonitorStatus(*t);
    FrmMain& m = t->frmMain();
    EXPECT_EQ(m.msGridReady.text(1, 3), "11");
    EXPECT_EQ(m.msMonitorGrid.text(1, 2), "NO");
}

TEST(MonitorStatus, ResetGivesHeadersNamesAndNA) {
    test::TestApp t;
    FrmMain& m = t->frmMain();
    m.msMonitorGrid.setText(4, 1, "stale");
    ResetMonitorGrids(*t);
    const char* names[] = {"MONITORS",
                           "FUEL",
                           "MISFIRE",
                           "COMPONENT",
                           "",
                           "O2 SENSOR HEATER",
                           "O2 SENSOR",
                           "CATALYST CONVERTER",
                           "FUEL EVAPORATIVE",
                           "AIR INJECTION",
                           "EGR",
                           "HEATED CATALYST CONVERTER",
                           "A/C REFRIGERANT"};
    for (int r = 0; r < 13; ++r) {
        EXPECT_EQ(m.msMonitorGrid.text(r, 0), names[r]) << r;
        const char* cell = r == 0 ? "STATUS" : r == 4 ? "" : "N/A";
        EXPECT_EQ(m.msMonitorGrid.text(r, 1), cell) << r;
    }
    EXPECT_EQ(m.msMonitorGrid.colWidth(0), 6520);
    EXPECT_EQ(m.msMonitorGrid.colWidth(1), 3000);
    EXPECT_EQ(m.msGridReady.text(0, 3), "UNSUPPORTED");
    EXPECT_EQ(m.msGridReady.text(1, 0), "N/A");
    EXPECT_EQ(m.msGridReady.colWidth(2), 2600);
}

TEST(MonitorStatus, ClearingRoutinesCoverTheirFields) {
    test::TestApp t;
    FrmMain& m = t->frmMain();
    std::vector<Field*> main = MainDataFields(*t), freeze = FreezeFrameFields(*t);
    std::vector<Field*> extended = t->frmNewPids().valueFields();
    EXPECT_EQ(main.size(), 37u);
    EXPECT_EQ(freeze.size(), 16u);
    EXPECT_EQ(extended.size(), 60u);
    auto fill = [&] {
        for (auto* list : {&main, &freeze, &extended})
            for (Field* f : *list)
                f->setText("1");
        for (Field* f : {&m.lblOBDDesign, &m.lblWhatProtocol, &m.lblKeyword2})
            f->setText("1");
        m.imgMIL.setPicture(kImgConnected);
        m.msM1Grid.setText(1, 2, "YES");
    };
    auto all = [](const std::vector<Field*>& list, const char* text) {
        for (Field* f : list) {
            if (f->text() != text) return false;
        }
        return true;
    };
    fill();
    ClearMainData(*t);
    EXPECT_TRUE(all(main, "N/A"));
    EXPECT_TRUE(all(freeze, "N/A"));
    EXPECT_TRUE(all(extended, "1"));
    EXPECT_EQ(m.lblOBDDesign.text(), "1");
    EXPECT_EQ(m.imgMIL.picture(), kImgConnected);

    fill();
    ClearDisplay(*t);
    EXPECT_TRUE(all(main, "N/A"));
    EXPECT_TRUE(all({&m.lblOBDDesign, &m.lblWhatProtocol, &m.lblKeyword2}, "N/A"));
    EXPECT_EQ(m.imgMIL.picture(), kImgNotConnected);
    EXPECT_EQ(m.msM1Grid.text(1, 2), "N/A");
    EXPECT_TRUE(all(extended, "1"));

    ClearExtendedData(*t);
    EXPECT_TRUE(all(extended, "N/A"));
}

}  // namespace
}  // namespace ketrel
