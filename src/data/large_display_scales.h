#pragma once
#include <array>

// The large display's scales: for each entry of the "Large Display Data" menu and unit
// setting, the name shown, the texts under the bar (kept with their leading blanks), the bar's
// maximum, the main screen's field that is shown and the PID that fills it.
namespace ketrel::data {

struct LargeScaleRow {
    const char* menu;     // the entry of mnuViewRealTime
    const char* name;     // lblDisplayPID
    const char* setting;  // the unit setting the row is for; nullptr: any
    const char* min;
    const char* mid;
    const char* max;
    int barMax;
    const char* source;  // the field of the main screen
    int pid;
};

// The O2 slots have no fixed name: it follows the bank layout (kLargeO2Names).
inline constexpr std::array<LargeScaleRow, 21> kLargeScaleRows{{
    {"mnuViewCoolant", "Coolant Temperature", "F", "-40 F", "230 F", "419 F", 459, "lblCoolant",
     0x05},
    {"mnuViewCoolant", "Coolant Temperature", "C", "-40 C", " 128 C", "215 C", 255, "lblCoolant",
     0x05},
    {"mnuViewIntakeAir", "Intake Temperature", "F", "-40 F", "230 F", "419 F", 459, "lblIntakeAir",
     0x0F},
    {"mnuViewIntakeAir", "Intake Temperature", "C", "-40 C", "128 C", "215 C", 255, "lblIntakeAir",
     0x0F},
    {"mnuViewSpeed", "Vehicle Speed", "KPH", "0 KPH", " 127 KPH", "255 KPH", 255, "lblSpeed", 0x0D},
    {"mnuViewSpeed", "Vehicle Speed", "MPH", "0 MPH", " 80 MPH", "160 MPH", 160, "lblSpeed", 0x0D},
    {"mnuViewRPM", "RPM", nullptr, "0 RPM", "4000 RPM", "8000 RPM", 8000, "lblRPM", 0x0C},
    {"mnuViewMAF", "MAF", nullptr, "0 gm/s", "327 gm/s", "655 gm/s", 655, "lblMAF", 0x10},
    {"mnuViewMAP", "MAP", "kPa", "0 kPa", "127 kPa", "255 kPa", 255, "lblMAP", 0x0B},
    {"mnuViewMAP", "MAP", "PSI", "0 In/Hg", " 40 In/Hg", "75 In/Hg", 75, "lblMAP", 0x0B},
    {"mnuViewFuelPressure", "Fuel Pressure", "kPa", "0 kPa", "383 kPa", "765 kPa", 765,
     "lblFuelPres", 0x0A},
    {"mnuViewFuelPressure", "Fuel Pressure", "PSI", "0 PSI", " 55 PSI", "110 PSI", 110,
     "lblFuelPres", 0x0A},
    {"mnuViewTPS", "TPS", nullptr, "0 %", "50 %", "100 %", 100, "lblTps", 0x11},
    {"mnuViewO2B1S1", nullptr, nullptr, "0 V", "0.50 V", "1.00 V", 100, "lblO2b1s1", 0x14},
    {"mnuViewO2B1S2", nullptr, nullptr, "0 V", "0.50 V", "1.00 V", 100, "lblO2b1s2", 0x15},
    {"mnuViewO2B1S3", nullptr, nullptr, "0 V", "0.50 V", "1.00 V", 100, "lblO2b1s3", 0x16},
    {"mnuViewO2B1S4", nullptr, nullptr, "0 V", "0.50 V", "1.00 V", 100, "lblO2b1s4", 0x17},
    {"mnuViewO2B2S1", nullptr, nullptr, "0 V", "0.50 V", "1.00 V", 100, "lblO2b2s1", 0x18},
    {"mnuViewO2B2S2", nullptr, nullptr, "0 V", "0.50 V", "1.00 V", 100, "lblO2b2s2", 0x19},
    {"mnuViewO2B2S3", nullptr, nullptr, "0 V", "0.50 V", "1.00 V", 100, "lblO2b2s3", 0x1A},
    {"mnuViewO2B2S4", nullptr, nullptr, "0 V", "0.50 V", "1.00 V", 100, "lblO2b2s4", 0x1B},
}};

// Names of the eight O2 slots: without PID 1D (two banks) and with it (four banks).
inline constexpr std::array<const char*, 8> kLargeO2Names{
    "O2 B1S1", "O2 B1S2", "O2 B1S3", "O2 B1S4", "O2 B2S1", "O2 B2S2", "O2 B2S3", "O2 B2S4"};
inline constexpr std::array<const char*, 8> kLargeO2StarNames{"*O2 B1S1*", "*O2 B1S2*", "*O2 B2S1*",
                                                              "*O2 B2S2*", "*O2 B3S1*", "*O2 B3S2*",
                                                              "*O2 B4S1*", "*O2 B4S2*"};

}  // namespace ketrel::data
