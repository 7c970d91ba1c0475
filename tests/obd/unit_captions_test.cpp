#include "obd/unit_captions.h"

#include <gtest/gtest.h>

#include "reply_cells.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

TEST(UnitCaptions, MainScreenWordsFollowTheSettings) {
    struct Case {
        test::Units units;
        const char *temp, *map, *psi, *fuel, *speed;
    } cases[] = {
        {{"F", "MPH", "PSI"}, "Deg {F}", "In/Hg", "P.S.I.", "P.S.I", "MPH"},
        {{"C", "KPH", "kPa"}, "Deg {C}", "kPa", "kPa", "kPa", "KPH"},
    };
    for (const Case& c : cases) {
        test::TestApp t;
        test::SetUnits(*t, c.units);
        SetMainUnitCaptions(*t);
        FrmMain& m = t->frmMain();
        for (int i = 0; i <= 3; ++i)
            EXPECT_EQ(m.lblTemp[i].text(), c.temp);
        EXPECT_EQ(m.Label10.text(), c.map);
        EXPECT_EQ(m.label4[2].text(), c.map);
        EXPECT_EQ(m.lblPSI[0].text(), c.psi);
        EXPECT_EQ(m.label4[3].text(), c.fuel);
        EXPECT_EQ(m.lblMPH[0].text(), c.speed);
        EXPECT_EQ(m.lblMPH[1].text(), c.speed);
        EXPECT_EQ(m.GridData.text(1, 2), "");  // label style: the grid is not written
    }
}

TEST(UnitCaptions, ExtendedScreenWordsFollowTheSettings) {
    struct Case {
        test::Units units;
        const char *temp, *pressure, *vapour, *distance;
    } cases[] = {
        {{"F", "MPH", "PSI"}, "Deg {F}", "PSI", "In/H2O", "Miles"},
        {{"C", "KPH", "kPa"}, "Deg {C}", "kPa", "Pa", "KM"},
    };
    for (const Case& c : cases) {
        test::TestApp t;
        test::SetUnits(*t, c.units);
        SetExtendedUnitCaptions(*t);
        FrmNewPids& x = t->frmNewPids();
        for (int i : {0, 1, 2, 3, 20})
            EXPECT_EQ(x.lblTemp[i].text(), c.temp) << i;
        for (int i : {7, 8, 17})
            EXPECT_EQ(x.lblPressure[i].text(), c.pressure) << i;
        EXPECT_EQ(x.lblPressure[16].text(), c.vapour);
        EXPECT_EQ(x.lblSpeed[4].text(), c.distance);
        EXPECT_EQ(x.lblSpeed[15].text(), c.distance);
    }
}

TEST(UnitCaptions, UnknownSettingsLeaveTheCaptionsAlone) {
    test::TestApp t;
    test::SetUnits(*t, {"C", "KPH", "kPa"});
    SetMainUnitCaptions(*t);
    SetExtendedUnitCaptions(*t);
    test::SetUnits(*t, {"", "x", "bar"});
    SetMainUnitCaptions(*t);
    SetExtendedUnitCaptions(*t);
    EXPECT_EQ(t->frmMain().lblTemp[0].text(), "Deg {C}");
    EXPECT_EQ(t->frmMain().lblMPH[0].text(), "KPH");
    EXPECT_EQ(t->frmMain().label4[3].text(), "kPa");
    EXPECT_EQ(t->frmNewPids().lblPressure[16].text(), "Pa");
}

TEST(UnitCaptions, InGridStyleTheUnitColumnsFollowToo) {
    test::TestApp t;
    t->GridStyle = true;
    test::SetUnits(*t, {"C", "KPH", "kPa"});
    SetMainUnitCaptions(*t);
    Grid& g = t->frmMain().GridData;
    EXPECT_EQ(g.text(1, 2), "Deg {C}");
    EXPECT_EQ(g.text(3, 2), "Volts");
    EXPECT_EQ(g.text(11, 2), "%");
    EXPECT_EQ(g.text(16, 2), "KPH");
    EXPECT_EQ(g.text(2, 6), "kPa");
    EXPECT_EQ(g.text(3, 6), "R.P.M.");
    EXPECT_EQ(g.text(19, 6), "Sec");
    test::SetUnits(*t, {"F", "MPH", "PSI"});
    SetMainUnitCaptions(*t);
    EXPECT_EQ(g.text(2, 6), "In/Hg");
    EXPECT_EQ(g.text(6, 6), "P.S.I");
    EXPECT_EQ(g.text(16, 2), "MPH");
}

}  // namespace
}  // namespace ketrel
