#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "display/fuel_economy.h"
#include "display/large_display.h"

namespace ketrel {
namespace {

TEST(LargeDisplay, BarFollowsTheRuleOfEachValue) {
    struct Case {
        const char* name;
        const char* text;
        const char* temp;
        const char* speed;
        int barMax;
        std::optional<int> bar;  // nullopt: the bar stays
    } cases[] = {
        {"Coolant Temperature", "N/A", "F", "MPH", 459, std::nullopt},
        {"Coolant Temperature", "-40", "C", "MPH", 255, 0},
        {"Intake Temperature", "20", "F", "MPH", 459, 60},
        {"Coolant Temperature", "216", "C", "MPH", 255, 255},
        {"Coolant Temperature", "419", "F", "MPH", 459, 459},
        {"Vehicle Speed", "170", "F", "MPH", 160, 160},
        {"Vehicle Speed", "170", "F", "KPH", 255, 170},
        {"RPM", "8500", "F", "MPH", 8000, 8000},
        {"RPM", "N/A", "F", "MPH", 8000, 0},
        {"MAF", "N/A", "F", "MPH", 655, std::nullopt},
        {"MAP", "80", "F", "MPH", 75, 75},
        {"Fuel Pressure", "300", "F", "MPH", 765, 300},
        {"TPS", "45.1", "F", "MPH", 100, 45},
        {"O2 B1S1", "0.450", "F", "MPH", 100, 45},
        {"*O2 B3S2*", "1.016", "F", "MPH", 100, 100},
        {"O2 B2S4", "0.905", "F", "MPH", 100, 91},
        {"*O2 B4S2*", "0.450", "F", "MPH", 100, std::nullopt},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.name) + " " + c.text);
        EXPECT_EQ(LargeBarValue(c.name, c.text, c.temp, c.speed, c.barMax), c.bar);
    }
    // The four-bank name of the last slot finds no field; its test's unstarred form does.
    EXPECT_EQ(LargeDisplaySource("*O2 B4S2*"), nullptr);
    EXPECT_STREQ(LargeDisplaySource("O2 B4S2*"), "lblO2b2s4");
    EXPECT_STREQ(LargeDisplaySource("*O2 B4S1*"), "lblO2b2s3");
    EXPECT_STREQ(LargeDisplaySource("O2 B1S3"), "lblO2b1s3");
}

TEST(FuelEconomy, InstantFigureFromSpeedAirFlowAndTrims) {
    struct Case {
        MpgInputs in;
        const char* shown;
    } cases[] = {
        // 20 g/s is 4.898 kg/h, 1.2939 US gal/h.
        {{"60", "20.00", "0", "0", true, true}, "46.4"},
        {{"100", "20.00", "0", "0", false, true}, "20.4"},
        {{"0", "20.00", "0", "0", true, true}, "-"},
        {{"60", "N/A", "0", "0", true, true}, "-"},
        {{"60", "20.00", "-5", "0", true, true}, "44.1"},  // 46.37 * 0.95
        {{"60", "20.00", "0", "10", true, true}, "51.0"},  // 46.37 * 1.10
        {{"60", "20.00", "0", "10", true, false}, "46.4"},
        {{"60", "20,00", "0", "0", true, true}, "46.4"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.in.speed + " " + c.in.maf + " " + c.in.ltb1 + " " + c.in.ltb2);
        EXPECT_EQ(InstantMpg(c.in), c.shown);
    }
}

}  // namespace
}  // namespace ketrel
