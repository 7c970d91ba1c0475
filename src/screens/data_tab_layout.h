#pragma once
#include <array>

namespace ketrel {

// One live value of the data tab: its label, the Label1 item of its caption, the caption,
// and its cell in GridData (grid style).
struct DataTabRow {
    const char* label;
    int captionItem;
    const char* caption;
    int gridRow;
    int gridCol;
};

// The value labels of tab 0 in grid order: left block (column 1) rows 1 to 18, right block
// (column 5) rows 1 to 19. The O2 captions are rewritten by the PID catalogue.
inline constexpr std::array<DataTabRow, 37> kDataTabRows{{
    {"lblCoolant", 0, "COOLANT TEMP", 1, 1},
    {"lblIntakeAir", 1, "INTAKE AIR TEMP", 2, 1},
    {"lblO2b1s1", 10, "O2 BANK 1 SENSOR 1", 3, 1},
    {"lblO2b1s2", 9, "O2 BANK 1 SENSOR 2", 4, 1},
    {"lblO2b1s3", 8, "O2 BANK 1 SENSOR 3", 5, 1},
    {"lblO2b1s4", 7, "O2 BANK 1 SENSOR 4", 6, 1},
    {"lblO2b2s1", 6, "O2 BANK 2 SENSOR 1", 7, 1},
    {"lblO2b2s2", 5, "O2 BANK 2 SENSOR 2", 8, 1},
    {"lblO2b2s3", 4, "O2 BANK 2 SENSOR 3", 9, 1},
    {"lblO2b2s4", 3, "O2 BANK 2 SENSOR 4", 10, 1},
    {"lblLTB1", 11, "LONG TERM FUEL TRIM B1", 11, 1},
    {"lblSTB1", 12, "SHORT TERM FUEL TRIM B1", 12, 1},
    {"lblLTB2", 13, "LONG TERM FUEL TRIM B2", 13, 1},
    {"lblSTB2", 14, "SHORT TERM FUEL TRIM B2", 14, 1},
    {"lblTps", 15, "THROTTLE POSITION", 15, 1},
    {"lblSpeed", 16, "VEHICLE SPEED", 16, 1},
    {"lblTiming", 17, "SPARK ADVANCE", 17, 1},
    {"lblMAF", 18, "MASS AIR FLOW", 18, 1},
    {"lblLoad", 19, "CALCULATED LOAD", 1, 5},
    {"lblMAP", 20, "MANIFOLD PRESSURE", 2, 5},
    {"lblRPM", 21, "ENGINE RPM", 3, 5},
    {"lblFuelSys1", 22, "FUEL SYSTEM 1", 4, 5},
    {"lblFuelSys2", 23, "FUEL SYSTEM 2", 5, 5},
    {"lblFuelPres", 24, "FUEL PRESSURE", 6, 5},
    {"lblMil", 25, "MIL LIGHT", 7, 5},
    {"lblNumberCodes", 26, "# OF TROUBLE CODES", 8, 5},
    {"lblSTO2B1S1", 132, "STFT O2B1S1", 9, 5},
    {"lblSTO2B1S2", 133, "STFT O2B1S2", 10, 5},
    {"lblSTO2B1S3", 134, "STFT O2B1S3", 11, 5},
    {"LBLSTO2B1S4", 135, "STFT O2B1S4", 12, 5},
    {"LBLSTO2B2S1", 136, "STFT O2B2S1", 13, 5},
    {"LBLSTO2B2S2", 137, "STFT O2B2S2", 14, 5},
    {"LBLSTO2B2S3", 138, "STFT O2B2S3", 15, 5},
    {"LBLSTO2B2S4", 139, "STFT O2B2S4", 16, 5},
    {"lblPTO", 27, "POWER TAKE OFF", 17, 5},
    {"lblAirCommand", 28, "SECONDARY AIR STATUS", 18, 5},
    {"lblTimeStart", 29, "TIME SINCE ENGINE START", 19, 5},
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
