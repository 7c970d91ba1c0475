#include "obd/pid_catalogue.h"

#include <gtest/gtest.h>

#include "reply_cells.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

using test::E;

TEST(PidCatalogue, TheBitmapNamesPidsTopBitFirstAndMissingBytesReadNA) {
    test::TestApp t;
    FrmMain& m = t->frmMain();
    m.msM1Grid.setCellBackColor(1, 2, kLightGreen);  // a reset forgets the last session
    m.msM1Grid.setText(4, 5, "YES");
    ResetSupportGrids(*t);
    EXPECT_EQ(m.msM1Grid.text(4, 5), "N/A");
    EXPECT_EQ(m.msM1Grid.cellBackColor(1, 2), kDefaultColor);
    t->Mode1Supported[20] = t->PidWanted[20] = true;
    test::SetReply(*t, "01", 0x00, {0xBE, 0x01, E, E});
    DecodeSupportPID00(*t);
    bool expected[] = {false, true, false, true, true, true, true, true, false};
    for (int pid = 1; pid <= 8; ++pid) {
        EXPECT_EQ(t->Mode1Supported[pid], expected[pid]) << pid;
        EXPECT_EQ(t->PidWanted[pid], expected[pid]) << pid;
        EXPECT_EQ(m.msM1Grid.text(pid, 2), expected[pid] ? "YES" : "NO") << pid;
        EXPECT_EQ(m.msM1Grid.cellBackColor(pid, 2), expected[pid] ? kLightGreen : kDefaultColor);
    }
    EXPECT_EQ(m.msM1Grid.text(16, 2), "YES");  // PID 10, last bit of byte 2
    EXPECT_FALSE(t->Mode1Supported[20]);       // byte 3 missing: off and "N/A"
    EXPECT_FALSE(t->PidWanted[20]);
    EXPECT_EQ(m.msM1Grid.text(4, 5), "N/A");
    EXPECT_EQ(t->SupportedCount, 7);
    EXPECT_FALSE(t->FFPidsKnown);
    EXPECT_EQ(m.msM2Grid.text(1, 2), "N/A");
}

TEST(PidCatalogue, AMode02BitmapWritesOnlyTheFreezeFrameSideButStillSetsTheLayout) {
    test::TestApp t;
    FrmMain& m = t->frmMain();
    ResetSupportGrids(*t);
    t->Mode1Supported[0x1D] = true;
    t->Mode1Supported[5] = t->PidWanted[5] = true;
    test::SetReply(*t, "02", 0x00, {0x08, 0x00, 0x00, 0x00});
    DecodeSupportPID00(*t);
    EXPECT_TRUE(t->Mode1Supported[5] && t->PidWanted[5]);
    EXPECT_TRUE(t->Mode2Supported[5]);
    EXPECT_FALSE(t->Mode2Supported[4]);
    EXPECT_EQ(m.msM2Grid.text(5, 2), "YES");
    EXPECT_EQ(m.msM1Grid.text(5, 2), "N/A");
    EXPECT_TRUE(t->FFPidsKnown);
    EXPECT_EQ(t->FFSupportedCount, 1);
    EXPECT_EQ(m.Label1[8].text(), "O2 BANK 2 SENSOR 1");  // four banks, from PID 1D
    EXPECT_TRUE(m.mnuViewCoolant.enabled());
}

TEST(PidCatalogue, MenusAreOnlySwitchedOnAndFuelEconomyNeeds07And0DAnd10) {
    struct Case {
        test::Bytes bitmap;
        bool mpg;
    } cases[] = {{{0x00, 0x09, 0x00, 0x00}, false},  // PIDs 0D and 10 without 07
                 {{0x02, 0x09, 0x00, 0x00}, true},
                 {{0x00, 0x89, 0x00, 0x00}, false},  // the bank 2 trim does not count
                 {{0x02, 0x08, 0x00, 0x00}, false}};
    for (const Case& c : cases) {
        test::TestApp t;
        FrmMain& m = t->frmMain();
        for (MenuItem* item : {&m.mnuViewMPG, &m.mnuViewSpeed, &m.mnuViewMAF, &m.mnuViewRPM})
            item->setEnabled(false);
        test::SetReply(*t, "01", 0x00, c.bitmap);
        DecodeSupportPID00(*t);
        EXPECT_EQ(m.mnuViewMPG.enabled(), c.mpg);
        EXPECT_TRUE(m.mnuViewSpeed.enabled());
        EXPECT_EQ(m.mnuViewMAF.enabled(), t->Mode1Supported[16]);
        EXPECT_FALSE(m.mnuViewRPM.enabled());
    }
    test::TestApp t;
    test::SetReply(*t, "01", 0x00, {0x00, 0x00, 0x00, 0x00});
    DecodeSupportPID00(*t);
    EXPECT_TRUE(t->frmMain().mnuViewRPM.enabled());
}

