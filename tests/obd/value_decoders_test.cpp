#include "obd/value_decoders.h"

#include <gtest/gtest.h>

#include "reply_cells.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

using test::E;

// One reply through the decoder of its PID: the field named ("x." for the extended screen),
// prefilled with "old", reads `expected` afterwards ("old": the decoder leaves it alone).
struct Case {
    int pid;
    const char* mode;
    test::Bytes bytes;
    test::Units units;
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
        ASSERT_NE(ValueDecoder(c.pid), nullptr) << c.pid;
        ValueDecoder(c.pid)(*t);
        EXPECT_EQ(field.text(), c.expected)
            << "PID " << ByteToHexText(c.pid) << " mode " << c.mode << " " << c.field;
    }
}

const test::Units F{"F", "MPH", "PSI"}, C{"C", "KPH", "kPa"}, Odd{"K", "MPS", "bar"};

TEST(ValueDecoders, UnitsPickTheTextFormAndUnknownSettingsLeaveTheField) {
    RunCases({
        {0x05, "01", {0, E, E, E}, C, "lblCoolant", "-40"},
        {0x05, "01", {0, E, E, E}, F, "lblCoolant", "-40"},
        {0x05, "01", {40, E, E, E}, F, "lblCoolant", "32"},
        {0x05, "01", {40, E, E, E}, Odd, "lblCoolant", "old"},
        {0x05, "02", {40, E, E, E}, C, "lblFFCoolant", "0"},
        {0x05, "02", {E, E, E, E}, F, "lblFFCoolant", "N/A"},
        {0x0F, "01", {60, E, E, E}, F, "lblIntakeAir", "68"},
        {0x0F, "02", {60, E, E, E}, F, "lblFFIntakeAir", "20"},  // stays in Celsius
        {0x0A, "01", {100, E, E, E}, C, "lblFuelPres", "300"},
        {0x0A, "02", {100, E, E, E}, F, "lblFFFuelPres", "44"},
        {0x0B, "02", {101, E, E, E}, F, "lblFFMAP", "29.9"},
        {0x0D, "01", {100, E, E, E}, C, "lblSpeed", "100"},
        {0x0D, "02", {100, E, E, E}, F, "lblFFSpeed", "62"},
        {0x0D, "01", {100, E, E, E}, Odd, "lblSpeed", "old"},
        {0x21, "01", {0x01, 0x00, E, E}, C, "x.lblDisMilOn", "256"},
        {0x31, "01", {0x01, 0x00, E, E}, F, "x.lblDisClear", "159"},
        {0x22, "01", {0x03, 0xE8, E, E}, C, "x.lblRelFuelPres", "76"},  // 0.076 per count
        {0x22, "01", {0x03, 0xE8, E, E}, F, "x.lblRelFuelPres", "11"},
        {0x23, "01", {0x00, 100, E, E}, F, "x.lblRailPres", "145"},
        {0x32, "01", {0xFF, 0xFC, E, E}, C, "x.lblVaporPres", "16383.00"},  // unsigned
        {0x32, "01", {0xFF, 0xFC, E, E}, F, "x.lblVaporPres", "65.696"},
        {0x33, "01", {101, E, E, E}, C, "x.lblBaro", "101"},
        {0x33, "01", {101, E, E, E}, F, "x.lblBaro", "29.9"},
        {0x3C, "01", {0x0F, 0xA0, E, E}, C, "x.LBLCatB1S1", "360"},
        {0x3C, "01", {0x0F, 0xA0, E, E}, F, "x.LBLCatB1S1", "680"},
        {0x3D, "01", {0x0F, 0xA0, E, E}, C, "x.lblCatB1S2", "360"},  // swapped captions
        {0x3F, "01", {0x0F, 0xA5, E, E}, C, "x.lblCatB2S2", "361"},
        {0x46, "01", {100, E, E, E}, F, "x.lblAmbientAir", "140"},
    });
}

