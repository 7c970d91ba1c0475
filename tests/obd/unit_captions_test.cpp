#include "obd/unit_captions.h"

#include <gtest/gtest.h>

#include "reply_cells.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

TEST(UnitCaptions, BothScreensAndTheGridFollowTheSettingsAndIgnoreUnknownOnes) {
    test::TestApp t;
    FrmMain& m = t->frmMain();
    FrmNewPids& x = t->frmNewPids();
    Grid& g = m.GridData;
    SetMainUnitCaptions(*t);
    EXPECT_EQ(g.text(1, 2), "");  // label style: the grid is not written
    t->GridStyle = true;
    // Each row: settings, then main temp, MAP, P.S.I., fuel, speed; extended temp, pressure,
    // vapour, distance; the grid's temp, speed, MAP and fuel pressure. Unknown settings leave
    // the captions of the row before; the grid takes the first word of each.
    struct Case {
        test::Units u;
        std::array<const char*, 13> words;
    } cases[] = {
        {{"F", "MPH", "PSI"},
         {"Deg {F}", "In/Hg", "P.S.I.", "P.S.I", "MPH", "Deg {F}", "PSI", "In/H2O", "Miles",
          "Deg {F}", "MPH", "In/Hg", "P.S.I"}},
        {{"C", "KPH", "kPa"},
         {"Deg {C}", "kPa", "kPa", "kPa", "KPH", "Deg {C}", "kPa", "Pa", "KM", "Deg {C}", "KPH",
          "kPa", "kPa"}},
        {{"", "x", "bar"},
         {"Deg {C}", "kPa", "kPa", "kPa", "KPH", "Deg {C}", "kPa", "Pa", "KM", "Deg {F}", "MPH",
          "In/Hg", "P.S.I"}},
    };
    for (const Case& c : cases) {
        test::SetUnits(*t, c.u);
        SetMainUnitCaptions(*t);
        SetExtendedUnitCaptions(*t);
        std::array<std::string, 13> got{m.lblTemp[3].text(),
                                        m.label4[2].text(),
                                        m.lblPSI[0].text(),
                                        m.label4[3].text(),
                                        m.lblMPH[1].text(),
                                        x.lblTemp[20].text(),
                                        x.lblPressure[17].text(),
                                        x.lblPressure[16].text(),
                                        x.lblSpeed[15].text(),
                                        g.text(1, 2),
                                        g.text(16, 2),
                                        g.text(2, 6),
                                        g.text(6, 6)};
        for (std::size_t i = 0; i < got.size(); ++i)
            EXPECT_EQ(got[i], c.words[i]) << c.u.temp << " " << i;
        EXPECT_EQ(m.Label10.text(), m.label4[2].text());
    }
}

}  // namespace
}  // namespace ketrel
