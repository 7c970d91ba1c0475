#pragma once
#include <array>

// The test definitions of one maker's vehicles for the Mode 6 grid: per test id (and, within
// some ids, the row's place among the rows of that id or the component id) the description,
// the unit, the factors that turn the raw result and limit into the unit and the number form.
namespace ketrel::data {

// How a definition picks its rows among those of one test id.
enum class Mode6Pick {
    Group,      // the row's place among consecutive rows of the id is in [from, to]
    Component,  // the row's component id is `component`
    Any,        // every row of the id
};

// How a raw value becomes a number in the unit.
enum class Mode6Form {
    Plain,        // value x factor
    Offset,       // (value - 32768) x factor
    Signed65535,  // above 32767: (value - 65535) x factor; the limit decides on its text
    Signed65536,  // above 32767: (value - 65536) x 0.0078, else value x 0.00195
    VaporRise,    // the result as Signed65535; the limit by its own rule
};

// One definition; the first that matches a row wins.
struct Mode6DefinitionRow {
    const char* testId;  // two hex digits, as the grid's first column holds them
    Mode6Pick pick;
    int from, to;           // groups, for Mode6Pick::Group
    const char* component;  // for Mode6Pick::Component
    const char* description;
    const char* unit;  // appended after a formatted number; "" for none
    double resultFactor;
    double limitFactor;
    const char* format;  // "0.00", "0.000", or "" for the number as it stands
    Mode6Form form;
};

namespace mode6 {
using P = Mode6Pick;
using F = Mode6Form;
inline constexpr const char* kVolts = " Volts";
inline constexpr const char* kAmps = " Amps";
inline constexpr const char* kH2O = " in H20";
inline constexpr const char* kHg = " in HG";
inline constexpr const char* kPercent = " %";
inline constexpr const char* kMisfire =
    "Cylinder Specific Misfire And Catalyst Damage Threshold Misfire Rate";
}  // namespace mode6

// clang-format off
inline constexpr std::array<Mode6DefinitionRow, 55> kMode6Definitions{{
    {"01", mode6::P::Group, 1, 1, "", "HO2S11 Voltage Amplitude Voltage Threshold", mode6::kVolts, 0.00098, 0.00098, "0.00", mode6::F::Plain},
    {"01", mode6::P::Group, 2, 2, "", "HO2S21 Voltage Amplitude Voltage Threshold", mode6::kVolts, 0.00098, 0.00098, "0.00", mode6::F::Plain},
    {"03", mode6::P::Group, 1, 1, "", "Upstream O2 Sensor Switch Point Voltage", mode6::kVolts, 0.00098, 0.00098, "0.00", mode6::F::Plain},
    {"03", mode6::P::Group, 2, 2, "", "Downstream O2 Sensor Switch Point Voltage", mode6::kVolts, 0.00098, 0.00098, "0.00", mode6::F::Plain},
    {"04", mode6::P::Group, 1, 1, "", "Maximum HO2S11 Heater Current", mode6::kAmps, 0.0078, 0.003906, "0.00", mode6::F::Plain},
    {"04", mode6::P::Group, 2, 2, "", "Minimum HO2S11 Heater Current", mode6::kAmps, 0.0078, 0.003906, "0.00", mode6::F::Plain},
    {"04", mode6::P::Group, 3, 3, "", "Maximum HO2S21 Heater Current", mode6::kAmps, 0.0078, 0.003906, "0.00", mode6::F::Plain},
    {"04", mode6::P::Group, 4, 4, "", "Minimum HO2S21 Heater Current", mode6::kAmps, 0.0078, 0.003906, "0.00", mode6::F::Plain},
    {"04", mode6::P::Group, 5, 5, "", "Maximum HO2S12 Heater Current", mode6::kAmps, 0.0078, 0.003906, "0.00", mode6::F::Plain},
    {"04", mode6::P::Group, 6, 6, "", "Minimum HO2S12 Heater Current", mode6::kAmps, 0.0078, 0.003906, "0.00", mode6::F::Plain},
    {"04", mode6::P::Group, 7, 7, "", "Maximum HO2S22 Heater Current", mode6::kAmps, 0.0078, 0.003906, "0.00", mode6::F::Plain},
    {"04", mode6::P::Group, 8, 8, "", "Minimum HO2S22 Heater Current", mode6::kAmps, 0.0078, 0.003906, "0.00", mode6::F::Plain},
    {"10", mode6::P::Component, 0, 0, "11", "Bank 1 Switch Ratio And Max Limit", "", 0.0156, 0.0156, "", mode6::F::Plain},
    {"10", mode6::P::Component, 0, 0, "21", "Bank 2 Switch Ratio And Max Limit", "", 0.0156, 0.0156, "", mode6::F::Plain},
    {"10", mode6::P::Component, 0, 0, "10", "Bank 1 Index Ratio And Max Limit", "", 0.0156, 0.0156, "", mode6::F::Plain},
    {"10", mode6::P::Component, 0, 0, "20", "Bank 2 Index Ratio And Max Limit", "", 0.0156, 0.0156, "", mode6::F::Plain},
    {"21", mode6::P::Group, 1, 1, "", "Initial Tank Vacuum And Minimum Limit", mode6::kH2O, 0.00195, 0.00195, "0.00", mode6::F::Signed65535},
    {"21", mode6::P::Group, 2, 2, "", "Initial Tank Vacuum And Maximum Limit", mode6::kH2O, 0.00195, 0.00195, "0.00", mode6::F::Signed65535},
    {"22", mode6::P::Any, 0, 0, "", "Leak Check Vacuum Bleed Up And Threshold", mode6::kH2O, 0.00195, 0.00195, "0.00", mode6::F::Signed65535},
    {"25", mode6::P::Any, 0, 0, "", "Vapor Generation Maximum Pressure Rise", mode6::kH2O, 0.00195, 0.00195, "0.00", mode6::F::VaporRise},
    {"26", mode6::P::Group, 1, 1, "", "Phase 0 Initial Tank Vacuum And Minimum Limit", mode6::kH2O, 0.00195, 0.00195, "0.00", mode6::F::Offset},
    {"26", mode6::P::Group, 2, 2, "", "Phase 0 Initial Tank Vacuum And Maximum Limit", mode6::kH2O, 0.00195, 0.00195, "0.00", mode6::F::Offset},
    {"27", mode6::P::Any, 0, 0, "", "Phase 2 0.040 Inch Cruise Leak Check Vacuum Bleed-Up And Max Threshold", mode6::kH2O, 0.00195, 0.00195, "0.00", mode6::F::Offset},
    {"28", mode6::P::Any, 0, 0, "", "Phase 2 0.020 Inch Cruise Leak Check Vacuum Bleedup And MaxLeak Threshold", mode6::kH2O, 0.00195, 0.00195, "0.00", mode6::F::Offset},
    {"2A", mode6::P::Any, 0, 0, "", "Phase 4 Vapor Generation Maximum Change In Pressure And Max Threshold", mode6::kH2O, 0.00195, 0.00195, "0.00", mode6::F::Offset},
    {"2B", mode6::P::Any, 0, 0, "", "Phase 4 Vapor Generation Maximum Absolute Pressure Rise And Max Threshold", mode6::kH2O, 0.00195, 0.00195, "0.00", mode6::F::Offset},
    {"2C", mode6::P::Any, 0, 0, "", "Phase 2 0.020 Inch Idle Leak Check Vacuum Bleedup And Maximum", mode6::kH2O, 0.00195, 0.00195, "0.00", mode6::F::Offset},
    {"2D", mode6::P::Any, 0, 0, "", "Phase 2 0.020 Inch Idle Leak Check Vacuum Bleedup And Max No Leak Threshold", mode6::kH2O, 0.00195, 0.00195, "0.00", mode6::F::Offset},
    {"30", mode6::P::Group, 1, 1, "", "HO2S11 Voltage For Upstream Flow Test And Rich Limit", mode6::kVolts, 0.00098, 0.00098, "0.000", mode6::F::Plain},
    {"30", mode6::P::Group, 2, 2, "", "HO2S21 Voltage For Upstream Flow Test And Rich Limit", mode6::kVolts, 0.00098, 0.00098, "0.000", mode6::F::Plain},
    {"31", mode6::P::Any, 0, 0, "", "HO2s Lean Time For Upstream Flow Test And Time Limit", " Seconds", 0.125, 0.125, "0.000", mode6::F::Plain},
    {"41", mode6::P::Group, 1, 1, "", "Delta Pressure For Upstream Hose Test And Threshold", mode6::kH2O, 0.00195, 0.00195, "0.00", mode6::F::Signed65536},
    {"41", mode6::P::Group, 2, 2, "", "Delta Pressure For Downstream Hose Test And Threshold", mode6::kH2O, 0.00195, 0.00195, "0.00", mode6::F::Signed65536},
    {"42", mode6::P::Group, 1, 1, "", "Delta Pressure For Upstream Hose Test And Threshold", mode6::kH2O, 0.0078, 0.0078, "0.00", mode6::F::Offset},
    {"42", mode6::P::Group, 2, 2, "", "Delta Pressure For Downstream Hose Test And Threshold", mode6::kH2O, 0.0078, 0.0078, "0.00", mode6::F::Offset},
    {"43", mode6::P::Group, 1, 1, "", "Delta Pressure Sensor Voltage For Upstream Hose Test And Threshold", mode6::kVolts, 0.0000763, 0.0000763, "0.00", mode6::F::Plain},
    {"43", mode6::P::Group, 2, 2, "", "Delta Pressure Sensor Voltage For Downstream Hose Test And Threshold", mode6::kVolts, 0.0000763, 0.0000763, "0.00", mode6::F::Plain},
    {"45", mode6::P::Any, 0, 0, "", "Delta Pressure For Stuck Open Test And Threshold", mode6::kVolts, 0.0000763, 0.0000763, "0.00", mode6::F::Plain},
    {"49", mode6::P::Any, 0, 0, "", "Delta Pressure For Flow Test And Threshold", mode6::kH2O, 0.0078, 0.0078, "0.00", mode6::F::Offset},
    {"4A", mode6::P::Any, 0, 0, "", "Delta Pressure For Flow Test And Threshold", mode6::kH2O, 0.00195, 0.00195, "0.00", mode6::F::Signed65536},
    {"4B", mode6::P::Any, 0, 0, "", "EVR Duty Cycle For Flow Test And Threshold", mode6::kPercent, 0.0000305, 0.0000305, "0.00", mode6::F::Plain},
    {"4E", mode6::P::Group, 1, 1, "", "Sum Of MAP-Delta And IMAP Delta And Max Threshold", mode6::kHg, 0.0078125, 0.0078125, "0.00", mode6::F::Plain},
    {"4E", mode6::P::Group, 2, 2, "", "Sum Of MAP-Delta And IMAP Delta And Min Threshold", mode6::kHg, 0.0078125, 0.0078125, "0.00", mode6::F::Plain},
    {"4F", mode6::P::Any, 0, 0, "", "EGR-On MAP And Max Threshold", mode6::kHg, 0.0078125, 0.0078125, "0.00", mode6::F::Plain},
    {"50", mode6::P::Any, 0, 0, "", "Total Engine Misfire And Emission Threshold Misfire Rate (Updated Every 1,000 Revolutions)", mode6::kPercent, 0.000015, 0.000015, "0.00", mode6::F::Plain},
    {"51", mode6::P::Group, 1, 10, "", mode6::kMisfire, mode6::kPercent, 0.000015, 0.000015, "0.00", mode6::F::Plain},
    {"53", mode6::P::Group, 1, 10, "", mode6::kMisfire, mode6::kPercent, 0.000015, 0.000015, "0.00", mode6::F::Plain},
    {"54", mode6::P::Any, 0, 0, "", "High Catalyst Damage Misfire And Catalyst Damage Threshold Misfire Rate", mode6::kPercent, 0.000015, 0.000015, "0.00", mode6::F::Plain},
    {"55", mode6::P::Any, 0, 0, "", "High Emission Threshold Misfire And Emission Threshold Misfire Rate", mode6::kPercent, 0.000015, 0.000015, "0.00", mode6::F::Plain},
    {"56", mode6::P::Any, 0, 0, "", "Cylinder Events Tested And Number Of Events Required For A 1000 Rev Test", " Events", 1, 1, "", mode6::F::Plain},
    {"61", mode6::P::Any, 0, 0, "", "Phase 0 Initial Tank Vacuum And Minimum Vacuum Limit (Data For P1450)", mode6::kH2O, 0.00195, 0.00195, "0.00", mode6::F::Offset},
    {"62", mode6::P::Any, 0, 0, "", "Phase 4 Vapor Generation Minimum Change In Pressure And Minimum Vacuum Limit (Data For P1450)", mode6::kH2O, 0.00195, 0.00195, "0.00", mode6::F::Offset},
    {"63", mode6::P::Any, 0, 0, "", "Phase 0 Initial Tank Vacuum And Gross Leak Maximum Vacuum Limit (Data For P0455/P0457)", mode6::kH2O, 0.00195, 0.00195, "0.00", mode6::F::Offset},
    {"64", mode6::P::Any, 0, 0, "", "Phase 2 0.040 Inch Cruise Leak Check Vacuum Bleed-Up And Maximum Vacuum Limit (Data For P0442)", mode6::kH2O, 0.00195, 0.00195, "0.00", mode6::F::Offset},
    {"65", mode6::P::Any, 0, 0, "", "Phase 2 0.020 Inch Idle Leak Check Vacuum Bleed-Up And Maximum Vacuum Limit (Data For P0456)", mode6::kH2O, 0.00195, 0.00195, "0.00", mode6::F::Offset},
}};
// clang-format on

// What a row without a definition shows.
inline constexpr const char* kMode6NoDefinition = "No Definition Available";
inline constexpr const char* kMode6NoUnits = "N/A";

}  // namespace ketrel::data
