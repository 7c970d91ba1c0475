#pragma once
#include <optional>
#include <string>
#include <string_view>

namespace ketrel {

// Conversions of stored text to numbers and Booleans with the rules the settings rely on:
// a conversion either succeeds with the whole text or fails, and a failure leaves the
// variable it was meant for as it was.

// A decimal number ("12", " -3.5 ", "1e3") or "&H" hex; nothing for "" or junk.
std::optional<double> TextToNumber(std::string_view text);
// A whole number, rounded half to even; nothing on junk or when it overflows 32 bits.
std::optional<long> TextToLong(std::string_view text);
// "True"/"False" in any case, or a number (non-zero is True); nothing on junk.
std::optional<bool> TextToBool(std::string_view text);
// The numeric prefix of the text, spaces ignored; 0 when there is none ("abc", "").
double Val(std::string_view text);

}  // namespace ketrel

namespace ketrel {

// Assigns the converted text when the conversion works; otherwise the variable keeps its value.
template <class T, class Convert>
void readInto(T& variable, const std::string& text, Convert convert) {
    if (auto v = convert(text)) variable = static_cast<T>(*v);
}

// The text in upper case (ASCII), as the status bar shows measurements.
std::string UpperCase(std::string text);

}  // namespace ketrel
