#pragma once
#include <array>

namespace ketrel {

// The unit word of a row of the extended screen's grid: none, a word that follows a unit
// setting (temperature, pressure, vapour pressure, barometric pressure, distance) or a fixed
// word.
enum class NewPidUnit { None, Temp, Pressure, Vapor, Baro, Distance, Fixed };

// One value field of the extended screen: its cell in GridData (the caption one column to the
// left, the unit one to the right, for columns 1 and 5), its caption item in Label1 (-1: none)
// with the design-time caption, its unit, its PID and its unit caption field.
struct NewPidRow {
    const char* field;
    int gridRow;
    int gridCol;
    int captionItem;
    const char* caption;
    NewPidUnit unit;
    const char* unitWord;
    int pid;                // its status picture is Image1(pid - 32)
    const char* unitField;  // the unit caption that the unit routine rewrites; nullptr: none
};

// The wide-range O2 names in the two-bank layout (PID 13) and the four-bank layout (PID 1D).
inline constexpr std::array<const char*, 8> kO2WideTwoBank{
    "O2 SENSOR B1S1 WR", "O2 SENSOR B1S2 WR", "O2 SENSOR B1S3 WR", "O2 SENSOR B1S4 WR",
    "O2 SENSOR B2S1 WR", "O2 SENSOR B2S2 WR", "O2 SENSOR B2S3 WR", "O2 SENSOR B2S4 WR"};
inline constexpr std::array<const char*, 8> kO2WideFourBank{
    "O2 SENSOR B1S1 WR", "O2 SENSOR B1S2 WR", "O2 SENSOR B2S1 WR", "O2 SENSOR B2S2 WR",
    "O2 SENSOR B3S1 WR", "O2 SENSOR B3S2 WR", "O2 SENSOR B4S1 WR", "O2 SENSOR B4S2 WR"};
// Label1 items of the voltage (lblO2wr1..8) and current (lblO2wra1..8) forms.
inline constexpr std::array<int, 8> kO2WideVoltItems{13, 20, 41, 12, 42, 43, 44, 50};
inline constexpr std::array<int, 8> kO2WideCurrentItems{11, 10, 9, 8, 5, 4, 3, 2};

// Every value field of the extended screen that has a caption and a unit, in grid order:
// column 1 rows 1 to 24, column 5 rows 1 to 20. The equivalence ratios beside the O2 fields
// (column 8) have neither and are placed by their number.
inline constexpr std::array<NewPidRow, 44> kNewPidRows{{
    {"lblDisMilOn", 1, 1, 16, "DISTANCE TRAVELED MIL ON", NewPidUnit::Distance, "", 0x21,
     "lblSpeed(4)"},
    {"lblRelFuelPres", 2, 1, 15, "RELATIVE FUEL PRESSURE", NewPidUnit::Pressure, "", 0x22,
     "lblPressure(7)"},
    {"lblRailPres", 3, 1, 14, "FUEL RAIL PRESSURE", NewPidUnit::Pressure, "", 0x23,
     "lblPressure(8)"},
    {"lblComEGR", 4, 1, 19, "COMMAND EGR", NewPidUnit::Fixed, "%", 0x2C, nullptr},
    {"lblEgrError", 5, 1, 132, "EGR ERROR", NewPidUnit::Fixed, "%", 0x2D, nullptr},
    {"lblEvapPurge", 6, 1, 133, "EVAPORATIVE PURGE", NewPidUnit::Fixed, "%", 0x2E, nullptr},
    {"lblFuelLevel", 7, 1, 134, "FUEL LEVEL", NewPidUnit::Fixed, "%", 0x2F, nullptr},
    {"lblWarmUp", 8, 1, 135, "# WARM UPS", NewPidUnit::None, "", 0x30, nullptr},
    {"lblDisClear", 9, 1, 136, "DISTANCE SINCE CLEARED", NewPidUnit::Distance, "", 0x31,
     "lblSpeed(15)"},
    {"lblVaporPres", 10, 1, 137, "EVAP VAPOR PRESSURE", NewPidUnit::Vapor, "", 0x32,
     "lblPressure(16)"},
    {"lblBaro", 11, 1, 0, "BARO", NewPidUnit::Baro, "", 0x33, "lblPressure(18)"},
    {"lblVolt", 12, 1, 1, "CONTROL MODULE VOLTAGE", NewPidUnit::Fixed, "Volts", 0x42, nullptr},
    {"lblAbosLoad", 13, 1, 210, "ABSOLUTE LOAD VALUE", NewPidUnit::Fixed, "%", 0x43, nullptr},
    {"lblEquivRatio", 14, 1, 52, "COMMANDED EQUIV. RATIO", NewPidUnit::None, "", 0x44, nullptr},
    {"lblTps", 15, 1, 138, "RELATIVE THROTTLE POSITION", NewPidUnit::Fixed, "%", 0x45, nullptr},
    {"lblAmbientAir", 16, 1, 139, "AMBIENT AIR TEMP", NewPidUnit::Temp, "", 0x46, "lblTemp(20)"},
    {"lblTpsB", 17, 1, 21, "ABSOLUTE THROTTLE POSITION B", NewPidUnit::Fixed, "%", 0x47, nullptr},
    {"lblTpsC", 18, 1, 22, "ABSOLUTE THROTTLE POSITION C", NewPidUnit::Fixed, "%", 0x48, nullptr},
    {"lblTpsD", 19, 1, 25, "ABSOLUTE THROTTLE POSITION D", NewPidUnit::Fixed, "%", 0x49, nullptr},
    {"lblTpsE", 20, 1, 27, "ABSOLUTE THROTTLE POSITION E", NewPidUnit::Fixed, "%", 0x4A, nullptr},
    {"lblTpsF", 21, 1, 26, "ABSOLUTE THROTTLE POSITION F", NewPidUnit::Fixed, "%", 0x4B, nullptr},
    {"lblActuator", 22, 1, 28, "THROTTLE ACTUATOR CONTROL", NewPidUnit::Fixed, "%", 0x4C, nullptr},
    {"lblMinutes", 23, 1, 29, "MINUTES RUN ENGINE WITH MIL ON", NewPidUnit::Fixed, "Min", 0x4D,
     nullptr},
    {"lblTimeClearDTC", 24, 1, 30, "TIME SINCE TROUBLE CODES CLEARED", NewPidUnit::Fixed, "Min",
     0x4E, nullptr},
    {"lblO2wr1", 1, 5, 13, "O2 SENSOR B1S1 WR", NewPidUnit::Fixed, "Volts", 0x24, nullptr},
    {"lblO2wr2", 2, 5, 20, "O2 SENSOR B1S2 WR", NewPidUnit::Fixed, "Volts", 0x25, nullptr},
    {"lblO2wr3", 3, 5, 41, "O2 SENSOR B1S3 WR", NewPidUnit::Fixed, "Volts", 0x26, nullptr},
    {"lblO2wr4", 4, 5, 12, "O2 SENSOR B1S4 WR", NewPidUnit::Fixed, "Volts", 0x27, nullptr},
    {"lblO2wr5", 5, 5, 42, "O2 SENSOR B2S1 WR", NewPidUnit::Fixed, "Volts", 0x28, nullptr},
    {"lblO2wr6", 6, 5, 43, "O2 SENSOR B2S2 WR", NewPidUnit::Fixed, "Volts", 0x29, nullptr},
    {"lblO2wr7", 7, 5, 44, "O2 SENSOR B2S3 WR", NewPidUnit::Fixed, "Volts", 0x2A, nullptr},
    {"lblO2wr8", 8, 5, 50, "O2 SENSOR B2S4 WR", NewPidUnit::Fixed, "Volts", 0x2B, nullptr},
    {"lblO2wra1", 9, 5, 11, "O2 SENSOR B1S1 WR", NewPidUnit::Fixed, "mA", 0x34, nullptr},
    {"lblO2wra2", 10, 5, 10, "O2 SENSOR B1S2 WR", NewPidUnit::Fixed, "mA", 0x35, nullptr},
    {"lblO2wra3", 11, 5, 9, "O2 SENSOR B1S3 WR", NewPidUnit::Fixed, "mA", 0x36, nullptr},
    {"lblO2wra4", 12, 5, 8, "O2 SENSOR B1S4 WR", NewPidUnit::Fixed, "mA", 0x37, nullptr},
    {"lblO2wra5", 13, 5, 5, "O2 SENSOR B2S1 WR", NewPidUnit::Fixed, "mA", 0x38, nullptr},
    {"lblO2wra6", 14, 5, 4, "O2 SENSOR B2S2 WR", NewPidUnit::Fixed, "mA", 0x39, nullptr},
    {"lblO2wra7", 15, 5, 3, "O2 SENSOR B2S3 WR", NewPidUnit::Fixed, "mA", 0x3A, nullptr},
    {"lblO2wra8", 16, 5, 2, "O2 SENSOR B2S4 WR", NewPidUnit::Fixed, "mA", 0x3B, nullptr},
    {"LBLCatB1S1", 17, 5, 18, "CAT CONV. TEMP B1S1", NewPidUnit::Temp, "", 0x3C, "lblTemp(0)"},
    {"lblCatB1S2", 18, 5, 17, "CAT CONV. TEMP B1S2", NewPidUnit::Temp, "", 0x3E, "lblTemp(1)"},
    {"lblCatB2S1", 19, 5, 7, "CAT CONV. TEMP B2S1", NewPidUnit::Temp, "", 0x3D, "lblTemp(2)"},
    {"lblCatB2S2", 20, 5, 6, "CAT CONV. TEMP B2S2", NewPidUnit::Temp, "", 0x3F, "lblTemp(3)"},
}};

// Column of the equivalence ratios beside the O2 fields: lblO2wrvEn on row n, lblO2wrEn on
// row n + 8.
inline constexpr int kNewPidRatioCol = 8;

}  // namespace ketrel