TEST(ValueDecoders, ScaledValues) {
    RunCases({
        {0x04, "01", {128, E, E, E}, F, "lblLoad", "50.20"},
        {0x04, "02", {255, E, E, E}, F, "lblFFLoad", "100.00"},
        {0x0C, "01", {0x1A, 0xF8, E, E}, F, "lblRPM", "1726"},
        {0x0E, "01", {0, E, E, E}, F, "lblTiming", "-64.0"},
        {0x0E, "02", {255, E, E, E}, F, "lblFFTiming", "63.5"},
        {0x10, "01", {1, 0, E, E}, F, "lblMAF", "2.56"},
        {0x10, "02", {0xFF, 0xFF, E, E}, F, "lblFFMAF", "655.35"},
        {0x11, "01", {255, E, E, E}, F, "lblTps", "100.0"},
        {0x1F, "01", {0x01, 0x2C, E, E}, F, "lblTimeStart", "300"},
        {0x2C, "01", {255, E, E, E}, F, "x.lblComEGR", "100"},
        {0x2D, "01", {0, E, E, E}, F, "x.lblEgrError", "-99.99"},
        {0x2F, "01", {64, E, E, E}, F, "x.lblFuelLevel", "25"},
        {0x30, "01", {7, E, E, E}, F, "x.lblWarmUp", "7"},
        {0x42, "01", {0x30, 0x39, E, E}, F, "x.lblVolt", "12.35"},
        {0x43, "01", {0x01, 0x00, E, E}, F, "x.lblAbosLoad", "100"},
        {0x44, "01", {0x80, 0x00, E, E}, F, "x.lblEquivRatio", "0.999"},
        {0x45, "01", {255, E, E, E}, F, "x.lblTps", "100"},
        {0x45, "01", {255, E, E, E}, F, "lblTps", "old"},
        {0x49, "01", {51, E, E, E}, F, "x.lblTpsD", "20"},
        {0x4C, "01", {204, E, E, E}, F, "x.lblActuator", "80"},
        {0x4D, "01", {0x01, 0x00, E, E}, F, "x.lblMinutes", "256"},
        {0x4E, "01", {0xFF, 0xFF, E, E}, F, "x.lblTimeClearDTC", "65535"},
    });
}

TEST(ValueDecoders, AMissingByteGivesNAInTheFieldOfTheMode) {
    RunCases({
        {0x05, "01", {E, E, E, E}, F, "lblCoolant", "N/A"},
        {0x05, "02", {E, E, E, E}, F, "lblCoolant", "old"},
        {0x0C, "01", {0x1A, E, E, E}, F, "lblRPM", "N/A"},
        {0x0C, "02", {E, 0xF8, E, E}, F, "lblFFRPM", "N/A"},
        {0x1F, "01", {0x01, E, E, E}, F, "lblTimeStart", "N/A"},
        {0x21, "01", {0x01, E, E, E}, F, "x.lblDisMilOn", "N/A"},
        {0x3C, "01", {0x0F, E, E, E}, C, "x.LBLCatB1S1", "N/A"},
        {0x4E, "01", {E, 0xFF, E, E}, F, "x.lblTimeClearDTC", "N/A"},
    });
}

TEST(ValueDecoders, FuelTrimsKeepTheirOwnEmptinessTests) {
    RunCases({
        {0x06, "01", {E, 0x80, E, E}, F, "lblSTB1", "-99.99"},  // "N/A" written over
        {0x06, "01", {255, E, E, E}, F, "lblSTB1", "99.21"},
        {0x06, "02", {140, E, E, E}, F, "lblFFSTFTB1", "N/A"},  // the test is on B
        {0x06, "02", {140, 0, E, E}, F, "lblFFSTFTB1", "9.37"},
        {0x06, "02", {E, 0, E, E}, F, "lblFFSTFTB1", "-99.99"},
        {0x07, "01", {129, E, E, E}, F, "lblLTB1", "0.78"},
        {0x07, "02", {129, 0, E, E}, F, "lblFFLTFTB1", "0.78"},
        {0x08, "01", {127, E, E, E}, F, "lblSTB2", "-0.78"},
        {0x08, "02", {127, 0, E, E}, F, "lblFFSTFTB2", "-0.78"},
        {0x09, "01", {128, E, E, E}, F, "lblLTB2", "0.00"},
        {0x09, "02", {0, 1, E, E}, F, "lblFFLTFTB2", "-99.99"},
    });
}

TEST(ValueDecoders, BitCodedValuesAndValuesTheDecoderDoesNotKnow) {
    RunCases({
        {0x03, "01", {0x03, 0x02, E, E}, F, "lblFuelSys1", "OPEN"},
        {0x03, "01", {0x03, 0x02, E, E}, F, "lblFuelSys2", "CLOSE"},
        {0x03, "01", {0x04, 0x08, E, E}, F, "lblFuelSys1", "OPEN (D)"},
        {0x03, "01", {0x04, 0x08, E, E}, F, "lblFuelSys2", "OPEN (F)"},
        {0x03, "01", {0x10, 0x20, E, E}, F, "lblFuelSys1", "CLOSE (F)"},
        {0x03, "01", {0x10, 0x20, E, E}, F, "lblFuelSys2", "N/A"},
        {0x03, "02", {0x01, 0x02, E, E}, F, "lblFFFuelSys2", "CLOSE"},
        {0x03, "03", {0x01, 0x02, E, E}, F, "lblFuelSys1", "old"},
        {0x12, "01", {0x01, E, E, E}, F, "lblAirCommand", "1"},
        {0x12, "01", {0x06, E, E, E}, F, "lblAirCommand", "2"},
        {0x12, "01", {0x04, E, E, E}, F, "lblAirCommand", "3"},
        {0x12, "01", {0x08, E, E, E}, F, "lblAirCommand", "old"},
        {0x12, "01", {E, E, E, E}, F, "lblAirCommand", "N/A"},
        {0x12, "02", {E, E, E, E}, F, "lblAirCommand", "old"},
        {0x12, "02", {0x02, E, E, E}, F, "lblAirCommand", "2"},
        {0x1C, "01", {13, E, E, E}, F, "lblOBDDesign", "13"},
        {0x1C, "01", {14, E, E, E}, F, "lblOBDDesign", "old"},
        {0x1C, "01", {E, E, E, E}, F, "lblOBDDesign", "N/A"},
        {0x1E, "01", {3, E, E, E}, F, "lblPTO", "YES"},
        {0x1E, "01", {0, E, E, E}, F, "lblPTO", "NO"},
        {0x1E, "01", {2, E, E, E}, F, "lblPTO", "old"},
        {0x1E, "01", {E, E, E, E}, F, "lblPTO", "N/A"},
    });
}

