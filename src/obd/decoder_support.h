#pragma once
#include <optional>
#include <string>

#include "obd/number_text.h"
#include "state/app.h"

// Pieces shared by the value decoders: byte access, the choice of live or freeze-frame field,
// the scale constants and the unit conversions.
namespace ketrel::decode {

// Scale constants, kept with exactly these digits.
inline constexpr double kPercent = 0.3922;
inline constexpr double kTrim = 0.7812;
inline constexpr double kO2Volts = 0.005;
inline constexpr double kKpaToPsi = 0.14504;
inline constexpr double kKpaToInHg = 0.29613;
inline constexpr double kPaToInH2O = 0.00401;
inline constexpr double kKmToMiles = 0.621;
inline constexpr double kWideRangeRatio = 0.0000305;
inline constexpr double kWideRangeVolts = 0.000122;
inline constexpr double kWideRangeAmps = 0.00390625;

// Data byte n (1 to 4) is absent from the reply.
inline bool Missing(const App& app, int n) {
    return !app.ByteValue[std::size_t(n)].has_value();
}
// Data byte n as a number; an absent byte counts as 0.
inline double Byte(const App& app, int n) {
    return app.ByteValue[std::size_t(n)].value_or(0);
}
// Bytes n and n+1 as one 16-bit number.
inline double Word(const App& app, int n) {
    return Byte(app, n) * 256 + Byte(app, n + 1);
}
inline bool FreezeFrame(const App& app) {
    return app.RxMode == "02";
}

// The text of a value, or nothing when the unit setting is not one the decoder knows, which
// leaves the field as it was.
using ValueText = std::optional<std::string> (*)(const App& app, double value);

// Writes a text unless there is none.
inline void Write(Field& field, const std::optional<std::string>& text) {
    if (text) field.setText(*text);
}

// "N/A" into the field of the reply's mode: the live field on "01", the freeze-frame one on
// "02"; nothing on other modes.
inline void NotAvailable(const App& app, Field& live, Field* freeze) {
    if (app.RxMode == "01") live.setText("N/A");
    if (app.RxMode == "02" && freeze) freeze->setText("N/A");
}

// A value with a live and a freeze-frame field, from `bytes` data bytes (1: A, 2: A * 256 + B).
inline void LiveOrFreeze(App& app, Field& live, Field& freeze, int bytes, ValueText text) {
    for (int n = 1; n <= bytes; ++n) {
        if (Missing(app, n)) {
            NotAvailable(app, live, &freeze);
            return;
        }
    }
    double value = bytes == 1 ? Byte(app, 1) : Word(app, 1);
    Write(FreezeFrame(app) ? freeze : live, text(app, value));
}

// A value with one field whatever the mode, from `bytes` data bytes.
inline void OneField(App& app, Field& field, int bytes, ValueText text) {
    for (int n = 1; n <= bytes; ++n) {
        if (Missing(app, n)) {
            field.setText("N/A");
            return;
        }
    }
    double value = bytes == 1 ? Byte(app, 1) : Word(app, 1);
    Write(field, text(app, value));
}

// Celsius in the unit setting: Fahrenheit through fix0, Celsius as `plain` (its native form).
inline std::optional<std::string> TemperatureText(const App& app, double celsius) {
    if (app.Temp == "F") return fix0(celsius * 1.8 + 32);
    if (app.Temp == "C") return plain(celsius);
    return std::nullopt;
}
// Celsius in the unit setting, fix0 both ways.
inline std::optional<std::string> TemperatureFix0(const App& app, double celsius) {
    if (app.Temp == "F") return fix0(celsius * 1.8 + 32);
    if (app.Temp == "C") return fix0(celsius);
    return std::nullopt;
}
// Kilometres (or km/h) in the unit setting; the converted form through fix0.
inline std::optional<std::string> DistanceText(const App& app, double km, bool kmAsPlain) {
    if (app.Speed == "KPH") return kmAsPlain ? plain(km) : fix0(km);
    if (app.Speed == "MPH") return fix0(km * kKmToMiles);
    return std::nullopt;
}

}  // namespace ketrel::decode
