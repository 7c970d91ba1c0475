#include <gtest/gtest.h>

#include <map>
#include <vector>

#include "obd/bit_operations.h"
#include "sweeps/mode6_definitions.h"

namespace ketrel {
namespace {

// The descriptions by test id, group 1 first; an id with one entry under kAny takes it for
// every group. Test 10 goes by component and is checked apart.
const char* const kAny = "any";
// clang-format off
const std::map<std::string, std::vector<const char*>> kExpected = {
    {"01", {"HO2S11 Voltage Amplitude Voltage Threshold", "HO2S21 Voltage Amplitude Voltage Threshold"}},
    {"03", {"Upstream O2 Sensor Switch Point Voltage", "Downstream O2 Sensor Switch Point Voltage"}},
    {"04", {"Maximum HO2S11 Heater Current", "Minimum HO2S11 Heater Current", "Maximum HO2S21 Heater Current", "Minimum HO2S21 Heater Current", "Maximum HO2S12 Heater Current", "Minimum HO2S12 Heater Current", "Maximum HO2S22 Heater Current", "Minimum HO2S22 Heater Current"}},
    {"21", {"Initial Tank Vacuum And Minimum Limit", "Initial Tank Vacuum And Maximum Limit"}},
    {"22", {kAny, "Leak Check Vacuum Bleed Up And Threshold"}},
    {"25", {kAny, "Vapor Generation Maximum Pressure Rise"}},
    {"26", {"Phase 0 Initial Tank Vacuum And Minimum Limit", "Phase 0 Initial Tank Vacuum And Maximum Limit"}},
    {"27", {kAny, "Phase 2 0.040 Inch Cruise Leak Check Vacuum Bleed-Up And Max Threshold"}},
    {"28", {kAny, "Phase 2 0.020 Inch Cruise Leak Check Vacuum Bleedup And MaxLeak Threshold"}},
    {"2A", {kAny, "Phase 4 Vapor Generation Maximum Change In Pressure And Max Threshold"}},
    {"2B", {kAny, "Phase 4 Vapor Generation Maximum Absolute Pressure Rise And Max Threshold"}},
    {"2C", {kAny, "Phase 2 0.020 Inch Idle Leak Check Vacuum Bleedup And Maximum"}},
    {"2D", {kAny, "Phase 2 0.020 Inch Idle Leak Check Vacuum Bleedup And Max No Leak Threshold"}},
    {"30", {"HO2S11 Voltage For Upstream Flow Test And Rich Limit", "HO2S21 Voltage For Upstream Flow Test And Rich Limit"}},
    {"31", {kAny, "HO2s Lean Time For Upstream Flow Test And Time Limit"}},
    {"41", {"Delta Pressure For Upstream Hose Test And Threshold", "Delta Pressure For Downstream Hose Test And Threshold"}},
    {"42", {"Delta Pressure For Upstream Hose Test And Threshold", "Delta Pressure For Downstream Hose Test And Threshold"}},
    {"43", {"Delta Pressure Sensor Voltage For Upstream Hose Test And Threshold", "Delta Pressure Sensor Voltage For Downstream Hose Test And Threshold"}},
    {"45", {kAny, "Delta Pressure For Stuck Open Test And Threshold"}},
    {"49", {kAny, "Delta Pressure For Flow Test And Threshold"}},
    {"4A", {kAny, "Delta Pressure For Flow Test And Threshold"}},
    {"4B", {kAny, "EVR Duty Cycle For Flow Test And Threshold"}},
    {"4E", {"Sum Of MAP-Delta And IMAP Delta And Max Threshold", "Sum Of MAP-Delta And IMAP Delta And Min Threshold"}},
    {"4F", {kAny, "EGR-On MAP And Max Threshold"}},
    {"50", {kAny, "Total Engine Misfire And Emission Threshold Misfire Rate (Updated Every 1,000 " "Revolutions)"}},
    {"51", std::vector<const char*>( 10, "Cylinder Specific Misfire And Catalyst Damage Threshold Misfire Rate")},
    {"53", std::vector<const char*>( 10, "Cylinder Specific Misfire And Catalyst Damage Threshold Misfire Rate")},
    {"54", {kAny, "High Catalyst Damage Misfire And Catalyst Damage Threshold Misfire Rate"}},
    {"55", {kAny, "High Emission Threshold Misfire And Emission Threshold Misfire Rate"}},
    {"56", {kAny, "Cylinder Events Tested And Number Of Events Required For A 1000 Rev Test"}},
    {"61", {kAny, "Phase 0 Initial Tank Vacuum And Minimum Vacuum Limit (Data For P1450)"}},
    {"62", {kAny, "Phase 4 Vapor Generation Minimum Change In Pressure And Minimum Vacuum Limit (Data For " "P1450)"}},
    {"63", {kAny, "Phase 0 Initial Tank Vacuum And Gross Leak Maximum Vacuum Limit (Data For P0455/P0457)"}},
    {"64", {kAny, "Phase 2 0.040 Inch Cruise Leak Check Vacuum Bleed-Up And Maximum Vacuum Limit (Data For " "P0442)"}},
    {"65", {kAny, "Phase 2 0.020 Inch Idle Leak Check Vacuum Bleed-Up And Maximum Vacuum Limit (Data For " "P0456)"}},
};
// clang-format on

TEST(Mode6Definitions, EveryTestIdGroupAndComponent) {
    const std::map<std::string, const char*> test10 = {{"11", "Bank 1 Switch Ratio And Max Limit"},
                                                       {"21", "Bank 2 Switch Ratio And Max Limit"},
                                                       {"10", "Bank 1 Index Ratio And Max Limit"},
                                                       {"20", "Bank 2 Index Ratio And Max Limit"}};
    for (int id = 0; id <= 255; ++id) {
        const std::string t = ByteToHexText(id);
        for (int group = 1; group <= 12; ++group) {
            for (int comp = 0; comp <= 255; comp += (id == 0x10 ? 1 : 0x11)) {
                const std::string c = ByteToHexText(comp);
                std::string want = "No Definition Available";
                if (id == 0x10) {
                    if (auto it = test10.find(c); it != test10.end()) want = it->second;
                } else if (auto it = kExpected.find(t); it != kExpected.end()) {
                    const auto& d = it->second;
                    if (d[0] == kAny)
                        want = d[1];
                    else if (group <= int(d.size()))
                        want = d[std::size_t(group - 1)];
                }
                const Mode6Described got = DescribeMode6Row(t, group, c, "100", "200");
                ASSERT_EQ(got.description, want) << t << " group " << group << " comp " << c;
                if (want == "No Definition Available") {
                    ASSERT_EQ(got.resultUnits, "N/A");
                    ASSERT_EQ(got.limitUnits, "N/A");
                } else {
                    ASSERT_NE(got.resultUnits, "N/A");
                }
            }
        }
    }
}

TEST(Mode6Definitions, ValueForms) {
    struct Case {
        const char *id, *result, *limit, *resultUnits, *limitUnits;
    } cases[] = {
        {"01", "500", "1000", "0.49 Volts", "0.98 Volts"},
        {"30", "500", "", "0.490 Volts", "0.000 Volts"},
        {"04", "100", "100", "0.78 Amps", "0.39 Amps"},
        {"10", "100", "64", "1.56", "0.9984"},                      // no format, no unit
        {"27", "0", "32768", "-63.90 in H20", "0.00 in H20"},       // offset
        {"22", "65000", "4000", "-1.04 in H20", "-119.99 in H20"},  // limit text sorts high
        {"22", "2000", "30000", "3.90 in H20", "58.50 in H20"},
        {"25", "2000", "30000", "3.90 in H20", "-35535.00 in H20"},  // at or before "32767"
        {"25", "2000", "40000", "3.90 in H20", "-14.10 in H20"},
        {"41", "40000", "2000", "-199.18 in H20", "3.90 in H20"},  // 0.0078 above 32767
        {"56", "1000", "1000", "1000", "1000"},
    };
    for (const Case& c : cases) {
        const Mode6Described d = DescribeMode6Row(c.id, 1, "11", c.result, c.limit);
        EXPECT_EQ(d.resultUnits, c.resultUnits) << c.id << " " << c.result;
        EXPECT_EQ(d.limitUnits, c.limitUnits) << c.id << " " << c.limit;
    }
}

}  // namespace
}  // namespace ketrel
