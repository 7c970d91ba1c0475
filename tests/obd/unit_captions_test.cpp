#include "obd/unit_captions.h"

#include <gtest/gtest.h>

#include "reply_cells.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

TEST(UnitCaptions, BothScreensFollowTheSettingsAndIgnoreUnknownOnes) {
    test::TestApp t;
    FrmMain& m = t->frmMain();
    FrmNewPids& x = t->frmNewPids();
    // Each row: settings, then main temp, MAP, P.S.I., fuel, speed; extended temp, pressure,
    // vapour, distance. Unknown settings leave the captions of the row before.
    struct Case {
        test::Units u;
        std::array<const char*, 9> words;
    } cases[] = {
        {{"F", "MPH", "PSI"},
         {"Deg {F}", "In/Hg", "P.S.I.", "P.S.I", "MPH", "Deg {F}", "PSI", "In/H2O", "Miles"}},
        {{"C", "KPH", "kPa"},
         {"Deg {C}", "kPa", "kPa", "kPa", "KPH", "Deg {C}", "kPa", "Pa", "KM"}},
        {{"", "x", "bar"}, {"Deg {C}", "kPa", "kPa", "kPa", "KPH", "Deg {C}", "kPa", "Pa", "KM"}},
    };
    for (const Case& c : cases) {
        test::SetUnits(*t, c.u);
        SetMainUnitCaptions(*t);
        SetExtendedUnitCaptions(*t);
        std::array<std::string, 9> got{
            m.lblTemp[3].text(),      m.label4[2].text(),       m.lblPSI[0].text(),
            m.label4[3].text(),       m.lblMPH[1].text(),       x.lblTemp[20].text(),
            x.lblPressure[17].text(), x.lblPressure[16].text(), x.lblSpeed[15].text()};
        for (std::size_t i = 0; i < 9; ++i)
            EXPECT_EQ(got[i], c.words[i]) << c.u.temp << " " << i;
        EXPECT_EQ(m.Label10.text(), m.label4[2].text());
        EXPECT_EQ(m.GridData.text(1, 2), "");  // label style: the grid is not written
    }
}

TEST(UnitCaptions, InGridStyleTheUnitColumnsFollowToo) {
    test::TestApp t;
    t->GridStyle = true;
    Grid& g = t->frmMain().GridData;
    test::SetUnits(*t, {"C", "KPH", "kPa"});
    SetMainUnitCaptions(*t);
    EXPECT_EQ(g.text(1, 2), "Deg {C}");
    EXPECT_EQ(g.text(3, 2), "Volts");
    EXPECT_EQ(g.text(16, 2), "KPH");
    EXPECT_EQ(g.text(2, 6), "kPa");
    EXPECT_EQ(g.text(19, 6), "Sec");
    test::SetUnits(*t, {"F", "MPH", "PSI"});
    SetMainUnitCaptions(*t);
    EXPECT_EQ(g.text(2, 6), "In/Hg");
    EXPECT_EQ(g.text(6, 6), "P.S.I");
}

}  // namespace
}  // namespace ketrel
