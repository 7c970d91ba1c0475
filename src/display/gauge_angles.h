#pragma once
#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace ketrel {

// ---- The tachometer of "RPM GAUGES"

// One scale of the tachometer: the band limits, the bar width factor and the scale numbers.
struct RpmGaugeScale {
    const char* scale;  // GaugeScale: "1", "2" or "3"
    const char* menu;   // the menu entry's caption
    long t1, t2, t3;
    int k;
    std::array<const char*, 11> numbers;  // Label1(12) to Label1(22)
};
// The scale that GaugeScale names; the large scale for any other text.
const RpmGaugeScale& FindRpmGaugeScale(const std::string& scale);

// The three bars and the readout's colour for an RPM on a scale. Widths in twips.
struct RpmBars {
    bool midShown = false, highShown = false;
    int low = 0, mid = 0, high = 0;
    std::int64_t color = 0;
};
RpmBars RpmGaugeBars(long rpm, const RpmGaugeScale& scale);

// The needle angle in radians for an RPM of 1 to 11000: half a radian per thousand from 1.71,
// the thousands from a table and the rest from the last three digits of the number's text.
double RpmGaugeAngle(long rpm);

// ---- The five dials of "MULTIPLE GAUGES"

enum class Dial { Rpm, FuelPressure, Speed, IntakeAir, Coolant };

// The text a dial works on, in PSI, MPH and degrees F whatever the unit setting (the readout
// shows it): V converted and rounded to a whole number where the setting is metric.
std::string DialText(Dial dial, double v, const std::string& unitSetting);
// The text clamped to the dial's range.
std::string DialClamp(Dial dial, const std::string& t);
// The needle angle in radians for a clamped text; nothing where the dial's bands leave a gap
// (the needle stays where it was).
std::optional<double> DialAngle(Dial dial, const std::string& t);
// The angles of the nine ticks of a dial, bottom to top.
std::array<double, 9> DialTicks(Dial dial);

}  // namespace ketrel
