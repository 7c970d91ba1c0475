#include "core/data_tab.h"

#include <gtest/gtest.h>

#include "screens/data_tab_layout.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

Field& Label(App& app, const char* name) {
    return static_cast<Field&>(*app.frmMain().findControl(name));
}

struct DataTab {
    DataTab() {
        t->Temp = "F";
        t->Speed = "MPH";
        t->Pressure = "PSI";
        InstallDataTab(*t);
    }
    test::TestApp t;
};

TEST(DataTab, NAGreysTheLabelWithItsCaptionAndAValueBringsThemBack) {
    DataTab d;
    FrmMain& m = d.t->frmMain();
    for (const DataTabRow& row : kDataTabRows) {
        Field& label = Label(*d.t, row.label);
        label.setText("N/A");
        EXPECT_FALSE(label.enabled()) << row.label;
        EXPECT_FALSE(m.Label1[row.captionItem].enabled()) << row.label;
        label.setText("12");
        EXPECT_TRUE(label.enabled()) << row.label;
        EXPECT_TRUE(m.Label1[row.captionItem].enabled()) << row.label;
    }
    // Freeze-frame and vehicle information values grey with their own captions.
    m.lblECMAddress.setText("N/A");
    EXPECT_FALSE(m.lblECMAddress.enabled());
    EXPECT_FALSE(m.Label32[17].enabled());
    m.lblECMAddress.setText("10");
    EXPECT_TRUE(m.Label32[17].enabled());
    m.lblFFRPM.setText("N/A");
    EXPECT_FALSE(m.lblFFRPM.enabled());
    EXPECT_FALSE(m.Label2[10].enabled());
    EXPECT_EQ(m.GridData.text(3, 5), "");  // label style: the grid is not written
}

TEST(DataTab, GridStyleMirrorsEveryValueIntoItsCell) {
    DataTab d;
    FrmMain& m = d.t->frmMain();
    m.lblRPM.setText("800");
    m.mnuViewStyleGrid.click();
    EXPECT_EQ(d.t->DataStyle, "2");
    EXPECT_TRUE(d.t->GridStyle);
    EXPECT_TRUE(m.mnuViewStyleGrid.checked());
    EXPECT_FALSE(m.mnuViewDefault.checked());
    EXPECT_FALSE(m.Frame14.visible());
    EXPECT_TRUE(m.GridData.visible());
    EXPECT_EQ(m.GridData.cols(), 7);
    EXPECT_EQ(m.GridData.text(3, 5), "800");  // copied when the grid is built
    int n = 0;
    for (const DataTabRow& row : kDataTabRows) {
        std::string value = std::to_string(++n);
        Label(*d.t, row.label).setText(value);
        if (std::string(row.label) == "lblAirCommand") continue;
        EXPECT_EQ(m.GridData.text(row.gridRow, row.gridCol), value) << row.label;
    }
    m.mnuViewDefault.click();
    EXPECT_EQ(d.t->DataStyle, "1");
    EXPECT_FALSE(d.t->GridStyle);
    EXPECT_TRUE(m.Frame14.visible());
    EXPECT_FALSE(m.GridData.visible());
    EXPECT_TRUE(m.mnuViewDefault.checked());
    std::string before = m.GridData.text(3, 5);
    m.lblRPM.setText("900");
    EXPECT_EQ(m.GridData.text(3, 5), before);  // label style: the grid no longer follows
}

TEST(DataTab, TheAirStatusCellNamesTheCodeWithTwoSpellingsOfOff) {
    struct Case {
        const char* code;
        const char* atBuild;
        const char* onChange;
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

TEST(DataTab, TheGridCarriesHeadersNamesO2CaptionsAndUnits) {
    DataTab d;
    FrmMain& m = d.t->frmMain();
    d.t->Temp = "C";
    m.mnuViewStyleGrid.click();
    Grid& g = m.GridData;
    EXPECT_EQ(g.text(0, 0), "PID");
    EXPECT_EQ(g.text(0, 5), "VALUE");
    EXPECT_EQ(g.text(0, 6), "UNITS");
    EXPECT_EQ(g.text(1, 0), "Coolant Temperature");
    EXPECT_EQ(g.text(18, 0), "MAF");
    EXPECT_EQ(g.text(3, 0), "O2 BANK 1 SENSOR 1");
    EXPECT_EQ(g.text(10, 0), "O2 BANK 2 SENSOR 4");
    EXPECT_EQ(g.text(9, 4), "STFT O2B1S1");
    EXPECT_EQ(g.text(19, 4), "Time Engine Start");
    EXPECT_EQ(g.text(1, 2), "Deg {C}");
    EXPECT_EQ(g.text(3, 2), "Volts");
    EXPECT_EQ(g.text(12, 6), "%");
}

TEST(DataTab, O2VoltagesSetTheirSecondIndicatorWhenWantedAndLive) {
    struct Case {
        bool wanted;
        bool playing;
        const char* text;
        const char* picture;
    } cases[] = {{true, false, "0.450", kImgGreen},
                 {true, false, "N/A", kImgRed},
                 {false, false, "0.450", ""},
                 {true, true, "0.450", ""}};
    for (const Case& c : cases) {
        DataTab d;
        FrmMain& m = d.t->frmMain();
        d.t->PidWanted[0x16] = c.wanted;
        d.t->PlayingLog = c.playing;
        m.lblO2b1s3.setText(c.text);
        EXPECT_EQ(m.Image1[0x16 + 14].picture(), c.picture) << c.text << c.wanted << c.playing;
        EXPECT_EQ(m.Image1[0x16].picture(), "");
    }
    // Other labels have no indicator of their own here.
    DataTab d;
    d.t->PidWanted[0x05] = true;
    d.t->frmMain().lblCoolant.setText("N/A");
    EXPECT_EQ(d.t->frmMain().Image1[0x05 + 14].picture(), "");
}

}  // namespace
}  // namespace ketrel
