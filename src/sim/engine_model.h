#pragma once
#include <cstdint>
#include <optional>
#include <vector>

namespace ketrel::sim {

// How the simulated engine behaves over time: it idles first, then drives a repeating cycle
// (pull away, cruise, slow down, stop), and its coolant warms from the ambient temperature.
struct EngineProfile {
    double ambientC = 20.0;      // air and coolant temperature at start
    double operatingC = 90.0;    // coolant temperature once warm
    double warmupSeconds = 300;  // time to about 95 % of the way to operating temperature
    double idleRpm = 750;        // steady idle speed
    double idleSeconds = 20;     // idling before the first drive cycle
    double cruiseKph = 60;       // speed of the cruise part of a cycle
    double displacementL = 2.0;  // for the air flow
    double longTermTrim = 2.3;   // long-term fuel trim, %
    double fuelLevel = 62;       // %
    double batteryVolts = 14.1;  // module supply with the engine running
    double baroKpa = 101;
};

// The engine's values at one moment, in physical units.
struct EngineState {
    double seconds = 0;  // since the engine started
    double rpm = 0, kph = 0, coolantC = 0, intakeC = 0;
    double loadPct = 0, throttlePct = 0, mafGps = 0, mapKpa = 0, timingDeg = 0;
    double o2Upstream = 0.45, o2Downstream = 0.65;  // volts
    double shortTrim = 0, longTrim = 0;             // %
    bool closedLoop = false;
};

// The engine's values `seconds` after it started, by the profile.
EngineState EngineAt(const EngineProfile& profile, double seconds);

// What a Mode 01 or 02 answer needs beside the engine: the module's own state.
struct PidContext {
    const EngineProfile* profile = nullptr;
    bool mil = false;
    int storedCount = 0;
    std::uint8_t monitors[3] = {0x07, 0x65, 0x00};  // bytes B, C, D of PID 01
    std::uint8_t obdStandard = 0x01;                // PID 1C
    std::uint8_t o2Present = 0x33;                  // PID 13: sensor bits
    double distanceSinceClearKm = 1500;
    double distanceMilKm = 0;
    int warmupsSinceClear = 12;
};

// Data bytes of a PID answer (after mode and PID), with the standard scaling; nothing for a
// PID the model does not know. The support bitmaps are not made here.
std::optional<std::vector<std::uint8_t>> EncodePid(int pid, const EngineState& state,
                                                   const PidContext& context);

// Number of data bytes the standard gives a Mode 01 PID, 0 for one it does not define.
int PidDataSize(int pid);

}  // namespace ketrel::sim
