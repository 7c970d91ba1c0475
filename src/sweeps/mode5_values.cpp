#include "sweeps/mode5_values.h"

#include <array>
#include <cctype>
#include <cstdlib>

#include "obd/number_text.h"

namespace ketrel {

namespace {

// A range of the maker's test ids and how its bytes read: factor, decimals of the value and of
// the limits (-1: a plain count), and the unit behind the limits.
struct IdRange {
    int first, last;
    double factor;
    int valueDecimals, limitDecimals;
    const char* unit;
};
constexpr std::array<IdRange, 6> kRanges{{
    {0x21, 0x2F, 0.004, 3, 3, " Secs"},
    {0x30, 0x3F, 0.04, 2, 2, " Secs"},
    {0x41, 0x4F, 0.005, 3, 3, " V"},
    {0x50, 0x5F, 0.05, 2, 1, " V"},
    {0x61, 0x6F, 0.1, 1, 1, " Hz"},
    {0x70, 0x7F, 1, -1, -1, " Cnts"},
}};

std::string scaled(int byte, double factor, int decimals) {
    return decimals < 0 ? std::to_string(byte) : fixed(byte * factor, decimals);
}

}  // namespace

double TextNumber(const std::string& text) {
    std::size_t i = 0;
    while (i < text.size() && text[i] == ' ')
        ++i;
    std::string number;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) number += text[i++];
    bool point = false;
    for (; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '.' && !point) {
            point = true;
        } else if (!std::isdigit(static_cast<unsigned char>(c))) {
            break;
        }
        number += c;
    }
    return std::strtod(number.c_str(), nullptr);
}

std::string HexNumber(int value) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    if (value <= 0) return "0";
    std::string out;
    for (unsigned v = unsigned(value); v != 0; v /= 16)
        out.insert(out.begin(), kDigits[v % 16]);
    return out;
}

ManufRowTexts ManufRow(int testId, int value, int minimum, int maximum) {
    for (const IdRange& r : kRanges) {
        if (testId < r.first || testId > r.last) continue;
        ManufRowTexts t;
        t.test = scaled(value, r.factor, r.valueDecimals);
        t.minimum = scaled(minimum, r.factor, r.limitDecimals) + r.unit;
        t.maximum = scaled(maximum, r.factor, r.limitDecimals) + r.unit;
        const double v = TextNumber(t.test);
        t.verdict = TextNumber(t.minimum) <= v && v <= TextNumber(t.maximum) ? "PASS" : "FAIL";
        return t;
    }
    return {"*", "*", "*", "*"};
}

}  // namespace ketrel
