#include "display/gauge_angles.h"

#include "obd/number_text.h"
#include "platform/text_convert.h"

namespace ketrel {

namespace {

constexpr RpmGaugeScale kRpmScales[] = {
    {"1",
     "Large Scale",
     4000,
     9000,
     11000,
     1,
     {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11"}},
    {"2", "Mid Scale", 2000, 4500, 5500, 2, {"", "1", "", "2", "", "3", "", "4", "", "5", ""}},
    {"3", "Small Scale", 1000, 2250, 2750, 4, {"", "", "", "1", "", "", "", "2", "", "", ""}},
};

// Full widths of the three bars, in twips.
constexpr int kLowFull = 4030, kMidFull = 5060, kHighFull = 2060;
constexpr std::int64_t kGreen = 0x00FF00, kYellow = 0xFFFF00, kRed = 0xFF0000;

// The tachometer's angle at each whole thousand, 0 to 11.
constexpr std::array<double, 12> kRpmGaugeBase{1.71, 2.21, 2.71, 3.21, 3.71, 4.21,
                                               4.71, 5.21, 5.71, 6.21, 6.71, 7.21};

// A band of a small dial: L (or V) in [from, to] gives (V - low) / d + base.
enum class Test { VBelow, LBelow, LRange };
struct Band {
    Test test;
    double from, to;
    double low, base;
    bool valueAsZero;
};

constexpr Band kFuelSpeedBands[] = {
    {Test::VBelow, 15, 0, 0, 2.36, false},     {Test::LRange, 15, 29, 15, 2.95, false},
    {Test::LRange, 30, 30, 30, 3.52, false},   {Test::LRange, 45, 59, 45, 4.15, false},
    {Test::LRange, 60, 74, 60, 4.72, false},   {Test::LRange, 75, 89, 75, 5.32, false},
    {Test::LRange, 90, 104, 90, 5.92, false},  {Test::LRange, 105, 119, 105, 6.49, false},
    {Test::LRange, 120, 120, 120, 7.07, false}};
constexpr Band kIntakeBands[] = {
    {Test::LBelow, 0, 0, 0, 2.36, true},        {Test::LRange, 0, 25, 0, 2.36, false},
    {Test::LRange, 25, 49, 25, 2.95, false},    {Test::LRange, 50, 74, 50, 3.52, false},
    {Test::LRange, 75, 99, 75, 4.15, false},    {Test::LRange, 100, 124, 100, 4.72, false},
    {Test::LRange, 125, 149, 125, 5.32, false}, {Test::LRange, 150, 174, 150, 5.92, false},
    {Test::LRange, 175, 199, 175, 6.49, false}, {Test::LRange, 200, 200, 200, 7.07, false}};
constexpr Band kCoolantBands[] = {
    {Test::LBelow, 100, 0, 0, 2.36, true},      {Test::LRange, 100, 124, 100, 2.36, false},
    {Test::LRange, 125, 149, 125, 2.95, false}, {Test::LRange, 150, 174, 150, 3.52, false},
    {Test::LRange, 175, 199, 175, 4.15, false}, {Test::LRange, 200, 224, 200, 4.72, false},
    {Test::LRange, 225, 249, 225, 5.32, false}, {Test::LRange, 250, 274, 250, 5.92, false},
    {Test::LRange, 275, 299, 275, 6.49, false}, {Test::LRange, 300, 300, 300, 7.07, false}};

// The RPM dial's base by the first digit of a value of 1000 or more.
constexpr std::array<double, 9> kRpmDialBase{0, 2.95, 3.52, 4.15, 4.72, 5.32, 5.92, 6.59, 7.07};

std::string lastChars(const std::string& t, std::size_t n) {
    return t.size() > n ? t.substr(t.size() - n) : t;
}

template <std::size_t N>
std::optional<double> bandAngle(const Band (&bands)[N], double d, const std::string& t) {
    const double v = Val(t);
    const double l = Val(t.substr(0, 3));
    for (const Band& b : bands) {
        const bool in = b.test == Test::VBelow   ? v < b.from
                        : b.test == Test::LBelow ? l < b.from
                                                 : l >= b.from && l <= b.to;
        if (in) return ((b.valueAsZero ? 0 : v) - b.low) / d + b.base;
    }
    return std::nullopt;
}

}  // namespace

const RpmGaugeScale& FindRpmGaugeScale(const std::string& scale) {
    for (const RpmGaugeScale& s : kRpmScales)
        if (scale == s.scale) return s;
    return kRpmScales[0];
}

RpmBars RpmGaugeBars(long rpm, const RpmGaugeScale& s) {
    RpmBars b;
    if (rpm < s.t1) {
        b.low = int(rpm * s.k);
        b.color = kGreen;
    } else if (rpm <= s.t2 - 1) {
        b.low = kLowFull;
        b.midShown = true;
        b.mid = int((rpm - s.t1) * s.k);
        b.color = kYellow;
    } else if (rpm <= s.t3) {
        b.low = kLowFull;
        b.midShown = b.highShown = true;
        b.mid = kMidFull;
        b.high = int((rpm - s.t2) * s.k);
        b.color = kRed;
    } else {
        b.low = kLowFull;
        b.midShown = b.highShown = true;
        b.mid = kMidFull;
        b.high = kHighFull;
        b.color = kRed;
    }
    return b;
}

double RpmGaugeAngle(long rpm) {
    const std::string digits = std::to_string(rpm);
    std::string fraction;
    if (rpm >= 100)
        fraction = "." + lastChars(digits, 3);
    else if (rpm >= 10)
        fraction = ".0" + digits;
    else
        fraction = ".00" + digits;
    const long thousands = rpm / 1000;
    if (thousands < 0 || thousands >= long(kRpmGaugeBase.size())) return kRpmGaugeBase.back();
    return Val(fraction) / 2 + kRpmGaugeBase[std::size_t(thousands)];
}

std::string DialText(Dial dial, double v, const std::string& unit) {
    if (dial == Dial::FuelPressure && unit == "kPa") return fix0(v * 0.14504);
    if (dial == Dial::Speed && unit == "KPH") return fix0(v * 0.621);
    if ((dial == Dial::IntakeAir || dial == Dial::Coolant) && unit == "C")
        return fix0(v * 1.8 + 32);
    return plain(v);
}

std::string DialClamp(Dial dial, const std::string& t) {
    const double v = Val(t);
    switch (dial) {
        case Dial::Rpm:
            return v >= 8000 ? "8000" : t;
        case Dial::FuelPressure:
        case Dial::Speed:
            return v >= 120 ? "120" : t;
        case Dial::IntakeAir:
            return v >= 200 ? "200" : v < 0 ? "0" : t;
        case Dial::Coolant:
            return v >= 300 ? "300" : v <= 100 ? "100" : t;
    }
    return t;
}

std::optional<double> DialAngle(Dial dial, const std::string& t) {
    switch (dial) {
        case Dial::FuelPressure:
        case Dial::Speed:
            return bandAngle(kFuelSpeedBands, 25, t);
        case Dial::IntakeAir:
            return bandAngle(kIntakeBands, 42, t);
        case Dial::Coolant:
            return bandAngle(kCoolantBands, 42, t);
        case Dial::Rpm: {
            const double f = Val("." + lastChars(t, 3));
            if (Val(t) < 1000) return f / 1.9 + 2.36;
            const int first = int(Val(t.substr(0, 1)));
            if (first < 1 || first > 8) return std::nullopt;
            return f / 1.9 + kRpmDialBase[std::size_t(first)];
        }
    }
    return std::nullopt;
}

std::array<double, 9> DialTicks(Dial dial) {
    if (dial == Dial::Rpm) {
        std::array<double, 9> v{2.36};
        for (std::size_t i = 1; i < 9; ++i)
            v[i] = kRpmDialBase[i];
        return v;
    }
    return {2.36, 2.95, 3.52, 4.15, 4.72, 5.32, 5.92, 6.49, 7.07};
}

}  // namespace ketrel
