#include <gtest/gtest.h>

#include "obd/value_decoders.h"
#include "reply_cells.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

using test::Bytes;
using test::E;
using test::Units;

// One reply through the decoder of its PID: the field named, prefilled with "old", reads
// `expected` afterwards ("old" when the decoder must leave it alone).
struct Case {
    int pid;
    const char* mode;
    Bytes bytes;
    Units units;
    std::string field;
    const char* expected;
};

void RunCases(const std::vector<Case>& cases) {
    for (const Case& c : cases) {
        test::TestApp t;
        test::SetUnits(*t, c.units);
        Field& field = test::ValueField(*t, c.field);
        field.setText("old");
        test::SetReply(*t, c.mode, c.pid, c.bytes);
        PidDecoder decode = ValueDecoder(c.pid);
        ASSERT_NE(decode, nullptr) << c.pid;
        decode(*t);
        EXPECT_EQ(field.text(), c.expected)
            << "PID " << ByteToHexText(c.pid) << " mode " << c.mode << " field " << c.field;
    }
}

const Units F{"F", "MPH", "PSI"};
const Units C{"C", "KPH", "kPa"};
const Units Odd{"K", "MPS", "bar"};  // settings no decoder knows

TEST(MainDecoders, TemperaturesFollowTheUnitSettingExceptTheFreezeFrameIntakeAir) {
    RunCases({
        {0x05, "01", {0, E, E, E}, C, "lblCoolant", "-40"},
        {0x05, "01", {0, E, E, E}, F, "lblCoolant", "-40"},
        {0x05, "01", {40, E, E, E}, F, "lblCoolant", "32"},
        {0x05, "01", {40, E, E, E}, C, "lblCoolant", "0"},
        {0x05, "01", {160, E, E, E}, F, "lblCoolant", "248"},
        {0x05, "01", {E, E, E, E}, F, "lblCoolant", "N/A"},
        {0x05, "01", {40, E, E, E}, Odd, "lblCoolant", "old"},
        {0x05, "02", {40, E, E, E}, C, "lblFFCoolant", "0"},
        {0x05, "02", {40, E, E, E}, F, "lblCoolant", "old"},
        {0x05, "02", {E, E, E, E}, F, "lblFFCoolant", "N/A"},
        {0x0F, "01", {60, E, E, E}, F, "lblIntakeAir", "68"},
        {0x0F, "01", {60, E, E, E}, C, "lblIntakeAir", "20"},
        {0x0F, "02", {60, E, E, E}, F, "lblFFIntakeAir", "20"},
        {0x0F, "02", {E, E, E, E}, F, "lblFFIntakeAir", "N/A"},
    });
}

TEST(MainDecoders, FuelTrimsKeepTheirOwnEmptinessTests) {
    RunCases({
        // Live: an absent A shows the value for 0, not "N/A".
        {0x06, "01", {E, 0x80, E, E}, F, "lblSTB1", "-99.99"},
        {0x06, "01", {128, E, E, E}, F, "lblSTB1", "0.00"},
        {0x06, "01", {255, E, E, E}, F, "lblSTB1", "99.21"},
        // Freeze frame: the test is on B.
        {0x06, "02", {140, E, E, E}, F, "lblFFSTFTB1", "N/A"},
        {0x06, "02", {140, 0, E, E}, F, "lblFFSTFTB1", "9.37"},
        {0x06, "02", {E, 0, E, E}, F, "lblFFSTFTB1", "-99.99"},
        {0x07, "01", {129, E, E, E}, F, "lblLTB1", "0.78"},
        {0x07, "02", {129, 0, E, E}, F, "lblFFLTFTB1", "0.78"},
        {0x08, "01", {127, E, E, E}, F, "lblSTB2", "-0.78"},
        {0x08, "02", {127, 0, E, E}, F, "lblFFSTFTB2", "-0.78"},
        {0x09, "01", {0, E, E, E}, F, "lblLTB2", "-99.99"},
        {0x09, "02", {0, 1, E, E}, F, "lblFFLTFTB2", "-99.99"},
    });
}

