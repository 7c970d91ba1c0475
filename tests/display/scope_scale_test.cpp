#include <gtest/gtest.h>

#include "display/scope_scale.h"
#include "platform/text_convert.h"

namespace ketrel {
namespace {

TEST(ScopeScale, ScaleValuesByRule) {
    struct Case {
        ScopeRule rule;
        const char* text;
        double value;
    };
    const Case cases[] = {
        {ScopeRule::Rpm, "10160", 254},    {ScopeRule::Rpm, "750", 18.75},
        {ScopeRule::Percent, "40.4", 101}, {ScopeRule::Spark, "-64", 0},
        {ScopeRule::Spark, "64", 249.6},   {ScopeRule::Maf, "100", 38},
        {ScopeRule::MapPsi, "30", 99.9},   {ScopeRule::MapKpa, "101", 101},
        {ScopeRule::SpeedMph, "100", 156}, {ScopeRule::SpeedKph, "88", 88},
        {ScopeRule::FuelPsi, "50", 113.5}, {ScopeRule::FuelKpa, "320", 100},
        {ScopeRule::O2, "0.450", 112.5},   {ScopeRule::O2, "1.016", 254},
        {ScopeRule::O2, "1.100", 275},     {ScopeRule::O2, "0.005", 1.25},
        {ScopeRule::Percent, "N/A", 0},    {ScopeRule::Rpm, " 1 200 rpm", 30},
    };
    for (const Case& c : cases)
        EXPECT_NEAR(ScopeScaleValue(c.rule, c.text), c.value, 1e-9) << c.text;
}

TEST(ScopeScale, CaptionsFollowTheUnitSettings) {
    struct Case {
        int pid;
        const char* pressure;
        const char* speed;
        const char* name;  // nullptr: no scale under these units
        const char* top;
        const char* units;
    };
    const Case cases[] = {
        {17, "PSI", "MPH", "THROTTLE POSITION", "100 -", "-Percent-"},
        {4, "kPa", "KPH", "CALCULATED LOAD", "100 -", "-Percent-"},
        {14, "", "", "SPARK ADVANCE", "64 -", "-Deg-"},
        {16, "PSI", "MPH", "MAF", "655 -", "-gm/Sec-"},
        {11, "PSI", "KPH", "MAP", "75 -", "-In/Hg-"},
        {11, "kPa", "MPH", "MAP", "255 -", "-kPa-"},
        {11, "bar", "MPH", nullptr, nullptr, nullptr},
        {12, "", "", "RPM", "10000 -", "-RPM-"},
        {13, "kPa", "MPH", "VEHICLE SPEED", "160 -", "-MPH-"},
        {13, "PSI", "KPH", "VEHICLE SPEED", "255 -", "-KPH-"},
        {10, "PSI", "KPH", "FUEL PRESSURE", "110 -", "-PSI-"},
        {10, "kPa", "MPH", "FUEL PRESSURE", "800 -", "-kPa-"},
        {20, "kPa", "KPH", "O2 B1S1", "1.000 -", "-Volts-"},
        {5, "PSI", "MPH", nullptr, nullptr, nullptr},
    };
    for (const Case& c : cases) {
        const ScopeScale* s = FindScopeScale(c.pid, c.pressure, c.speed);
        if (!c.name) {
            EXPECT_EQ(s, nullptr) << c.pid << c.pressure;
            continue;
        }
        ASSERT_NE(s, nullptr) << c.pid;
        EXPECT_STREQ(s->name, c.name);
        EXPECT_STREQ(s->captions[5], c.top) << c.name;
        EXPECT_STREQ(s->units, c.units) << c.name;
    }
    EXPECT_STREQ(FindScopeScale(11, "PSI", "")->captions[1], "15 -");
    EXPECT_STREQ(FindScopeScale(14, "", "")->captions[0], "-64 -");
    EXPECT_STREQ(FindScopeScale(27, "", "")->captions[0], "0.000 -");
}

TEST(ScopeScale, O2NamesFollowPid1DAndLeadBackToTheirPid) {
    struct Case {
        int pid;
        bool pid1D;
        const char* name;
        const char* caption;
    };
    const Case cases[] = {
        {20, false, "O2 B1S1", "O2 Sensor B1S1..."},  {22, false, "O2 B1S3", "O2 Sensor B1S3..."},
        {24, false, "O2 B2S1", "O2 Sensor B2S1..."},  {27, false, "O2 B2S4", "O2 Sensor B2S4..."},
        {20, true, "*O2 B1S1*", "O2 Sensor B1S1..."}, {22, true, "*O2 B2S1*", "O2 Sensor B2S1..."},
        {24, true, "*O2 B3S1*", "O2 Sensor B3S1..."}, {27, true, "*O2 B4S2*", "O2 Sensor B4S2..."},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(ScopeO2Name(c.pid, c.pid1D), c.name);
        EXPECT_EQ(ScopeO2Caption(c.pid, c.pid1D), c.caption);
        EXPECT_EQ(ScopePidByName(c.name), c.pid) << c.name;
    }
    EXPECT_EQ(ScopePidByName("RPM"), 12);
    EXPECT_EQ(ScopePidByName("-SELECT-"), std::nullopt);
}

}  // namespace
}  // namespace ketrel
