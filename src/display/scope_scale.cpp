#include "display/scope_scale.h"

#include "platform/text_convert.h"

namespace ketrel {

namespace {

constexpr std::array<const char*, 6> kPercent{"0 -", "20 -", "40 -", "60 -", "80 -", "100 -"};
constexpr std::array<const char*, 6> kByte{"0 -", "51 -", "102 -", "153 -", "204 -", "255 -"};
constexpr std::array<const char*, 6> kVolts{"0.000 -", ".200 -", ".400 -",
                                            ".600 -",  ".800 -", "1.000 -"};

// Each PID the scope draws, once per unit setting where the scale depends on it. The unit
// column is "" where none matters.
struct Row {
    const char* unit;
    ScopeScale scale;
};
constexpr Row kRows[] = {
    {"", {17, "THROTTLE POSITION", ScopeRule::Percent, kPercent, "-Percent-"}},
    {"", {4, "CALCULATED LOAD", ScopeRule::Percent, kPercent, "-Percent-"}},
    {"",
     {14,
      "SPARK ADVANCE",
      ScopeRule::Spark,
      {"-64 -", "-38 -", "-13 -", "13 -", "38 -", "64 -"},
      "-Deg-"}},
    {"",
     {16, "MAF", ScopeRule::Maf, {"0 -", "131 -", "262 -", "393 -", "524 -", "655 -"}, "-gm/Sec-"}},
    {"PSI",
     {11, "MAP", ScopeRule::MapPsi, {"0 -", "15 -", "30 -", "45 -", "60 -", "75 -"}, "-In/Hg-"}},
    {"kPa", {11, "MAP", ScopeRule::MapKpa, kByte, "-kPa-"}},
    {"",
     {12,
      "RPM",
      ScopeRule::Rpm,
      {"0 -", "2000 -", "4000 -", "6000 -", "8000 -", "10000 -"},
      "-RPM-"}},
    {"MPH",
     {13,
      "VEHICLE SPEED",
      ScopeRule::SpeedMph,
      {"0 -", "32 -", "64 -", "96 -", "128 -", "160 -"},
      "-MPH-"}},
    {"KPH", {13, "VEHICLE SPEED", ScopeRule::SpeedKph, kByte, "-KPH-"}},
    {"PSI",
     {10,
      "FUEL PRESSURE",
      ScopeRule::FuelPsi,
      {"0 -", "22 -", "44 -", "66 -", "88 -", "110 -"},
      "-PSI-"}},
    {"kPa",
     {10,
      "FUEL PRESSURE",
      ScopeRule::FuelKpa,
      {"0 -", "160 -", "320 -", "480 -", "640 -", "800 -"},
      "-kPa-"}},
};

// The O2 entries by PID 20 to 27: bank and sensor without PID 1D, and with it.
constexpr const char* kO2Plain[8] = {"B1S1", "B1S2", "B1S3", "B1S4",
                                     "B2S1", "B2S2", "B2S3", "B2S4"};
constexpr const char* kO2Alt[8] = {"B1S1", "B1S2", "B2S1", "B2S2", "B3S1", "B3S2", "B4S1", "B4S2"};

bool isO2(int pid) {
    return pid >= kScopeFirstO2 && pid < kScopeFirstO2 + 8;
}

// One scale per O2 PID, named without PID 1D.
const ScopeScale* o2Scale(int pid) {
    static const std::array<ScopeScale, 8> scales = [] {
        static std::array<std::string, 8> names;
        std::array<ScopeScale, 8> v{};
        for (int i = 0; i < 8; ++i) {
            names[std::size_t(i)] = ScopeO2Name(kScopeFirstO2 + i, false);
            v[std::size_t(i)] = {kScopeFirstO2 + i, names[std::size_t(i)].c_str(), ScopeRule::O2,
                                 kVolts, "-Volts-"};
        }
        return v;
    }();
    return &scales[std::size_t(pid - kScopeFirstO2)];
}

}  // namespace

const ScopeScale* FindScopeScale(int pid, const std::string& pressure, const std::string& speed) {
    if (isO2(pid)) return o2Scale(pid);
    for (const Row& r : kRows) {
        if (r.scale.pid != pid) continue;
        const std::string& setting = pid == 13 ? speed : pressure;
        if (r.unit[0] == '\0' || setting == r.unit) return &r.scale;
    }
    return nullptr;
}

double ScopeScaleValue(ScopeRule rule, const std::string& text) {
    const double v = Val(text);
    switch (rule) {
        case ScopeRule::Percent:
            return v * 2.5;
        case ScopeRule::Spark:
            return (v + 64) * 1.95;
        case ScopeRule::Maf:
            return v * 0.38;
        case ScopeRule::MapPsi:
            return v * 3.33;
        case ScopeRule::MapKpa:
        case ScopeRule::SpeedKph:
            return v;
        case ScopeRule::Rpm:
            return v / 40;
        case ScopeRule::SpeedMph:
            return v * 1.56;
        case ScopeRule::FuelPsi:
            return v * 2.27;
        case ScopeRule::FuelKpa:
            return v / 3.2;
        case ScopeRule::O2:
            if (v >= 1.0) return v * 1000 / 4;
            return Val(text.size() > 3 ? text.substr(text.size() - 3) : text) / 4;
    }
    return 0;
}

std::string ScopeO2Name(int pid, bool pid1D) {
    const int i = pid - kScopeFirstO2;
    if (i < 0 || i >= 8) return {};
    return pid1D ? std::string("*O2 ") + kO2Alt[i] + "*" : std::string("O2 ") + kO2Plain[i];
}

std::string ScopeO2Caption(int pid, bool pid1D) {
    const int i = pid - kScopeFirstO2;
    if (i < 0 || i >= 8) return {};
    return std::string("O2 Sensor ") + (pid1D ? kO2Alt[i] : kO2Plain[i]) + "...";
}

std::string ScopePidName(int pid, bool pid1D) {
    if (isO2(pid)) return ScopeO2Name(pid, pid1D);
    for (const Row& r : kRows)
        if (r.scale.pid == pid) return r.scale.name;
    return {};
}

std::optional<int> ScopePidByName(const std::string& name) {
    for (const Row& r : kRows)
        if (name == r.scale.name) return r.scale.pid;
    for (int pid = kScopeFirstO2; pid < kScopeFirstO2 + 8; ++pid)
        if (name == ScopeO2Name(pid, false) || name == ScopeO2Name(pid, true)) return pid;
    return std::nullopt;
}

std::optional<std::size_t> ScopeSpeedIndex(const std::string& caption) {
    for (std::size_t i = 0; i < kScopeSpeeds.size(); ++i)
        if (caption == kScopeSpeeds[i].caption) return i;
    return std::nullopt;
}

}  // namespace ketrel