TEST(MainDecoders, ScaledValuesWithLiveAndFreezeFrameFields) {
    RunCases({
        {0x04, "01", {255, E, E, E}, F, "lblLoad", "100.00"},
        {0x04, "01", {128, E, E, E}, F, "lblLoad", "50.20"},
        {0x04, "02", {51, E, E, E}, F, "lblFFLoad", "20.00"},
        {0x04, "01", {E, E, E, E}, F, "lblLoad", "N/A"},
        {0x0A, "01", {100, E, E, E}, C, "lblFuelPres", "300"},
        {0x0A, "01", {100, E, E, E}, F, "lblFuelPres", "44"},
        {0x0A, "02", {100, E, E, E}, C, "lblFFFuelPres", "300"},
        {0x0A, "01", {100, E, E, E}, Odd, "lblFuelPres", "old"},
        {0x0B, "01", {101, E, E, E}, C, "lblMAP", "101"},
        {0x0B, "01", {101, E, E, E}, F, "lblMAP", "29.9"},
        {0x0B, "02", {101, E, E, E}, F, "lblFFMAP", "29.9"},
        {0x0C, "01", {0x1A, 0xF8, E, E}, F, "lblRPM", "1726"},
        {0x0C, "02", {0x1A, 0xF8, E, E}, F, "lblFFRPM", "1726"},
        {0x0C, "01", {0x1A, E, E, E}, F, "lblRPM", "N/A"},
        {0x0C, "02", {E, 0xF8, E, E}, F, "lblFFRPM", "N/A"},
        {0x0D, "01", {100, E, E, E}, C, "lblSpeed", "100"},
        {0x0D, "01", {100, E, E, E}, F, "lblSpeed", "62"},
        {0x0D, "02", {100, E, E, E}, F, "lblFFSpeed", "62"},
        {0x0D, "01", {100, E, E, E}, Odd, "lblSpeed", "old"},
        {0x0E, "01", {0, E, E, E}, F, "lblTiming", "-64.0"},
        {0x0E, "01", {255, E, E, E}, F, "lblTiming", "63.5"},
        {0x0E, "02", {128, E, E, E}, F, "lblFFTiming", "0.0"},
        {0x10, "01", {1, 0, E, E}, F, "lblMAF", "2.56"},
        {0x10, "02", {0xFF, 0xFF, E, E}, F, "lblFFMAF", "655.35"},
        {0x10, "01", {1, E, E, E}, F, "lblMAF", "N/A"},
        {0x11, "01", {255, E, E, E}, F, "lblTps", "100.0"},
        {0x11, "02", {0, E, E, E}, F, "lblFFTPS", "0.0"},
        {0x11, "01", {E, E, E, E}, F, "lblTps", "N/A"},
        {0x1F, "01", {0x01, 0x2C, E, E}, F, "lblTimeStart", "300"},
        {0x1F, "01", {0x01, E, E, E}, F, "lblTimeStart", "N/A"},
    });
}

TEST(MainDecoders, FuelSystemStatusTakesTheLowestBitSetOfEachByte) {
    RunCases({
        {0x03, "01", {0x03, 0x02, E, E}, F, "lblFuelSys1", "OPEN"},
        {0x03, "01", {0x03, 0x02, E, E}, F, "lblFuelSys2", "CLOSE"},
        {0x03, "01", {0x04, 0x08, E, E}, F, "lblFuelSys1", "OPEN (D)"},
        {0x03, "01", {0x04, 0x08, E, E}, F, "lblFuelSys2", "OPEN (F)"},
        {0x03, "01", {0x10, 0x20, E, E}, F, "lblFuelSys1", "CLOSE (F)"},
        {0x03, "01", {0x10, 0x20, E, E}, F, "lblFuelSys2", "N/A"},
        {0x03, "01", {0x02, E, E, E}, F, "lblFuelSys2", "N/A"},
        {0x03, "02", {0x01, 0x02, E, E}, F, "lblFFFuelSys1", "OPEN"},
        {0x03, "02", {0x01, 0x02, E, E}, F, "lblFFFuelSys2", "CLOSE"},
        {0x03, "02", {0x01, 0x02, E, E}, F, "lblFuelSys1", "old"},
        {0x03, "03", {0x01, 0x02, E, E}, F, "lblFuelSys1", "old"},
    });
}

