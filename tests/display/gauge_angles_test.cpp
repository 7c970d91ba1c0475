#include <gtest/gtest.h>

#include "display/gauge_angles.h"

namespace ketrel {
namespace {

TEST(RpmGauge, NeedleAngleSteps) {
    struct Case {
        long rpm;
        double angle;
    };
    const Case cases[] = {{1, 1.7105},   {9, 1.7145},     {10, 1.715},  {99, 1.7595},
                          {100, 1.76},   {999, 2.2095},   {1000, 2.21}, {4500, 3.96},
                          {7250, 5.335}, {10999, 7.2095}, {11000, 7.21}};
    for (const Case& c : cases)
        EXPECT_NEAR(RpmGaugeAngle(c.rpm), c.angle, 1e-9) << c.rpm;
}

TEST(RpmGauge, BarsAndColourByScale) {
    struct Case {
        const char* scale;
        long rpm;
        int low, mid, high;  // -1: hidden
        std::int64_t color;
    };
    const Case cases[] = {
        {"1", 3999, 3999, -1, -1, 0x00FF00},      {"1", 4000, 4030, 0, -1, 0xFFFF00},
        {"1", 8999, 4030, 4999, -1, 0xFFFF00},    {"1", 9000, 4030, 5060, 0, 0xFF0000},
        {"1", 11000, 4030, 5060, 2000, 0xFF0000}, {"2", 1000, 2000, -1, -1, 0x00FF00},
        {"2", 2000, 4030, 0, -1, 0xFFFF00},       {"2", 5500, 4030, 5060, 2000, 0xFF0000},
        {"2", 5501, 4030, 5060, 2060, 0xFF0000},  {"3", 999, 3996, -1, -1, 0x00FF00},
        {"3", 2250, 4030, 5060, 0, 0xFF0000},     {"3", 8000, 4030, 5060, 2060, 0xFF0000},
    };
    for (const Case& c : cases) {
        const RpmBars b = RpmGaugeBars(c.rpm, FindRpmGaugeScale(c.scale));
        EXPECT_EQ(b.low, c.low) << c.scale << " " << c.rpm;
        EXPECT_EQ(b.midShown ? b.mid : -1, c.mid) << c.scale << " " << c.rpm;
        EXPECT_EQ(b.highShown ? b.high : -1, c.high) << c.scale << " " << c.rpm;
        EXPECT_EQ(b.color, c.color) << c.scale << " " << c.rpm;
    }
    EXPECT_STREQ(FindRpmGaugeScale("2").numbers[1], "1");
    EXPECT_STREQ(FindRpmGaugeScale("3").numbers[7], "2");
}

TEST(MultGauge, UnitStepAndClamp) {
    struct Case {
        Dial dial;
        double v;
        const char* unit;
        const char* text;
        const char* clamped;
    };
    const Case cases[] = {
        {Dial::Speed, 100, "KPH", "62", "62"},
        {Dial::Speed, 35, "MPH", "35", "35"},
        {Dial::Speed, 250, "KPH", "155", "120"},
        {Dial::FuelPressure, 300, "kPa", "44", "44"},
        {Dial::FuelPressure, 43.5, "PSI", "43.5", "43.5"},
        {Dial::Coolant, 90, "C", "194", "194"},
        {Dial::Coolant, 20, "C", "68", "100"},
        {Dial::Coolant, 160, "C", "320", "300"},
        {Dial::IntakeAir, -40, "C", "-40", "0"},
        {Dial::IntakeAir, 250, "F", "250", "200"},
        {Dial::Rpm, 9000, "", "9000", "8000"},
        {Dial::Rpm, 0, "", "0", "0"},
    };
    for (const Case& c : cases) {
        const std::string t = DialText(c.dial, c.v, c.unit);
        EXPECT_EQ(t, c.text) << c.v << c.unit;
        EXPECT_EQ(DialClamp(c.dial, t), c.clamped) << c.v << c.unit;
    }
}

TEST(MultGauge, NeedleAngleBands) {
    struct Case {
        Dial dial;
        const char* t;
        double angle;  // < 0: the needle stays
    };
    const Case cases[] = {
        {Dial::Speed, "0", 2.36},
        {Dial::Speed, "14", 14.0 / 25 + 2.36},
        {Dial::Speed, "15", 2.95},
        {Dial::Speed, "29", 14.0 / 25 + 2.95},
        {Dial::Speed, "30.5", 0.5 / 25 + 3.52},
        {Dial::Speed, "35", -1},
        {Dial::FuelPressure, "44", -1},
        {Dial::FuelPressure, "45", 4.15},
        {Dial::Speed, "62", 2.0 / 25 + 4.72},
        {Dial::Speed, "104", 14.0 / 25 + 5.92},
        {Dial::Speed, "119", 14.0 / 25 + 6.49},
        {Dial::Speed, "120", 7.07},
        {Dial::IntakeAir, "0", 2.36},
        {Dial::IntakeAir, "25", 25.0 / 42 + 2.36},
        {Dial::IntakeAir, "26", 1.0 / 42 + 2.95},
        {Dial::IntakeAir, "-5", 2.36},
        {Dial::IntakeAir, "199", 24.0 / 42 + 6.49},
        {Dial::IntakeAir, "200", 7.07},
        {Dial::Coolant, "100", 2.36},
        {Dial::Coolant, "194", 19.0 / 42 + 4.15},
        {Dial::Coolant, "300", 7.07},
        {Dial::Coolant, "95", 2.36},
        {Dial::Rpm, "0", 2.36},
        {Dial::Rpm, "50", 0.50 / 1.9 + 2.36},
        {Dial::Rpm, "999", 0.999 / 1.9 + 2.36},
        {Dial::Rpm, "1000", 2.95},
        {Dial::Rpm, "6500", 0.5 / 1.9 + 5.92},
        {Dial::Rpm, "7250", 0.25 / 1.9 + 6.59},
        {Dial::Rpm, "8000", 7.07},
    };
    for (const Case& c : cases) {
        const auto a = DialAngle(c.dial, c.t);
        if (c.angle < 0) {
            EXPECT_FALSE(a.has_value()) << c.t;
            continue;
        }
        ASSERT_TRUE(a.has_value()) << c.t;
        EXPECT_NEAR(*a, c.angle, 1e-9) << c.t;
    }
}

}  // namespace
}  // namespace ketrel
