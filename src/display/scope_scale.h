#pragma once
#include <array>
#include <optional>
#include <string>

namespace ketrel {

// How the scope turns a value into its scale of 0 to 254.
enum class ScopeRule {
    Percent,
    Spark,
    Maf,
    MapPsi,
    MapKpa,
    Rpm,
    SpeedMph,
    SpeedKph,
    FuelPsi,
    FuelKpa,
    O2
};

// One way of drawing a PID: its name on the scope, the scale rule, the six captions of the
// scale from the bottom up and the units caption.
struct ScopeScale {
    int pid;
    const char* name;
    ScopeRule rule;
    std::array<const char*, 6> captions;
    const char* units;
};

// The scale of a PID under the unit settings; nothing for a PID the scope does not draw or a
// unit setting it has no scale for. For the O2 PIDs the name is the one without PID 1D.
const ScopeScale* FindScopeScale(int pid, const std::string& pressure, const std::string& speed);

// The scale value of a value field's text by the rule. For the O2 sensors, a reading under
// 1 volt is read from the last three characters of the text: "0.450" gives 112.5.
double ScopeScaleValue(ScopeRule rule, const std::string& text);

// PIDs 20 to 27 (decimal, as PidWanted counts) are the eight O2 entries in order.
inline constexpr int kScopeFirstO2 = 20;
// The name of an O2 entry on the scope, and its menu caption: starred names for the bank
// layout of PID 1D when the car supports it.
std::string ScopeO2Name(int pid, bool pid1D);
std::string ScopeO2Caption(int pid, bool pid1D);

// The name lblScopePID shows for a PID the scope draws, whatever the units; "" for others.
std::string ScopePidName(int pid, bool pid1D);

// The PID that a name of lblScopePID stands for; nothing for "-SELECT-" or any other text.
std::optional<int> ScopePidByName(const std::string& name);

// The sampling speeds, slowest first, and the sample period in ms of each.
struct ScopeSpeed {
    const char* caption;
    int periodMs;
};
inline constexpr std::array<ScopeSpeed, 6> kScopeSpeeds{
    {{".25x", 300}, {".50x", 150}, {"1x", 75}, {"2x", 38}, {"4x", 19}, {"8x", 9}}};
// The position of a speed caption in the row; nothing when it is not one.
std::optional<std::size_t> ScopeSpeedIndex(const std::string& caption);

}  // namespace ketrel
