#include "core/data_tab.h"

#include <gtest/gtest.h>

#include <set>

#include "screens/data_tab_layout.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

struct DataTab {
    DataTab() { InstallDataTab(*t); }
    Field& label(const char* name) { return static_cast<Field&>(*t->frmMain().findControl(name)); }
    test::TestApp t;
};

// A misspelt name or a shared cell in the row table would only show as a crash or a lost value.
TEST(DataTab, EveryRowNamesFieldsOfTheMainScreenAndACellOfItsOwn) {
    test::TestApp t;
    FrmMain& m = t->frmMain();
    std::set<std::pair<int, int>> cells;
    for (const DataTabRow& row : kDataTabRows) {
        EXPECT_NE(m.findControl(row.label), nullptr) << row.label;
        EXPECT_TRUE(!row.unitField || m.findControl(row.unitField)) << row.label;
        EXPECT_TRUE(row.gridCol == 1 || row.gridCol == 5) << row.label;
        EXPECT_TRUE(cells.insert({row.gridRow, row.gridCol}).second) << row.label;
        EXPECT_TRUE(row.indicator >= 0 && row.indicator <= kLastIndicator) << row.label;
        std::vector<int> items = IndicatorItems(IndicatorPid(row.indicator));
        bool second = items.size() == 2 && items.back() != row.indicator;
        EXPECT_TRUE(!row.coloursSecondIndicator || second) << row.label;
    }
}

TEST(DataTab, NAGreysTheLabelWithItsCaptionAndAValueBringsThemBack) {
    DataTab d;
    FrmMain& m = d.t->frmMain();
    struct Case {
        const char* label;
        Field& caption;
    };
    std::vector<Case> cases{{"lblECMAddress", m.Label32[17]}, {"lblFFRPM", m.Label2[10]}};
    for (const DataTabRow& row : kDataTabRows)
        cases.push_back({row.label, m.Label1[row.captionItem]});
    for (const Case& c : cases) {
        d.label(c.label).setText("N/A");
        EXPECT_FALSE(d.label(c.label).enabled() || c.caption.enabled()) << c.label;
        d.label(c.label).setText("12");
        EXPECT_TRUE(d.label(c.label).enabled() && c.caption.enabled()) << c.label;
    }
    EXPECT_EQ(m.GridData.text(3, 5), "");  // label style: the grid is not written
}

TEST(DataTab, GridStyleIsBuiltFromTheLabelsAndMirrorsEveryChange) {
    DataTab d;
    FrmMain& m = d.t->frmMain();
    d.t->Temp = "C";
    m.lblRPM.setText("800");
    m.mnuViewStyleGrid.click();
    EXPECT_TRUE(d.t->DataStyle == "2" && d.t->GridStyle);
    EXPECT_TRUE(m.mnuViewStyleGrid.checked() && !m.mnuViewDefault.checked());
    EXPECT_TRUE(m.GridData.visible() && !m.Frame14.visible());
    Grid& g = m.GridData;
    EXPECT_EQ(g.cols(), 7);
    EXPECT_EQ(g.text(3, 5), "800");
    // Captions and units come from the labels.
    EXPECT_EQ(g.text(3, 0) + "|" + g.text(9, 4) + "|" + g.text(1, 2),
              "O2 BANK 1 SENSOR 1|STFT O2B1S1|Deg {C}");
    int n = 0;
    for (const DataTabRow& row : kDataTabRows) {
        std::string value = std::to_string(++n + 10);
        d.label(row.label).setText(value);
        EXPECT_EQ(g.text(row.gridRow, row.gridCol), value) << row.label;
    }
    m.mnuViewDefault.click();
    EXPECT_TRUE(d.t->DataStyle == "1" && !d.t->GridStyle && m.mnuViewDefault.checked());
    EXPECT_TRUE(!m.GridData.visible() && m.Frame14.visible());
    m.lblRPM.setText("900");
    EXPECT_NE(g.text(3, 5), "900");
}

TEST(DataTab, TheAirStatusCellNamesTheCodeWithTwoSpellingsOfOff) {
    struct Case {
        const char *code, *atBuild, *onChange;
    } cases[] = {{"1", "Upstream", "Upstream"},
                 {"2", "Downstream", "Downstream"},
                 {"3", "OFF", "Off"},
                 {"N/A", "N/A", "N/A"}};
    for (const Case& c : cases) {
        DataTab d;
        FrmMain& m = d.t->frmMain();
        m.lblAirCommand.setText(c.code);
        m.mnuViewStyleGrid.click();
        EXPECT_EQ(m.GridData.text(18, 5), c.atBuild) << c.code;
        m.lblAirCommand.setText("x");
        m.lblAirCommand.setText(c.code);
        EXPECT_EQ(m.GridData.text(18, 5), c.onChange) << c.code;
    }
}

TEST(DataTab, O2VoltagesSetTheirSecondIndicatorWhenWantedAndLive) {
    struct Case {
        bool wanted, playing;
        const char *text, *picture;
    } cases[] = {{true, false, "0.450", kImgGreen},
                 {true, false, "N/A", kImgRed},
                 {false, false, "0.450", ""},
                 {true, true, "0.450", ""}};
    for (const Case& c : cases) {
        DataTab d;
        d.t->PidWanted[0x16] = c.wanted;
        d.t->PlayingLog = c.playing;
        d.t->frmMain().lblO2b1s3.setText(c.text);
        EXPECT_EQ(d.t->frmMain().Image1[0x16 + 14].picture(), c.picture) << c.text << c.wanted;
    }
}

}  // namespace
}  // namespace ketrel
