#include <gtest/gtest.h>

#include <cmath>
#include <set>

#include "display/gauge_angles.h"
#include "display/gauges.h"
#include "platform/text_convert.h"
#include "display/scope.h"
#include "flow/dorvane_rig.h"
#include "screens/frm_guage.h"
#include "screens/frm_mult_guage.h"
#include "screens/frm_scope.h"

namespace ketrel::test {
namespace {

// The Mode 01 PIDs the converter was asked for from command `from` on.
std::set<std::string> polledSince(const DorvaneRig& r, std::size_t from) {
    std::set<std::string> pids;
    for (std::size_t i = from; i < r.commands().size(); ++i)
        if (r.commands()[i].rfind("01", 0) == 0) pids.insert(r.commands()[i].substr(2, 2));
    return pids;
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
    const std::size_t from = r.commands().size();
    const std::uint64_t before = s.Signal.revision();
    r.run(3000);
    EXPECT_EQ(polledSince(r, from), std::set<std::string>{"0C"});
    // 40 samples in 3 s at 75 ms, each a scroll and a segment.
    EXPECT_NEAR(double(s.Signal.revision() - before), 80, 2);
    auto trace = opsOf(s.Signal, 0x00FF00);
    ASSERT_GE(trace.size(), 40u);
    EXPECT_EQ(s.lblValue.text(), app.frmMain().lblRPM.text());
    const double rpm = Val(s.lblValue.text());
    EXPECT_NEAR(trace.back().y2, std::nearbyint((254 - rpm / 40) * 300 / 256.0) - 1, 0.5);
    EXPECT_EQ(trace.back().x2, 600 - 4 - 1);
    EXPECT_EQ(trace.back().x1, trace.back().x2 - 4);
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
    const std::size_t after = r.commands().size();
    r.run(3000);
    EXPECT_GT(polledSince(r, after).size(), 5u);
}

TEST(ScopeFlow, WithoutASessionThePidMenuIsOffAndTheTraceStaysFlat) {
    DorvaneRig r;
    InstallScope(r.app());
    FrmScope& s = *ScopeScreen(r.app());
    MenuItem* shown = nullptr;
    s.popupMenu = [&](MenuItem& m) { shown = &m; };
    s.show();
    s.cmdPIDSAvailable.click();
    EXPECT_EQ(shown, &s.mnuView);
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
    const std::size_t from = r.commands().size();
    r.run(3000);
    EXPECT_EQ(polledSince(r, from), std::set<std::string>{"0C"});
    const long rpm = std::lround(Val(app.frmMain().lblRPM.text()));
    ASSERT_GT(rpm, 0);
    EXPECT_EQ(g.lblRPM[27].text(), std::to_string(rpm));
    const double a = 1.71 + double(rpm) / 2000;
    EXPECT_NEAR(g.Line4.x2(), 180 + 150 * std::cos(a), 1e-6);
    EXPECT_NEAR(g.Line4.y2(), 180 + 150 * std::sin(a), 1e-6);
    EXPECT_EQ(g.lblRPM[27].foreColor(), 0x00FF00);
    EXPECT_EQ(g.BarLow.widthTwips(), rpm);

    // A scale change shows at the next new value; the bar doubles on the mid scale.
    g.mnuViewMid.click();
    EXPECT_EQ(g.Label1[13].text(), "1");
    EXPECT_TRUE(g.mnuViewMid.checked());
    EXPECT_FALSE(g.mnuViewBig.checked());
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
    const std::size_t from = r.commands().size();
    r.run(25000);  // past the idle, so the car moves
    EXPECT_EQ(polledSince(r, from), (std::set<std::string>{"05", "0A", "0C", "0D", "0F"}));
    FrmMain& m = app.frmMain();
    for (Field* f : {&m.lblRPM, &m.lblSpeed, &m.lblCoolant, &m.lblFuelPres})
        ASSERT_NE(Val(f->text()), 0) << f->name();
    EXPECT_EQ(g.Label1[9].text(), m.lblRPM.text());
    EXPECT_EQ(g.Label1[11].text(), DialText(Dial::Speed, Val(m.lblSpeed.text()), "KPH"));
    EXPECT_EQ(g.Label1[13].text(), DialText(Dial::Coolant, Val(m.lblCoolant.text()), "C"));
    EXPECT_EQ(g.Label1[10].text(),
              DialText(Dial::FuelPressure, Val(m.lblFuelPres.text()), app.Pressure));
    const double a = *DialAngle(Dial::Rpm, DialClamp(Dial::Rpm, m.lblRPM.text()));
    EXPECT_NEAR(g.Line1[2].x2(), 100 + 75 * std::cos(a), 1e-6);
    EXPECT_NEAR(g.Line1[2].y2(), 100 + 75 * std::sin(a), 1e-6);
    g.mnuFileExit.click();
    EXPECT_TRUE(app.frmMain().enabled());
    EXPECT_EQ(app.PidWanted, r.wanted);
}

}  // namespace
}  // namespace ketrel::test
