#include "obd/monitor_status.h"

#include <gtest/gtest.h>

#include <set>

#include "obd/value_fields.h"
#include "reply_cells.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

using test::E;

TEST(MonitorStatus, CodeCountShowsOnlyWhileTheLampIsOn) {
    struct Case {
        std::optional<int> a;
        const char *count, *lamp, *picture;
    } cases[] = {{0x83, "3", "ON", kImgConnected},
                 {0x80, "0", "ON", kImgConnected},
                 {0x03, "0", "OFF", kImgNotConnected},
                 {0xFF, "127", "ON", kImgConnected},
                 {E, "0", "old", "old"}};
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
        EXPECT_EQ(m.msGridReady.text(1, 2), "3");  // the rest runs whatever the lamp byte
    }
}

TEST(MonitorStatus, EachMonitorReadsItsOwnSupportAndReadyBits) {
    // Rows 1 to 12, one letter each: R "READY", D "NOT DONE", N unsupported, - the blank row.
    struct Case {
        std::optional<int> b, c, d;
        const char* rows;
        std::array<const char*, 4> totals;
    } cases[] = {
        {0x07, 0x00, 0x00, "RRR-NNNNNNNN", {"3", "0", "3", "8"}},
        {0x17, 0x00, 0x00, "RDR-NNNNNNNN", {"2", "1", "3", "8"}},
        {0x00, 0x01, 0x01, "NNN-NNDNNNNN", {"0", "1", "1", "10"}},
        {0x00, 0x01, 0x00, "NNN-NNRNNNNN", {"1", "0", "1", "10"}},
        {0x77, 0xFE, 0xAA, "DDD-RDNRDDDR", {"3", "7", "10", "1"}},
        {E, E, E, "NNN-NNNNNNNN", {"0", "0", "0", "11"}},  // a short reply reads as zeroes
    };
    for (const Case& c : cases) {
        test::TestApp t;
        Grid& g = t->frmMain().msMonitorGrid;
        g.setText(4, 1, "stale");  // the blank row stays blank after a reset
        ResetMonitorGrids(*t);
        test::SetReply(*t, "01", 0x01, {0x00, c.b, c.c, c.d});
        DecodeMonitorStatus(*t);
        for (int r = 1; r <= 12; ++r) {
            char k = c.rows[r - 1];
            const char* status = k == 'R' ? "READY" : k == 'D' ? "NOT DONE" : k == 'N' ? "N/A" : "";
            const char* support = k == 'N' ? "NO" : k == '-' ? "" : "YES";
            EXPECT_EQ(g.text(r, 1), status) << c.rows << " row " << r;
            EXPECT_EQ(g.text(r, 2), support) << c.rows << " row " << r;
        }
        for (int col = 0; col < 4; ++col)
            EXPECT_EQ(t->frmMain().msGridReady.text(1, col), c.totals[std::size_t(col)]);
    }
}

TEST(MonitorStatus, ClearingRoutinesCoverTheirFields) {
    test::TestApp t;
    FrmMain& m = t->frmMain();
    std::vector<Field*> main = MainDataFields(*t), freeze = FreezeFrameFields(*t);
    std::vector<Field*> extended = t->frmNewPids().valueFields();
    std::vector<Field*> tab3{&m.lblOBDDesign,   &m.lblWhatProtocol, &m.lblECMAddress,
                             &m.lblECMAddress2, &m.lblKeyword1,     &m.lblKeyword2};
    EXPECT_EQ(main.size(), 37u);
    EXPECT_EQ(std::set<Field*>(freeze.begin(), freeze.end()).size(), 16u);
    for (Field* f : freeze)
        EXPECT_EQ(f->name().rfind("lblFF", 0), 0u) << f->name();
    EXPECT_EQ(extended.size(), 60u);
    auto fill = [&] {
        for (auto* list : {&main, &freeze, &extended, &tab3})
            for (Field* f : *list)
                f->setText("1");
        m.imgMIL.setPicture(kImgConnected);
        m.msM1Grid.setText(1, 2, "YES");
    };
    auto all = [](const std::vector<Field*>& list, const char* text) {
        return std::all_of(list.begin(), list.end(), [&](Field* f) { return f->text() == text; });
    };
    fill();
    ClearMainData(*t);
    EXPECT_TRUE(all(main, "N/A") && all(freeze, "N/A"));
    EXPECT_TRUE(all(extended, "1") && all(tab3, "1"));
    EXPECT_EQ(m.imgMIL.picture(), kImgConnected);
    fill();
    ClearDisplay(*t);
    EXPECT_TRUE(all(main, "N/A") && all(tab3, "N/A") && all(extended, "1"));
    EXPECT_EQ(m.imgMIL.picture(), kImgNotConnected);
    EXPECT_EQ(m.msM1Grid.text(1, 2), "N/A");
    ClearExtendedData(*t);
    EXPECT_TRUE(all(extended, "N/A"));
}

}  // namespace
}  // namespace ketrel
