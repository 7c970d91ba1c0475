#include <gtest/gtest.h>

#include "obd/value_decoders.h"
#include "reply_cells.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

using test::Bytes;
using test::E;
using test::Units;

// One live reply through the decoder of its PID; the field, prefilled with "old", reads
// `expected` afterwards.
struct Case {
    int pid;
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
        test::SetReply(*t, "01", c.pid, c.bytes);
        PidDecoder decode = ExtendedValueDecoder(c.pid);
        ASSERT_NE(decode, nullptr) << c.pid;
        decode(*t);
        EXPECT_EQ(field.text(), c.expected) << "PID " << ByteToHexText(c.pid) << " " << c.field;
    }
}

const Units F{"F", "MPH", "PSI"};
const Units C{"C", "KPH", "kPa"};
const Units Odd{"K", "MPS", "bar"};

TEST(ExtendedDecoders, DistancesAndPressuresFollowTheUnitSettings) {
    RunCases({
        {0x21, {0x01, 0x00, E, E}, C, "x.lblDisMilOn", "256"},
        {0x21, {0x01, 0x00, E, E}, F, "x.lblDisMilOn", "159"},
        {0x21, {0x01, E, E, E}, F, "x.lblDisMilOn", "N/A"},
        {0x21, {0x01, 0x00, E, E}, Odd, "x.lblDisMilOn", "old"},
        {0x31, {0x01, 0x00, E, E}, F, "x.lblDisClear", "159"},
        {0x31, {E, 0x00, E, E}, C, "x.lblDisClear", "N/A"},
        // 0.076 kPa per count, not 0.079.
        {0x22, {0x03, 0xE8, E, E}, C, "x.lblRelFuelPres", "76"},
        {0x22, {0x03, 0xE8, E, E}, F, "x.lblRelFuelPres", "11"},
        {0x23, {0x00, 100, E, E}, C, "x.lblRailPres", "1000"},
        {0x23, {0x00, 100, E, E}, F, "x.lblRailPres", "145"},
        {0x23, {0x00, 100, E, E}, Odd, "x.lblRailPres", "old"},
        // The vapour pressure reads unsigned: a negative pressure shows large.
        {0x32, {0xFF, 0xFC, E, E}, C, "x.lblVaporPres", "16383.00"},
        {0x32, {0xFF, 0xFC, E, E}, F, "x.lblVaporPres", "65.696"},
        {0x32, {0xFF, E, E, E}, C, "x.lblVaporPres", "N/A"},
        {0x33, {101, E, E, E}, C, "x.lblBaro", "101"},
        {0x33, {101, E, E, E}, F, "x.lblBaro", "29.9"},
        {0x33, {E, E, E, E}, F, "x.lblBaro", "N/A"},
    });
}

TEST(ExtendedDecoders, CatalystAndAmbientTemperaturesUseFix0BothWays) {
    RunCases({
        {0x3C, {0x0F, 0xA0, E, E}, C, "x.LBLCatB1S1", "360"},
        {0x3C, {0x0F, 0xA0, E, E}, F, "x.LBLCatB1S1", "680"},
        // The two middle catalyst PIDs land on the fields captioned the other way round.
        {0x3D, {0x0F, 0xA0, E, E}, C, "x.lblCatB1S2", "360"},
        {0x3E, {0x0F, 0xA0, E, E}, C, "x.lblCatB2S1", "360"},
        {0x3F, {0x0F, 0xA5, E, E}, C, "x.lblCatB2S2", "361"},
        {0x3C, {0x0F, E, E, E}, C, "x.LBLCatB1S1", "N/A"},
        {0x3C, {0x0F, 0xA0, E, E}, Odd, "x.LBLCatB1S1", "old"},
        {0x46, {0, E, E, E}, F, "x.lblAmbientAir", "-40"},
        {0x46, {0, E, E, E}, C, "x.lblAmbientAir", "-40"},
        {0x46, {100, E, E, E}, F, "x.lblAmbientAir", "140"},
        {0x46, {E, E, E, E}, C, "x.lblAmbientAir", "N/A"},
    });
}

