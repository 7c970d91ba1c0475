// The data displays, the scope and the gauges on a simulated car: each one narrows the polling
// to what it shows and gives it back when it closes.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <functional>
#include <memory>
#include <set>

#include "core/main_screen.h"
#include "display/displays.h"
#include "display/fuel_economy.h"
#include "display/gauge_angles.h"
#include "display/gauges.h"
#include "display/scope.h"
#include "flow/car_rig.h"
#include "platform/sqlite_db.h"
#include "platform/text_convert.h"
#include "screens/frm_custom_data.h"
#include "screens/frm_guage.h"
#include "screens/frm_mpg.h"
#include "screens/frm_mult_guage.h"
#include "screens/frm_real_display.h"
#include "screens/frm_scope.h"

namespace ketrel::test {
namespace {

// Makes System/MPGAve1.db and its template from the shipped schema.
void MakeMpgStore(const std::filesystem::path& appPath) {
    const std::string schema = ReadFile(std::string(KETREL_DATA_DIR) + "/db/MPGAve1.sql");
    std::filesystem::create_directories(appPath / "System");
    for (const auto& p : {MpgStorePath(appPath), MpgTemplatePath(appPath)}) {
        SqliteDb db;
        ASSERT_TRUE(db.open(p, true) && db.execScript(schema)) << db.error();
    }
}

// The program's session and displays joined to a simulated count-byte converter and a VPW
// pick-up on port 1, or with `kline` to a K-line cable and a KWP 2000 car woken up fast.
struct DisplayRig : CarRig {
    explicit DisplayRig(bool kline = false)
        : CarRig(kline ? kKesh : kBr3, kline ? "iso14230" : "vpw", kline ? 3 : 1) {
        App& app = *t;
        app.Speed = "MPH";
        MakeMpgStore(t.dir.path());
        InstallDisplays(app);
        InstallMainScreen(app);
        connect(MsgAnswer::Cancel);
    }
    template <class S>
    S& screen(const char* name) {
        return *dynamic_cast<S*>(app().screenByName(name));
    }
};

TEST(Displays, ExtendedListPollsItsPidsAndGivesTheCycleBackOneTickAfterClosing) {
    struct Case {
        bool kline;
        std::set<int> extended;  // the support PIDs 20 and 40, then what the car has
    } cases[] = {{false, {0x20, 0x21, 0x2F, 0x33, 0x40}}, {true, {0x20, 0x21, 0x2F, 0x40}}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.kline ? "K-line" : "count-byte");
        DisplayRig r(c.kline);
        App& app = r.app();
        ASSERT_TRUE(app.Connected);
        r.run(2000);
        app.GridStyle = c.kline;  // the K-line case in grid style
        app.frmMain().mnuOptionData.click();
        ASSERT_TRUE(app.frmNewPids().visible());
        EXPECT_FALSE(app.frmMain().enabled());
        EXPECT_EQ(r.polled(5000), c.extended);
        EXPECT_NE(app.frmNewPids().lblDisMilOn.text(), "");
        EXPECT_TRUE(app.frmNewPids().lblDisMilOn.enabled());
        EXPECT_EQ(app.frmNewPids().Image1[1].picture(), kImgGreen);
        // A value that goes to "N/A" greys with its caption and comes back with a value; the
        // grid style mirrors it.
        FrmNewPids& x = app.frmNewPids();
        x.lblVolt.setText("N/A");
        EXPECT_FALSE(x.lblVolt.enabled() || x.Label1[1].enabled());
        x.lblVolt.setText("13.8");
        EXPECT_TRUE(x.lblVolt.enabled() && x.Label1[1].enabled());
        EXPECT_EQ(x.GridData.text(12, 1), c.kline ? "13.8" : "");
        EXPECT_EQ(x.GridData.text(12, 0), c.kline ? "CONTROL MODULE VOLTAGE" : "");
        // With the override on, a status picture forces a PID the car did not report.
        app.frmMain().mnuEditPidsOver.click();
        x.Image1[0x42 - 32].click();
        EXPECT_TRUE(app.Mode1Supported[0x42] && app.PidWanted[0x42]);
        EXPECT_TRUE(r.polled(3000).count(0x42));
        // The close waits one tick of Timer1.
        EXPECT_FALSE(app.frmNewPids().unload());
        EXPECT_FALSE(app.CustomListActive);
        r.run(150);
        EXPECT_FALSE(app.frmNewPids().loaded());
        EXPECT_TRUE(app.frmMain().enabled());
        const std::set<int> after = r.polled(3000);
        EXPECT_TRUE(after.count(0x0C));
        EXPECT_EQ(after.lower_bound(0x21), after.end());
    }
}

TEST(Displays, CustomListPollsOnlyTheChosenPids) {
    DisplayRig r;
    App& app = r.app();
    r.run(2000);
    auto& c = r.screen<FrmCustomData>("frmCustomData");
    const auto wantedBefore = app.PidWanted;
    std::vector<std::string> words;
    // PID 21 is not known before the extended list asks for PID 20. First nothing chosen:
    // refused. Then RPM and speed only.
    r.after(100, [&] {
        for (int pid : {0x02, 0x0C, 0x21})
            words.push_back(c.Check1[pid].caption());
        c.Check2.setValue(true);
        c.Check2.setValue(false);
        c.cmdOk.click();
        words.push_back(c.Panel1.text());
        EXPECT_EQ(app.PidWanted, wantedBefore);
        c.Check1[0x0C].click();
        c.Check1[0x0D].click();
        words.push_back(c.Check1[0x0C].caption());
        c.cmdOk.click();
    });
    app.frmMain().mnuOptionList.click();  // modal: returns when the list closes
    EXPECT_EQ(words, (std::vector<std::string>{
                         "N/A", "ENABLED", "N/A",
                         "YOU MUST HAVE AT LEAST 1 OF THE PIDS SELECTED IN EACH TAB SECTION!",
                         "ENABLED"}));
    EXPECT_FALSE(c.loaded());
    EXPECT_EQ(app.frmMain().Image1[5].picture(), kImgYellow);
    EXPECT_EQ(r.polled(3000), (std::set<int>{0x0C, 0x0D}));
}

TEST(Displays, LargeDisplayFollowsTheMainFieldAndBlinksWhenNotPolled) {
    DisplayRig r;
    App& app = r.app();
    r.run(3000);
    app.frmMain().mnuViewRPM.click();
    auto& d = r.screen<FrmRealDisplay>("frmRealDisplay");
    ASSERT_TRUE(d.visible());
    r.run(2000);
    const std::string rpm = app.frmMain().lblRPM.text();
    EXPECT_EQ(d.lblValue.text(), rpm);
    EXPECT_EQ(d.ProgressBar1.value(), std::stoi(rpm));
    EXPECT_FALSE(d.lblDisabled[0].visible());
    // A value the cycle does not poll: the warning blinks every 500 ms.
    app.PidWanted[0x0B] = false;
    app.frmMain().mnuViewMAP.click();
    EXPECT_EQ(d.lblDisplayPID.text(), "MAP");
    std::vector<bool> seen;
    for (int i = 0; i < 4; ++i) {
        r.run(500);
        seen.push_back(d.lblDisabled[0].visible());
    }
    EXPECT_EQ(seen, (std::vector<bool>{true, false, true, false}));
}

TEST(Displays, FuelEconomyNarrowsThePollingAndItsAverageSurvivesARestart) {
    std::string average;
    const auto copy = std::filesystem::temp_directory_path() / "ketrel-displays-mpg.db";
    {
        DisplayRig r;
        App& app = r.app();
        r.run(2000);
        const auto wanted = app.PidWanted;
        app.frmMain().mnuViewRPM.click();  // the fuel economy closes the large display
        app.frmMain().mnuViewMPG.click();
        auto& s = r.screen<FrmMPG>("frmMPG");
        ASSERT_TRUE(s.visible());
        EXPECT_FALSE(app.screenByName("frmRealDisplay")->loaded());
        EXPECT_EQ(r.polled(30000), (std::set<int>{0x07, 0x09, 0x0D, 0x10}));
        EXPECT_NE(s.lblInstMPG.text(), "-");  // moving by now
        EXPECT_NE(s.lblMPGAve.text(), "");
        r.run(10000);
        average = s.lblMPGAve.text();
        s.unload();
        EXPECT_EQ(app.PidWanted, wanted);
        EXPECT_TRUE(app.frmMain().enabled());
        std::filesystem::copy_file(MpgStorePath(r.t.dir.path()), copy,
                                   std::filesystem::copy_options::overwrite_existing);
    }
    // A new run of the program finds the samples and shows the same average, not connected.
    TestApp t;
    MakeMpgStore(t.dir.path());
    std::filesystem::copy_file(copy, MpgStorePath(t.dir.path()),
                               std::filesystem::copy_options::overwrite_existing);
    std::filesystem::remove(copy);
    InstallDisplays(*t);
    auto& s = *dynamic_cast<FrmMPG*>(t->screenByName("frmMPG"));
    s.show();
    t.loop.runFor(10500);
    EXPECT_EQ(s.lblMPGAve.text(), average);
    // The reset empties the table: the average is no longer taken.
    ResetMpg(*t);
    s.lblMPGAve.setText("");
    t.loop.runFor(10000);
    EXPECT_EQ(s.lblMPGAve.text(), "");
}

std::vector<PictureOp> opsOf(const PictureBox& p, std::int64_t color) {
    std::vector<PictureOp> v;
    for (const PictureOp& op : p.ops())
        if (op.color == color) v.push_back(op);
    return v;
}

// A connected session with the displays installed, polling the car's whole list.
struct DisplaysRig : DorvaneRig {
    explicit DisplaysRig(bool withFuelPressure = false) {
        if (withFuelPressure) vehicle.ecus[0].mode1.insert(0x0A);
        InstallScope(app());
        InstallGauges(app());
        connect();
        run(1500);
        wanted = app().PidWanted;
    }
    std::array<bool, 101> wanted{};
};

TEST(ScopeFlow, PollsItsPidAloneDrawsOneSegmentPerPeriodAndGivesThePollingBack) {
    DisplaysRig r;
    App& app = r.app();
    FrmScope& s = *ScopeScreen(app);
    s.show();
    EXPECT_FALSE(app.frmMain().enabled());
    EXPECT_TRUE(s.mnuRPM.enabled());
    EXPECT_FALSE(s.mnuFuelPressure.enabled());  // the car has no PID 0A
    s.mnuRPM.click();
    EXPECT_EQ(s.lblUnits.text(), "-RPM-");
    r.run(200);  // the request in flight lands
    const std::uint64_t before = s.Signal.revision();
    EXPECT_EQ(r.polled(3000), std::set<int>{0x0C});
    // 40 samples in 3 s at 75 ms, each a scroll and a segment.
    EXPECT_NEAR(double(s.Signal.revision() - before), 80, 2);
    auto trace = opsOf(s.Signal, 0x00FF00);
    ASSERT_GE(trace.size(), 40u);
    EXPECT_EQ(s.lblValue.text(), app.frmMain().lblRPM.text());
    EXPECT_LE(Val(s.lblMin.text()), Val(s.lblMax.text()));

    // Each faster speed starts a fresh grid; past "8x" nothing changes.
    for (int i = 0; i < 4; ++i)
        s.cmdIncrease.click();
    EXPECT_EQ(s.lblSpeed.text(), "8x");
    EXPECT_EQ(opsOf(s.Signal, 0x00FF00).size(), 0u);
    EXPECT_EQ(opsOf(s.Signal, 0xFF0000).size(), 10u);
    s.cmdIncrease.click();
    EXPECT_EQ(s.lblSpeed.text(), "8x");
    r.run(900);
    EXPECT_NEAR(double(opsOf(s.Signal, 0x00FF00).size()), 99, 2);  // 100 samples at 9 ms
    // The grid scrolls away with the trace.
    r.run(2000);
    EXPECT_EQ(opsOf(s.Signal, 0xFF0000).size(), 0u);

    s.mnuFileExit.click();
    EXPECT_FALSE(s.loaded());
    EXPECT_TRUE(app.frmMain().enabled());
    EXPECT_EQ(app.PidWanted, r.wanted);
    EXPECT_GT(r.polled(3000).size(), 5u);
}

TEST(ScopeFlow, WithoutASessionThePidMenuIsOffAndTheTraceStaysFlat) {
    DorvaneRig r;
    InstallScope(r.app());
    FrmScope& s = *ScopeScreen(r.app());
    s.show();
    for (MenuItem* m : s.mnuView.children())
        EXPECT_FALSE(m->enabled()) << m->name();
    r.run(1000);
    auto trace = opsOf(s.Signal, 0x00FF00);
    ASSERT_FALSE(trace.empty());
    for (const PictureOp& op : trace)
        EXPECT_EQ(op.y2, std::nearbyint(254 * 300 / 256.0) - 1);
    EXPECT_EQ(s.lblScopePID.text(), "-SELECT-");
}

TEST(GaugesFlow, TheTachometerPollsRpmAloneAndFollowsTheMainScreen) {
    DisplaysRig r;
    App& app = r.app();
    FrmGuage& g = *GuageScreen(app);
    g.show();
    EXPECT_FALSE(app.frmMain().enabled());
    r.run(200);
    EXPECT_EQ(r.polled(3000), std::set<int>{0x0C});
    const long rpm = std::lround(Val(app.frmMain().lblRPM.text()));
    ASSERT_GT(rpm, 0);
    EXPECT_EQ(g.lblRPM[27].text(), std::to_string(rpm));
    EXPECT_EQ(g.BarLow.widthTwips(), rpm);

    // A scale change shows at the next new value; the bar doubles on the mid scale.
    g.mnuViewMid.click();
    EXPECT_TRUE(g.mnuViewMid.checked() && !g.mnuViewBig.checked());
    app.frmMain().lblRPM.setText("1000");
    r.run(5);
    EXPECT_EQ(g.BarLow.widthTwips(), 2000);
    g.mnuFileExit.click();
    EXPECT_TRUE(app.frmMain().enabled());
    EXPECT_EQ(app.PidWanted, r.wanted);
}

TEST(GaugesFlow, TheFiveDialsTestTheirLampsThenFollowTheMainScreen) {
    DisplaysRig r(true);
    App& app = r.app();
    app.Temp = "C";
    app.Speed = "KPH";
    app.Pressure = "kPa";
    FrmMultGuage& g = *MultGuageScreen(app);
    g.show();
    EXPECT_FALSE(app.frmMain().enabled());
    EXPECT_FALSE(g.enabled());
    r.run(600);
    EXPECT_EQ(g.Label1[9].text(), "88888");
    r.run(1000);
    EXPECT_TRUE(g.enabled());
    // Past the idle, so the car moves.
    EXPECT_EQ(r.polled(25000), (std::set<int>{0x05, 0x0A, 0x0C, 0x0D, 0x0F}));
    FrmMain& m = app.frmMain();
    for (Field* f : {&m.lblRPM, &m.lblSpeed, &m.lblCoolant, &m.lblFuelPres})
        ASSERT_NE(Val(f->text()), 0) << f->name();
    EXPECT_EQ(g.Label1[9].text(), m.lblRPM.text());
    EXPECT_EQ(g.Label1[11].text(), DialText(Dial::Speed, Val(m.lblSpeed.text()), "KPH"));
    EXPECT_EQ(g.Label1[13].text(), DialText(Dial::Coolant, Val(m.lblCoolant.text()), "C"));
    EXPECT_EQ(g.Label1[10].text(),
              DialText(Dial::FuelPressure, Val(m.lblFuelPres.text()), app.Pressure));
    g.mnuFileExit.click();
    EXPECT_TRUE(app.frmMain().enabled());
    EXPECT_EQ(app.PidWanted, r.wanted);
}

}  // namespace
}  // namespace ketrel::test
