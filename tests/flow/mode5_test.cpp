#include <gtest/gtest.h>

#include "flow/mode5_rig.h"

namespace ketrel::test {
namespace {

struct Line {
    const char* hardware;
    const char* car;
    int start;
    const char* firstRequest;  // test 01 of sensor 1 as the vehicle gets it
};
const Line kLines[] = {
    {kBr3, "vpw", 1, "08 68 6A F1 05 01 01 F2 01"},
    {kBr3, "pwm", 1, "08 61 6A F1 05 01 01 BE 01"},
    {kBr3, "iso9141", 1, "07 68 6A F1 05 01 01 CA"},
    {kBr3, "iso14230", 5, "07 C3 33 F1 05 01 01 EE"},
    {kKesh, "iso9141", 1, "68 6A F1 05 01 01 CA"},
    {kKesh, "iso14230", 3, "C3 33 F1 05 01 01 EE"},
};

std::string Trace(const Line& l) {
    return std::string(l.hardware) + " " + l.car;
}

// The fields of row n of frmMode5: raw, value, and the limits where the row has them.
Strings Row(FrmMode5& f, int n) {
    Strings r{f.lblRaw(n).text(), f.lblTest(n).text()};
    if (FrmMode5::hasLimits(n)) r.insert(r.end(), {f.lblMin(n).text(), f.lblMax(n).text()});
    return r;
}

TEST(Mode5, TheTenTestsOfASensorShowWhatTheCarHoldsAndTheScanGoesOn) {
    for (const Line& l : kLines) {
        SCOPED_TRACE(Trace(l));
        Mode5Rig r(l.hardware, l.car, l.start);
        r.connect();
        FrmMode5& f = r.sae();
        f.show();
        EXPECT_FALSE(r.app().frmMain().enabled());
        ASSERT_EQ(f.cmbO2.count(), 8);
        EXPECT_EQ(f.cmbO2.text(), "O2 SENSOR B1S1");

        r.runTests(0);
        const Strings requests = r.mode5Requests();
        ASSERT_EQ(requests.size(), 10u);
        EXPECT_EQ(requests.front(), l.firstRequest);
        EXPECT_EQ(Row(f, 3), (Strings{"127", "0.080 V"}));
        EXPECT_EQ(Row(f, 5), (Strings{"200", "0.040 Sec", "0.040 Sec", "1.020 Sec"}));
        EXPECT_EQ(Row(f, 9), (Strings{"25", "1.00 Sec", "1.00 Sec", "4.00 Sec"}));
        EXPECT_EQ(Row(f, 10), (Strings{"50", "1.60 Sec", "1.60 Sec", "3.20 Sec"}));
        for (int n = 1; n <= 10; ++n) {
            auto held = r.vehicle.ecus.front().o2Tests.result(n, 1);
            ASSERT_TRUE(held);
            EXPECT_EQ(f.lblRaw(n).text(), std::to_string(held->value)) << n;
            EXPECT_TRUE(f.lblTest(n).enabled()) << n;
        }
        EXPECT_EQ(f.Panel1.text(), "End Of Progress");
        EXPECT_TRUE(f.cmdOk.enabled());
        EXPECT_TRUE(r.app().frmMain().TimeOutConnect.enabled());

        // Sensor 2 holds tests 1, 2, 5, 7 and 8 only: the other rows go back to "N/A", greyed.
        const std::size_t before = r.decoded.size();
        r.runTests(1);
        EXPECT_NE(r.mode5Requests().back().find("F1 05 0A 02 "), std::string::npos);
        for (int n : {3, 4, 6, 9, 10}) {
            EXPECT_EQ(Row(f, n)[0], "N/A") << n;
            EXPECT_FALSE(f.lblRaw(n).enabled()) << n;
            EXPECT_FALSE(f.Label1[FrmMode5::captionIndex(n)].enabled()) << n;
        }
        EXPECT_EQ(Row(f, 5), (Strings{"64", "0.128 Sec", "0.128 Sec", "0.576 Sec"}));
        // The scan chain took the line back after each run.
        r.run(2000);
        EXPECT_GT(r.decoded.size(), before + 5);
        EXPECT_TRUE(r.app().Connected);
        EXPECT_TRUE(f.unload());
        EXPECT_TRUE(r.app().frmMain().enabled());
        EXPECT_TRUE(r.t.dialogs.shown().empty());
        // A car that reports its sensors through PID 1D has four banks of two: the sensor id
        // is the place in the list.
        r.app().Mode1Supported[0x1D] = true;
        f.show();
        f.cmbO2.setText("O2 SENSOR B2S1");
        f.cmdOk.click();
        EXPECT_EQ(r.app().Mode5Sensor, 3);
    }
}

// Rows of the maker's tests the shipped cars give for sensor 1: the support answer of the
// block above an id decides it, so ids 21, 22, 31, 41, 51, 61, 71 and 81 are asked.
const std::vector<Strings> kManufRows{
    {"21", "*", "100", "0.400", "0.200 Secs", "0.600 Secs", "PASS"},
    {"22", "*", "200", "0.800", "0.200 Secs", "0.600 Secs", "FAIL"},
    {"31", "*", "25", "1.00", "0.40 Secs", "2.00 Secs", "PASS"},
    {"41", "*", "90", "0.450", "0.100 V", "0.900 V", "PASS"},
    {"51", "*", "19", "0.95", "0.1 V", "1.0 V", "PASS"},
    {"61", "*", "35", "3.5", "1.0 Hz", "3.0 Hz", "FAIL"},
    {"71", "*", "12", "12", "5 Cnts", "40 Cnts", "PASS"},
    {"81", "*", "64", "*", "*", "*", "*"},
};

Strings GridRow(const Grid& g, int row) {
    Strings out;
    for (int c = 0; c < g.cols(); ++c)
        out.push_back(g.text(row, c));
    return out;
}

// Opens the maker's tests from frmMode5 for the first sensor.
void OpenManuf(Mode5Rig& r) {
    r.sae().show();
    r.sae().cmdManuf.click();
}

TEST(Mode5, TheMakersSweepListsTheSupportedIdsWithTheirValuesAndGivesTheLineBack) {
    for (const Line& l : kLines) {
        SCOPED_TRACE(Trace(l));
        Mode5Rig r(l.hardware, l.car, l.start);
        r.connect();
        App& app = r.app();
        app.PidWanted[0x0C] = app.PidWanted[0x0D] = true;
        const auto flags = app.PidWanted;
        OpenManuf(r);
        FrmMode5Manuf& f = r.manuf();
        EXPECT_FALSE(r.sae().loaded());
        EXPECT_TRUE(f.visible());
        EXPECT_EQ(f.Panel3.text(), "O2 SENSOR B1S1");
        EXPECT_FALSE(app.PidWanted[0x0C]);
        r.run(5500);
        EXPECT_EQ(f.Panel1.text(), "END OF PROCESS");
        EXPECT_EQ(f.Mode5ManufCount, 11);
        EXPECT_EQ(f.List1.count(), 224);
        EXPECT_EQ(f.MSFlexGrid1.rows(), 11 + 125);
        for (std::size_t i = 0; i < kManufRows.size(); ++i)
            EXPECT_EQ(GridRow(f.MSFlexGrid1, int(i + 1)), kManufRows[i]);
        EXPECT_EQ(f.MSFlexGrid1.text(int(kManufRows.size() + 1), 0), "");
        // Seven support requests and one per row; ids 32, 64, ... are never asked.
        EXPECT_EQ(r.mode5Requests().size(), 7 + kManufRows.size());
        EXPECT_EQ(app.PidWanted, flags);
        EXPECT_TRUE(app.Mode5ManufActive);  // until the screen closes
        const std::size_t before = r.decoded.size();
        r.run(2000);
        EXPECT_GT(r.decoded.size(), before + 3);
        EXPECT_TRUE(f.unload());
        EXPECT_FALSE(app.Mode5ManufActive);
        EXPECT_TRUE(app.Connected);
    }
}

// A car without oxygen-sensor tests, or one whose replies come scrambled: both runs end as
// usual and the scan goes on.
TEST(Mode5, MissingOrScrambledRepliesEndBothRunsAsUsual) {
    struct Case {
        Line line;
        bool scrambled;  // else the car holds no tests
    };
    for (const Case& c : {Case{kLines[0], false}, Case{kLines[3], false}, Case{kLines[4], false},
                          Case{kLines[0], true}, Case{kLines[4], true}}) {
        SCOPED_TRACE(Trace(c.line) + (c.scrambled ? ", scrambled" : ", no tests"));
        Mode5Rig r(c.line.hardware, c.line.car, c.line.start);
        for (sim::SimEcu& e : r.vehicle.ecus)
            if (!c.scrambled) e.o2Tests = {};
        r.connect();
        if (c.scrambled && r.br3) r.br3->garbleNextAnswers(30);
        if (c.scrambled && r.ecu) r.ecu->garbleNextAnswers(30);
        r.sae().show();
        r.runTests(0);
        EXPECT_EQ(r.mode5Requests().size(), 10u);
        EXPECT_EQ(r.sae().Panel1.text(), "End Of Progress");
        r.sae().cmdManuf.click();
        r.run(c.scrambled ? 70000 : 3000);  // scrambled support answers may mark every id
        FrmMode5Manuf& f = r.manuf();
        EXPECT_EQ(f.Panel1.text(), "END OF PROCESS");
        EXPECT_TRUE(r.app().Connected);
        if (c.scrambled) continue;
        for (int n = 1; n <= 10; ++n)
            EXPECT_EQ(Row(r.sae(), n)[0], "N/A");
        EXPECT_EQ(r.mode5Requests().size(), 10u + 7u);
        EXPECT_EQ(f.Mode5ManufCount, 0);
        EXPECT_EQ(f.MSFlexGrid1.text(1, 0), "");
        EXPECT_EQ(f.List1.item(223), "PID 224  NOT SUPPORTED");
        // With no sensor to name, SAE asks nothing.
        r.sae().show();
        r.sae().cmbO2.clear();
        r.sae().cmdOk.click();
        EXPECT_FALSE(r.app().Mode5Requested);
    }
}

TEST(Mode5, CancelAsksAndYesEndsTheSweepWhileNoGoesOn) {
    for (MsgAnswer answer : {MsgAnswer::Yes, MsgAnswer::No}) {
        SCOPED_TRACE(answer == MsgAnswer::Yes ? "Yes" : "No");
        Mode5Rig r(kBr3, "vpw", 1);
        r.connect();
        OpenManuf(r);
        FrmMode5Manuf& f = r.manuf();
        EXPECT_FALSE(f.unload());  // refused while the sweep runs
        // Three rows in: 50 ms + 100 + 150 + 7 x 250 of support, 250 per test.
        r.after(2050 + 3 * 250 + 100, [&f] { f.cmdCancelMode5.click(); });
        r.t.dialogs.answerNext(answer);
        r.run(5500);
        ASSERT_EQ(r.t.dialogs.titles(), Strings{"MODE 5"});
        EXPECT_EQ(r.t.dialogs.shown()[0].text, "Are You Sure You Want To Cancel Mode 5?");
        EXPECT_EQ(f.Panel1.text(), "END OF PROCESS");
        EXPECT_EQ(f.MSFlexGrid1.text(8, 0), answer == MsgAnswer::Yes ? "" : "81");
        EXPECT_NE(f.MSFlexGrid1.text(3, 0), "");
        EXPECT_TRUE(f.unload());
    }
}

TEST(Mode5, ALostConnectionEndsTheRunWithoutHangingOrGivingTheLineBack) {
    for (const Line& l : {kLines[0], kLines[4]}) {
        SCOPED_TRACE(Trace(l));
        Mode5Rig r(l.hardware, l.car, l.start);
        r.connect();
        App& app = r.app();
        // The SAE tests: on the K-line the run stops where it is and the screen stays busy.
        r.sae().show();
        r.sae().cmdOk.click();
        r.after(1000, [&app] { app.hooks.EndSession(); });
        r.run(4000);
        EXPECT_FALSE(app.Connected);
        const bool kline = l.hardware != std::string(kBr3);
        EXPECT_EQ(r.sae().Mode5Busy, kline);
        EXPECT_EQ(r.sae().unload(), !kline);
    }
    Mode5Rig r(kKesh, "iso9141", 1);
    r.connect();
    App& app = r.app();
    OpenManuf(r);
    r.after(3000, [&app] { app.hooks.EndSession(); });
    r.run(5000);
    EXPECT_FALSE(app.Connected);
    EXPECT_NE(r.manuf().Panel1.text(), "END OF PROCESS");
    EXPECT_TRUE(app.Mode5ManufActive);
    EXPECT_TRUE(r.manuf().unload());
}

}  // namespace
}  // namespace ketrel::test
