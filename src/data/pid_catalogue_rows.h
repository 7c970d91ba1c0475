#pragma once
#include <array>

// The texts of the PID catalogue: the description of every PID row of the four support grids,
// and the two oxygen-sensor layouts.
namespace ketrel::data {

// PIDs 01 to 20: rows of the Mode 01 and Mode 02 grids.
inline constexpr std::array<const char*, 32> kPidRows01To20{
    "TROUBLE CODES/TESTING",
    "FREEZE FRAME TROUBLE CODE",
    "FUEL SYSTEM STATUS",
    "CALCULATED LOAD VALUE",
    "COOLANT TEMPERATURE",
    "SHORT TERM FUEL TRIM BANK 1",
    "LONG TERM FUEL TRIM BANK 1",
    "SHORT TERM FUEL TRIM BANK 2",
    "LONG TERM FUEL TRIM BANK 2",
    "FUEL PRESSURE",
    "INTAKE MANIFOLD PRESSURE (MAP)",
    "ENGINE R.P.M.",
    "VEHICLE SPEED",
    "SPARK ADVANCE",
    "INTAKE AIR TEMPERATURE",
    "MASS AIRFLOW (MAF)",
    "THROTTLE POSITION",
    "SECONDARY A.I.R. STATUS",
    "OXYGEN SENSOR LOCATION",
    "OXYGEN SENSOR VOLTAGE B1S1",
    "OXYGEN SENSOR VOLTAGE B1S2",
    "OXYGEN SENSOR VOLTAGE B1S3",
    "OXYGEN SENSOR VOLTAGE B1S4",
    "OXYGEN SENSOR VOLTAGE B2S1",
    "OXYGEN SENSOR VOLTAGE B2S2",
    "OXYGEN SENSOR VOLTAGE B2S3",
    "OXYGEN SENSOR VOLTAGE B2S4",
    "DESIGN OBD REQUIREMENT",
    "ALT. OXYGEN SENSOR LOCATION",
    "AUXILLARY INPUT STATUS (PTO)",
    "TIME SINCE ENGINE START",
    "PID SUPPORTED",
};

// PIDs 21 to 40.
inline constexpr std::array<const char*, 32> kPidRows21To40{
    "DISTANCE TRAVELED MIL ON",
    "FUEL RAIL PRESSURE RELATIVE",
    "FUEL RAIL PRESSURE (HIGH)",
    "B1S1 WR O2S VOLTS",
    "B1S2 WR O2S VOLTS",
    "B1S3 WR O2S VOLTS",
    "B1S4 WR O2S VOLTS",
    "B2S1 WR O2S VOLTS",
    "B2S2 WR O2S VOLTS",
    "B2S3 WR O2S VOLTS",
    "B2S4 WR O2S VOLTS",
    "COMMANDED EGR",
    "EGR ERROR",
    "COMMANDED EVAP PURGE",
    "FUEL LEVEL INPUT",
    "# OF WARM UPS SINCE DTC CLEARED",
    "DISTANCE SINCE DTC CLEARED",
    "EVAP VAPOR PRESSURE",
    "BAROMETRIC PRESSURE",
    "B1S1 WR O2S AMP",
    "B1S2 WR O2S AMP",
    "B1S3 WR O2S AMP",
    "B1S4 WR O2S AMP",
    "B2S1 WR O2S AMP",
    "B2S2 WR O2S AMP",
    "B2S3 WR O2S AMP",
    "B2S4 WR O2S AMP",
    "CATALYST TEMP B1S1",
    "CATALYST TEMP B2S1",
    "CATALYST TEMP B1S2",
    "CATALYST TEMP B2S2",
    "PID SUPPORTED",
};

// PIDs 41 to 60.
inline constexpr std::array<const char*, 32> kPidRows41To60{
    "MONITOR STATUS DRIVING CYCLE",
    "CONTROL MODULE VOLTS",
    "ABSOLUTE LOAD VALUE",
    "COMMANDED EQUIVALENCE RATIO",
    "RELATIVE THROTTLE POSITION",
    "AMBIENT AIR TEMPERTURE",
    "ABSOLUTE THROTTLE POSITION B",
    "ABSOLUTE THROTTLE POSITION C",
    "ABSOLUTE THROTTLE POSITION D",
    "ABSOLUTE THROTTLE POSITION E",
    "ABSOLUTE THROTTLE POSITION F",
    "COMMANDED THROTTLE ACTUATOR",
    "MINUTE RUN WHILE MIL ON",
    "TIME SINCE DTC CLEARED",
    "RESERVED",
    "RESERVED",
    "RESERVED",
    "RESERVED",
    "RESERVED",
    "RESERVED",
    "RESERVED",
    "RESERVED",
    "RESERVED",
    "RESERVED",
    "RESERVED",
    "RESERVED",
    "RESERVED",
    "RESERVED",
    "RESERVED",
    "RESERVED",
    "RESERVED",
    "PID SUPPORTED",
};

// The texts of one O2 slot (PIDs 14 to 1B) under one layout.
struct O2SlotTexts {
    const char* label;  // its Label1 caption on the data tab
    const char* trim;   // the caption of its short-term trim
    const char* mode1;  // its row of the Mode 01 and Mode 02 grids (PIDs 14 to 1B)
    const char* wide;   // its row of the PID 21 to 40 grid (PIDs 24 to 2B)
    const char* menu;   // its entry in the large display menu
};

// One O2 slot: the Label1 items it names, and its texts in the two-bank and four-bank layouts.
struct O2Slot {
    int labelItem;
    int trimItem;
    O2SlotTexts twoBank;
    O2SlotTexts fourBank;
};

// Slots in PID order, 14 to 1B. The four-bank layout repeats B2S1 in the second grid row of the
// slots (PID 15 names sensor 2 of bank 1 on its label but B2S1 in the grids).
inline constexpr std::array<O2Slot, 8> kO2Slots{{
    {10,
     132,
     {"O2 BANK 1 SENSOR 1", "STFT O2B1S1", "OXYGEN SENSOR VOLTAGE B1S1", "B1S1 WR O2S VOLTS",
      "O2 SENSOR B1S1..."},
     {"O2 BANK 1 SENSOR 1", "STFT O2B1S1", "OXYGEN SENSOR VOLTAGE B1S1", "B1S1 WR O2S VOLTS",
      "O2 SENSOR B1S1..."}},
    {9,
     133,
     {"O2 BANK 1 SENSOR 2", "STFT O2B1S2", "OXYGEN SENSOR VOLTAGE B1S2", "B1S2 WR O2S VOLTS",
      "O2 SENSOR B1S2..."},
     {"O2 BANK 1 SENSOR 2", "STFT O2B1S2", "OXYGEN SENSOR VOLTAGE B2S1", "B2S1 WR O2S VOLTS",
      "O2 SENSOR B1S2..."}},
    {8,
     134,
     {"O2 BANK 1 SENSOR 3", "STFT O2B1S3", "OXYGEN SENSOR VOLTAGE B1S3", "B1S3 WR O2S VOLTS",
      "O2 SENSOR B1S3..."},
     {"O2 BANK 2 SENSOR 1", "STFT O2B2S1", "OXYGEN SENSOR VOLTAGE B2S1", "B2S1 WR O2S VOLTS",
      "O2 SENSOR B2S1..."}},
    {7,
     135,
     {"O2 BANK 1 SENSOR 4", "STFT O2B1S4", "OXYGEN SENSOR VOLTAGE B1S4", "B1S4 WR O2S VOLTS",
      "O2 SENSOR B1S4..."},
     {"O2 BANK 2 SENSOR 2", "STFT O2B2S2", "OXYGEN SENSOR VOLTAGE B2S2", "B2S2 WR O2S VOLTS",
      "O2 SENSOR B2S2..."}},
    {6,
     136,
     {"O2 BANK 2 SENSOR 1", "STFT O2B2S1", "OXYGEN SENSOR VOLTAGE B2S1", "B2S1 WR O2S VOLTS",
      "O2 SENSOR B2S1..."},
     {"O2 BANK 3 SENSOR 1", "STFT O2B3S1", "OXYGEN SENSOR VOLTAGE B3S1", "B3S1 WR O2S VOLTS",
      "O2 SENSOR B3S1..."}},
    {5,
     137,
     {"O2 BANK 2 SENSOR 2", "STFT O2B2S2", "OXYGEN SENSOR VOLTAGE B2S2", "B2S2 WR O2S VOLTS",
      "O2 SENSOR B2S2..."},
     {"O2 BANK 3 SENSOR 2", "STFT O2B3S2", "OXYGEN SENSOR VOLTAGE B3S2", "B3S2 WR O2S VOLTS",
      "O2 SENSOR B3S2..."}},
    {4,
     138,
     {"O2 BANK 2 SENSOR 3", "STFT O2B2S3", "OXYGEN SENSOR VOLTAGE B2S3", "B2S3 WR O2S VOLTS",
      "O2 SENSOR B2S3..."},
     {"O2 BANK 4 SENSOR 1", "STFT O2B4S1", "OXYGEN SENSOR VOLTAGE B4S1", "B4S1 WR O2S VOLTS",
      "O2 SENSOR B4S1..."}},
    {3,
     139,
     {"O2 BANK 2 SENSOR 4", "STFT O2B2S4", "OXYGEN SENSOR VOLTAGE B2S4", "B2S4 WR O2S VOLTS",
      "O2 SENSOR B2S4..."},
     {"O2 BANK 4 SENSOR 2", "STFT O2B4S2", "OXYGEN SENSOR VOLTAGE B4S2", "B4S2 WR O2S VOLTS",
      "O2 SENSOR B4S2..."}},
}};

}  // namespace ketrel::data
