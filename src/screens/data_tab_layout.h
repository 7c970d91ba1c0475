#pragma once
#include <array>

namespace ketrel {

// What the GridData unit cell of a value shows: nothing, the word of a unit setting
// (temperature, speed, manifold or fuel pressure), or a fixed word.
enum class GridUnit { None, Temp, Speed, Map, FuelPressure, Fixed };

// One live value of the data tab and everything drawn for it. In label style: its PID indicator,
// its caption Label1(captionItem) and its unit, either a unit field that the unit settings
// rewrite or a fixed word. In grid style: its cell in GridData, with the name one column to the
// left (nullptr: the caption names it, as the O2 captions follow the bank layout) and the unit
// one column to the right. The O2 voltages colour their PID's second indicator as well.
struct DataTabRow {
    const char* label;
    int captionItem;
    const char* caption;
    int gridRow;
    int gridCol;
    const char* gridName;
    GridUnit gridUnit;
    const char* gridUnitWord;
    int indicator;
    const char* unitField;
    const char* unitWord;
    bool coloursSecondIndicator;
};

// The value labels of tab 0 in grid order: left block (column 1) rows 1 to 18, right block
// (column 5) rows 1 to 19. The O2 captions are rewritten by the PID catalogue. The tab and the
// grid spell some units differently ("g/s" and "gm/s", "RPM" and "R.P.M.").
inline constexpr std::array<DataTabRow, 37> kDataTabRows{{
    {"lblCoolant", 0, "COOLANT TEMP", 1, 1, "Coolant Temperature", GridUnit::Temp, "", 5,
     "lblTemp(0)", "", false},
    {"lblIntakeAir", 1, "INTAKE AIR TEMP", 2, 1, "Intake Temperature", GridUnit::Temp, "", 15,
     "lblTemp(1)", "", false},
    {"lblO2b1s1", 10, "O2 BANK 1 SENSOR 1", 3, 1, nullptr, GridUnit::Fixed, "Volts", 20, nullptr,
     "Volts", true},
    {"lblO2b1s2", 9, "O2 BANK 1 SENSOR 2", 4, 1, nullptr, GridUnit::Fixed, "Volts", 21, nullptr,
     "Volts", true},
    {"lblO2b1s3", 8, "O2 BANK 1 SENSOR 3", 5, 1, nullptr, GridUnit::Fixed, "Volts", 22, nullptr,
     "Volts", true},
    {"lblO2b1s4", 7, "O2 BANK 1 SENSOR 4", 6, 1, nullptr, GridUnit::Fixed, "Volts", 23, nullptr,
     "Volts", true},
    {"lblO2b2s1", 6, "O2 BANK 2 SENSOR 1", 7, 1, nullptr, GridUnit::Fixed, "Volts", 24, nullptr,
     "Volts", true},
    {"lblO2b2s2", 5, "O2 BANK 2 SENSOR 2", 8, 1, nullptr, GridUnit::Fixed, "Volts", 25, nullptr,
     "Volts", true},
    {"lblO2b2s3", 4, "O2 BANK 2 SENSOR 3", 9, 1, nullptr, GridUnit::Fixed, "Volts", 26, nullptr,
     "Volts", true},
    {"lblO2b2s4", 3, "O2 BANK 2 SENSOR 4", 10, 1, nullptr, GridUnit::Fixed, "Volts", 27, nullptr,
     "Volts", true},
    {"lblLTB1", 11, "LONG TERM FUEL TRIM B1", 11, 1, "Long Term Fuel Trim B1", GridUnit::Fixed, "%",
     7, nullptr, "%", false},
    {"lblSTB1", 12, "SHORT TERM FUEL TRIM B1", 12, 1, "Short Term Fuel Trim B1", GridUnit::Fixed,
     "%", 6, nullptr, "%", false},
    {"lblLTB2", 13, "LONG TERM FUEL TRIM B2", 13, 1, "Long Term Fuel Trim B2", GridUnit::Fixed, "%",
     9, nullptr, "%", false},
    {"lblSTB2", 14, "SHORT TERM FUEL TRIM B2", 14, 1, "Short Term Fuel Trim B2", GridUnit::Fixed,
     "%", 8, nullptr, "%", false},
    {"lblTps", 15, "THROTTLE POSITION", 15, 1, "Throttle Position", GridUnit::Fixed, "%", 17,
     nullptr, "%", false},
    {"lblSpeed", 16, "VEHICLE SPEED", 16, 1, "Vehicle Speed", GridUnit::Speed, "", 13, "lblMPH(0)",
     "", false},
    {"lblTiming", 17, "SPARK ADVANCE", 17, 1, "Spark Timing", GridUnit::Fixed, "Deg", 14, nullptr,
     "Deg", false},
    {"lblMAF", 18, "MASS AIR FLOW", 18, 1, "MAF", GridUnit::Fixed, "gm/s", 16, nullptr, "g/s",
     false},
    {"lblLoad", 19, "CALCULATED LOAD", 1, 5, "Calculated Load", GridUnit::Fixed, "%", 4, nullptr,
     "%", false},
    {"lblMAP", 20, "MANIFOLD PRESSURE", 2, 5, "MAP", GridUnit::Map, "", 11, "Label10", "", false},
    {"lblRPM", 21, "ENGINE RPM", 3, 5, "RPM", GridUnit::Fixed, "R.P.M.", 12, nullptr, "RPM", false},
    {"lblFuelSys1", 22, "FUEL SYSTEM 1", 4, 5, "Fuel System 1", GridUnit::Fixed, "Open/Close", 3,
     nullptr, "", false},
    {"lblFuelSys2", 23, "FUEL SYSTEM 2", 5, 5, "Fuel System 2", GridUnit::Fixed, "Open/Close", 33,
     nullptr, "", false},
    {"lblFuelPres", 24, "FUEL PRESSURE", 6, 5, "Fuel Pressure", GridUnit::FuelPressure, "", 10,
     "lblPSI(0)", "", false},
    {"lblMil", 25, "MIL LIGHT", 7, 5, "MIL Light", GridUnit::Fixed, "On/OFF", 1, nullptr, "",
     false},
    {"lblNumberCodes", 26, "# OF TROUBLE CODES", 8, 5, "# Of Trouble Codes", GridUnit::None, "", 0,
     nullptr, "", false},
    {"lblSTO2B1S1", 132, "STFT O2B1S1", 9, 5, nullptr, GridUnit::Fixed, "%", 34, nullptr, "%",
     false},
    {"lblSTO2B1S2", 133, "STFT O2B1S2", 10, 5, nullptr, GridUnit::Fixed, "%", 35, nullptr, "%",
     false},
    {"lblSTO2B1S3", 134, "STFT O2B1S3", 11, 5, nullptr, GridUnit::Fixed, "%", 36, nullptr, "%",
     false},
    {"LBLSTO2B1S4", 135, "STFT O2B1S4", 12, 5, nullptr, GridUnit::Fixed, "%", 37, nullptr, "%",
     false},
    {"LBLSTO2B2S1", 136, "STFT O2B2S1", 13, 5, nullptr, GridUnit::Fixed, "%", 38, nullptr, "%",
     false},
    {"LBLSTO2B2S2", 137, "STFT O2B2S2", 14, 5, nullptr, GridUnit::Fixed, "%", 39, nullptr, "%",
     false},
    {"LBLSTO2B2S3", 138, "STFT O2B2S3", 15, 5, nullptr, GridUnit::Fixed, "%", 40, nullptr, "%",
     false},
    {"LBLSTO2B2S4", 139, "STFT O2B2S4", 16, 5, nullptr, GridUnit::Fixed, "%", 41, nullptr, "%",
     false},
    {"lblPTO", 27, "POWER TAKE OFF", 17, 5, "Power Take Off", GridUnit::Fixed, "Yes/No", 30,
     nullptr, "", false},
    {"lblAirCommand", 28, "SECONDARY AIR STATUS", 18, 5, "Air Status", GridUnit::None, "", 18,
     nullptr, "", false},
    {"lblTimeStart", 29, "TIME SINCE ENGINE START", 19, 5, "Time Engine Start", GridUnit::Fixed,
     "Sec", 31, nullptr, "Sec", false},
}};

// A value label outside tab 0 that greys with its caption on "N/A": the freeze-frame values
// (captions in Label2) and the vehicle information values (captions in Label32).
struct CaptionedLabel {
    const char* label;
    const char* captionArray;
    int captionItem;
};

inline constexpr std::array<CaptionedLabel, 22> kCaptionedLabels{{
    {"lblFFFuelSys1", "Label2", 0},     {"lblFFFuelSys2", "Label2", 1},
    {"lblFFLoad", "Label2", 2},         {"lblFFCoolant", "Label2", 3},
    {"lblFFSTFTB1", "Label2", 4},       {"lblFFLTFTB1", "Label2", 5},
    {"lblFFSTFTB2", "Label2", 6},       {"lblFFLTFTB2", "Label2", 7},
    {"lblFFFuelPres", "Label2", 8},     {"lblFFMAP", "Label2", 9},
    {"lblFFRPM", "Label2", 10},         {"lblFFSpeed", "Label2", 11},
    {"lblFFTiming", "Label2", 12},      {"lblFFIntakeAir", "Label2", 13},
    {"lblFFMAF", "Label2", 14},         {"lblFFTPS", "Label2", 15},
    {"lblWhatProtocol", "Label32", 16}, {"lblECMAddress", "Label32", 17},
    {"lblECMAddress2", "Label32", 18},  {"lblKeyword1", "Label32", 19},
    {"lblKeyword2", "Label32", 20},     {"lblOBDDesign", "Label32", 21},
}};

}  // namespace ketrel