TEST(PidCatalogue, FourBanksRenameTheSlotsWithTheRepeatedRow) {
    test::TestApp t;
    FrmMain& m = t->frmMain();
    t->GridStyle = true;
    ResetSupportGrids(*t);
    test::SetReply(*t, "01", 0x00, {0x00, 0x00, 0x00, 0x08});  // PID 1D: byte 4, character 5
    DecodeSupportPID00(*t);
    const char* rows[] = {"B1S1", "B2S1", "B2S1", "B2S2", "B3S1", "B3S2", "B4S1", "B4S2"};
    const char* names[] = {"B1S1", "B1S2", "B2S1", "B2S2", "B3S1", "B3S2", "B4S1", "B4S2"};
    MenuItem* items[] = {&m.mnuViewO2B1S1, &m.mnuViewO2B1S2, &m.mnuViewO2B1S3, &m.mnuViewO2B1S4,
                         &m.mnuViewO2B2S1, &m.mnuViewO2B2S2, &m.mnuViewO2B2S3, &m.mnuViewO2B2S4};
    for (int s = 0; s < 8; ++s) {
        std::string bank(1, names[s][1]), sensor(1, names[s][3]);
        EXPECT_EQ(m.Label1[10 - s].text(), "O2 BANK " + bank + " SENSOR " + sensor);
        EXPECT_EQ(m.Label1[132 + s].text(), std::string("STFT O2") + names[s]);
        EXPECT_EQ(m.msM1Grid.text(4 + s, 4), std::string("OXYGEN SENSOR VOLTAGE ") + rows[s]);
        EXPECT_EQ(m.msM2Grid.text(4 + s, 4), m.msM1Grid.text(4 + s, 4));
        EXPECT_EQ(m.msM3Grid.text(4 + s, 1), std::string(rows[s]) + " WR O2S VOLTS");
        EXPECT_EQ(items[s]->caption(), std::string("O2 SENSOR ") + names[s] + "...");
    }
    EXPECT_EQ(m.msM3Grid.text(4, 4), "B1S1 WR O2S AMP");  // the current forms stay
    // Grid style copies the captions, the trims last over rows 9 and 10.
    EXPECT_EQ(m.GridData.text(5, 0), "O2 BANK 2 SENSOR 1");
    EXPECT_EQ(m.GridData.text(8, 0), "O2 BANK 3 SENSOR 2");
    EXPECT_EQ(m.GridData.text(9, 0), "STFT O2B1S1");
    EXPECT_EQ(m.GridData.text(16, 0), "STFT O2B4S2");

    test::SetReply(*t, "01", 0x00, {0x00, 0x00, 0x00, 0x00});  // two banks again
    DecodeSupportPID00(*t);
    EXPECT_EQ(m.Label1[8].text(), "O2 BANK 1 SENSOR 3");
    EXPECT_EQ(m.msM1Grid.text(5, 4), "OXYGEN SENSOR VOLTAGE B1S2");
    EXPECT_EQ(m.mnuViewO2B2S4.caption(), "O2 SENSOR B2S4...");
}

TEST(PidCatalogue, ExtendedBitmapsCountAndOnlyInMode01) {
    test::TestApp t;
    FrmMain& m = t->frmMain();
    ResetSupportGrids(*t);
    t->Mode1Supported[0x50] = true;
    test::SetReply(*t, "01", 0x20, {0x80, 0x00, 0x00, 0x01});
    DecodeSupportPID20(*t);
    EXPECT_TRUE(t->Mode1Supported[0x21] && t->PidWanted[0x40]);
    EXPECT_FALSE(t->Mode1Supported[0x22]);
    EXPECT_EQ(m.msM3Grid.text(16, 5), "YES");
    EXPECT_EQ(t->ExtendedPIDCount, 2);
    EXPECT_TRUE(t->Mode1Supported[0x50]);  // the next range is not touched

    test::SetReply(*t, "01", 0x40, {0x40, E, E, E});
    DecodeSupportPID40(*t);
    EXPECT_FALSE(t->Mode1Supported[0x50]);
    EXPECT_TRUE(t->Mode1Supported[0x42]);
    EXPECT_EQ(m.msM4Grid.text(9, 2), "N/A");
    EXPECT_EQ(t->ExtendedPIDCount, 3);

    test::SetReply(*t, "02", 0x20, {0xFF, 0xFF, 0xFF, 0xFF});
    DecodeSupportPID20(*t);
    EXPECT_FALSE(t->Mode1Supported[0x22]);
    EXPECT_EQ(t->ExtendedPIDCount, 3);
}

}  // namespace
}  // namespace ketrel