TEST(MainDecoders, CodedValuesLeaveTheFieldAloneOnValuesTheyDoNotKnow) {
    RunCases({
        {0x12, "01", {0x01, E, E, E}, F, "lblAirCommand", "1"},
        {0x12, "01", {0x02, E, E, E}, F, "lblAirCommand", "2"},
        {0x12, "01", {0x04, E, E, E}, F, "lblAirCommand", "3"},
        {0x12, "01", {0x03, E, E, E}, F, "lblAirCommand", "1"},
        {0x12, "01", {0x08, E, E, E}, F, "lblAirCommand", "old"},
        {0x12, "01", {E, E, E, E}, F, "lblAirCommand", "N/A"},
        {0x12, "02", {E, E, E, E}, F, "lblAirCommand", "old"},
        {0x12, "02", {0x02, E, E, E}, F, "lblAirCommand", "2"},
        {0x1C, "01", {13, E, E, E}, F, "lblOBDDesign", "13"},
        {0x1C, "01", {1, E, E, E}, F, "lblOBDDesign", "1"},
        {0x1C, "01", {14, E, E, E}, F, "lblOBDDesign", "old"},
        {0x1C, "01", {0, E, E, E}, F, "lblOBDDesign", "old"},
        {0x1C, "01", {E, E, E, E}, F, "lblOBDDesign", "N/A"},
        {0x1E, "01", {1, E, E, E}, F, "lblPTO", "YES"},
        {0x1E, "01", {3, E, E, E}, F, "lblPTO", "YES"},
        {0x1E, "01", {0, E, E, E}, F, "lblPTO", "NO"},
        {0x1E, "01", {2, E, E, E}, F, "lblPTO", "old"},
        {0x1E, "01", {E, E, E, E}, F, "lblPTO", "N/A"},
    });
}

TEST(MainDecoders, OxygenSensorsWriteTheFieldsOfTheirSlot) {
    const char* volts[] = {"lblO2b1s1", "lblO2b1s2", "lblO2b1s3", "lblO2b1s4",
                           "lblO2b2s1", "lblO2b2s2", "lblO2b2s3", "lblO2b2s4"};
    const char* trims[] = {"lblSTO2B1S1", "lblSTO2B1S2", "lblSTO2B1S3", "LBLSTO2B1S4",
                           "LBLSTO2B2S1", "LBLSTO2B2S2", "LBLSTO2B2S3", "LBLSTO2B2S4"};
    std::vector<Case> cases;
    for (int slot = 0; slot < 8; ++slot) {
        int pid = 0x14 + slot;
        cases.push_back({pid, "01", {0x80, 0x90, E, E}, F, volts[slot], "0.640"});
        cases.push_back({pid, "01", {0x80, 0x90, E, E}, F, trims[slot], "12.50"});
        cases.push_back({pid, "01", {E, 0x90, E, E}, F, volts[slot], "N/A"});
        cases.push_back({pid, "01", {E, 0x90, E, E}, F, trims[slot], "12.50"});
        cases.push_back({pid, "01", {0xFF, E, E, E}, F, volts[slot], "1.275"});
        cases.push_back({pid, "01", {0xFF, E, E, E}, F, trims[slot], "N/A"});
    }
    RunCases(cases);
}

TEST(MainDecoders, OxygenSensorLocationsFillTheirArraysFirstCharacterFirst) {
    test::TestApp t;
    test::SetReply(*t, "01", 0x13, {0xA1, E, E, E});
    ValueDecoder(0x13)(*t);
    EXPECT_EQ(t->O2Location,
              (std::array<bool, 8>{true, false, true, false, false, false, false, true}));
    test::SetReply(*t, "01", 0x1D, {0x33, E, E, E});
    ValueDecoder(0x1D)(*t);
    EXPECT_EQ(t->O2LocationAlt,
              (std::array<bool, 8>{false, false, true, true, false, false, true, true}));
    EXPECT_EQ(t->O2Location[0], true);  // the other array is left alone
}

TEST(MainDecoders, TheFuelEconomyHookRunsAfterALiveAirFlowOnly) {
    test::TestApp t;
    std::vector<std::string> seen;
    t->AfterLiveMAF = [&] { seen.push_back(t->frmMain().lblMAF.text()); };
    test::SetReply(*t, "01", 0x10, {0x01, 0x00, E, E});
    ValueDecoder(0x10)(*t);
    test::SetReply(*t, "02", 0x10, {0x02, 0x00, E, E});
    ValueDecoder(0x10)(*t);
    EXPECT_EQ(seen, std::vector<std::string>{"2.56"});
}

TEST(MainDecoders, OnlyValuePidsHaveADecoder) {
    for (int pid = 0; pid <= 0x60; ++pid) {
        bool expected = (pid >= 0x03 && pid <= 0x1F) || (pid >= 0x21 && pid <= 0x4E && pid != 0x40);
        EXPECT_EQ(ValueDecoder(pid) != nullptr, expected) << pid;
        EXPECT_EQ(MainValueDecoder(pid) != nullptr, pid >= 0x03 && pid <= 0x1F) << pid;
    }
}

}  // namespace
}  // namespace ketrel