TEST(ValueDecoders, OxygenSensorsWriteTheFieldsOfTheirSlotOrPair) {
    const char* volts[] = {"lblO2b1s1", "lblO2b1s2", "lblO2b1s3", "lblO2b1s4",
                           "lblO2b2s1", "lblO2b2s2", "lblO2b2s3", "lblO2b2s4"};
    const char* trims[] = {"lblSTO2B1S1", "lblSTO2B1S2", "lblSTO2B1S3", "LBLSTO2B1S4",
                           "LBLSTO2B2S1", "LBLSTO2B2S2", "LBLSTO2B2S3", "LBLSTO2B2S4"};
    std::vector<Case> cases;
    for (int s = 0; s < 8; ++s) {
        std::string n = std::to_string(s + 1);
        cases.push_back({0x14 + s, "01", {0x80, 0x90, E, E}, F, volts[s], "0.640"});
        cases.push_back({0x14 + s, "01", {E, 0x90, E, E}, F, volts[s], "N/A"});
        cases.push_back({0x14 + s, "01", {0xFF, E, E, E}, F, trims[s], "N/A"});
        // Wide-range pairs: ratio from A, B; volts or current from C, D; A and B tested first.
        cases.push_back({0x24 + s, "01", {0x80, 0, 0x40, 0}, F, "x.lblO2wr" + n, "1.999"});
        cases.push_back({0x24 + s, "01", {0x80, 0, E, 0}, F, "x.lblO2wr" + n, "N/A"});
        cases.push_back({0x24 + s, "01", {0x80, 0, E, 0}, F, "x.lblO2wrvE" + n, "old"});
        cases.push_back({0x24 + s, "01", {0x80, E, 0x40, 0}, F, "x.lblO2wrvE" + n, "N/A"});
        cases.push_back({0x34 + s, "01", {0x80, 0, 0x81, 0}, F, "x.lblO2wrE" + n, "0.999"});
        cases.push_back({0x34 + s, "01", {0x80, 0, 0x81, 0}, F, "x.lblO2wra" + n, "1.000"});
        cases.push_back({0x34 + s, "01", {0x80, 0, 0x80, E}, F, "x.lblO2wra" + n, "N/A"});
    }
    RunCases(cases);
}

TEST(ValueDecoders, LocationsHookAndTheNoOpMonitorPid) {
    test::TestApp t;
    test::SetReply(*t, "01", 0x13, {0xA1, E, E, E});
    ValueDecoder(0x13)(*t);
    EXPECT_EQ(t->O2Location, (std::array<bool, 8>{1, 0, 1, 0, 0, 0, 0, 1}));
    test::SetReply(*t, "01", 0x1D, {0x33, E, E, E});
    ValueDecoder(0x1D)(*t);
    EXPECT_EQ(t->O2LocationAlt, (std::array<bool, 8>{0, 0, 1, 1, 0, 0, 1, 1}));

    std::vector<std::string> seen;  // the fuel-economy hook: after a live air flow only
    t->AfterLiveMAF = [&] { seen.push_back(t->frmMain().lblMAF.text()); };
    test::SetReply(*t, "01", 0x10, {0x01, 0x00, E, E});
    ValueDecoder(0x10)(*t);
    test::SetReply(*t, "02", 0x10, {0x02, 0x00, E, E});
    ValueDecoder(0x10)(*t);
    EXPECT_EQ(seen, std::vector<std::string>{"2.56"});

    for (Field* f : t->frmNewPids().valueFields())
        f->setText("old");
    test::SetReply(*t, "01", 0x41, {0xFF, 0xFF, 0xFF, 0xFF});
    ExtendedValueDecoder(0x41)(*t);
    for (Field* f : t->frmNewPids().valueFields())
        EXPECT_EQ(f->text(), "old") << f->name();

    for (int pid = 0; pid <= 0x60; ++pid) {
        bool value = (pid >= 0x03 && pid <= 0x1F) || (pid >= 0x21 && pid <= 0x4E && pid != 0x40);
        EXPECT_EQ(ValueDecoder(pid) != nullptr, value) << pid;
    }
}

}  // namespace
}  // namespace ketrel