TEST(ExtendedDecoders, PercentagesAndPlainCounts) {
    RunCases({
        {0x2C, {255, E, E, E}, F, "x.lblComEGR", "100"},
        {0x2D, {0, E, E, E}, F, "x.lblEgrError", "-99.99"},
        {0x2D, {128, E, E, E}, F, "x.lblEgrError", "0.00"},
        {0x2E, {128, E, E, E}, F, "x.lblEvapPurge", "50"},
        {0x2F, {64, E, E, E}, F, "x.lblFuelLevel", "25"},
        {0x2F, {E, E, E, E}, F, "x.lblFuelLevel", "N/A"},
        {0x30, {7, E, E, E}, F, "x.lblWarmUp", "7"},
        {0x42, {0x30, 0x39, E, E}, F, "x.lblVolt", "12.35"},
        {0x42, {0x30, E, E, E}, F, "x.lblVolt", "N/A"},
        {0x43, {0x00, 0xFF, E, E}, F, "x.lblAbosLoad", "100"},
        {0x43, {0x01, 0x00, E, E}, F, "x.lblAbosLoad", "100"},
        {0x44, {0x80, 0x00, E, E}, F, "x.lblEquivRatio", "0.999"},
        {0x45, {255, E, E, E}, F, "x.lblTps", "100"},
        {0x47, {255, E, E, E}, F, "x.lblTpsB", "100"},
        {0x48, {0, E, E, E}, F, "x.lblTpsC", "0"},
        {0x49, {51, E, E, E}, F, "x.lblTpsD", "20"},
        {0x4A, {102, E, E, E}, F, "x.lblTpsE", "40"},
        {0x4B, {E, E, E, E}, F, "x.lblTpsF", "N/A"},
        {0x4C, {204, E, E, E}, F, "x.lblActuator", "80"},
        {0x4D, {0x01, 0x00, E, E}, F, "x.lblMinutes", "256"},
        {0x4E, {0xFF, 0xFF, E, E}, F, "x.lblTimeClearDTC", "65535"},
        {0x4E, {E, 0xFF, E, E}, F, "x.lblTimeClearDTC", "N/A"},
    });
    // The main screen's throttle is not the extended screen's.
    RunCases({{0x45, {255, E, E, E}, F, "lblTps", "old"}});
}

TEST(ExtendedDecoders, WideRangeSensorsTestTheirBytesInOrder) {
    std::vector<Case> cases;
    for (int pair = 1; pair <= 8; ++pair) {
        std::string n = std::to_string(pair);
        int volts = 0x23 + pair, amps = 0x33 + pair;
        std::string rv = "x.lblO2wrvE" + n, vf = "x.lblO2wr" + n;
        std::string ra = "x.lblO2wrE" + n, af = "x.lblO2wra" + n;
        cases.push_back({volts, {0x80, 0x00, 0x40, 0x00}, F, rv, "0.999"});
        cases.push_back({volts, {0x80, 0x00, 0x40, 0x00}, F, vf, "1.999"});
        cases.push_back({volts, {0x80, 0x00, E, 0x00}, F, vf, "N/A"});
        cases.push_back({volts, {0x80, 0x00, E, 0x00}, F, rv, "old"});
        cases.push_back({volts, {0x80, 0x00, 0x40, E}, F, vf, "N/A"});
        cases.push_back({volts, {E, 0x00, 0x40, 0x00}, F, rv, "N/A"});
        cases.push_back({volts, {E, 0x00, 0x40, 0x00}, F, vf, "old"});
        cases.push_back({volts, {0x80, E, 0x40, 0x00}, F, rv, "N/A"});
        cases.push_back({amps, {0x80, 0x00, 0x81, 0x00}, F, ra, "0.999"});
        cases.push_back({amps, {0x80, 0x00, 0x81, 0x00}, F, af, "1.000"});
        cases.push_back({amps, {0x80, 0x00, 0x00, 0x00}, F, af, "-128.000"});
        cases.push_back({amps, {0x80, 0x00, E, 0x00}, F, af, "N/A"});
        cases.push_back({amps, {0x80, 0x00, E, 0x00}, F, ra, "old"});
    }
    RunCases(cases);
}

TEST(ExtendedDecoders, MonitorStatusOfThisDriveCycleChangesNothing) {
    test::TestApp t;
    for (Field* f : t->frmNewPids().valueFields())
        f->setText("old");
    test::SetReply(*t, "01", 0x41, {0xFF, 0xFF, 0xFF, 0xFF});
    ExtendedValueDecoder(0x41)(*t);
    for (Field* f : t->frmNewPids().valueFields())
        EXPECT_EQ(f->text(), "old") << f->name();
}

}  // namespace
}  // namespace ketrel
