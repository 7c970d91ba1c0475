#include "platform/text_convert.h"

#include "platform/text_compare.h"

#include <cctype>
#include <cmath>
#include <cstdlib>

namespace ketrel {

namespace {

std::string_view trim(std::string_view s) {
    while (!s.empty() && std::isspace(static_cast<unsigned char>(s.front())))
        s.remove_prefix(1);
    while (!s.empty() && std::isspace(static_cast<unsigned char>(s.back())))
        s.remove_suffix(1);
    return s;
}

// Length of the longest decimal number at the start of s (sign, digits, point, exponent).
std::size_t numberPrefix(std::string_view s) {
    std::size_t i = 0, digits = 0;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) ++i;
    while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i]))) {
        ++i;
        ++digits;
    }
    if (i < s.size() && s[i] == '.') {
        ++i;
        while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i]))) {
            ++i;
            ++digits;
        }
    }
    if (digits == 0) return 0;
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
        std::size_t j = i + 1;
        if (j < s.size() && (s[j] == '+' || s[j] == '-')) ++j;
        std::size_t expStart = j;
        while (j < s.size() && std::isdigit(static_cast<unsigned char>(s[j])))
            ++j;
        if (j > expStart) i = j;
    }
    return i;
}

std::optional<double> hexNumber(std::string_view s) {
    if (s.size() < 3 || s[0] != '&' || (s[1] != 'H' && s[1] != 'h')) return std::nullopt;
    long long v = 0;
    for (char c : s.substr(2)) {
        if (!std::isxdigit(static_cast<unsigned char>(c)) || v > 0xFFFFFFFFLL) return std::nullopt;
        v = v * 16 + (std::isdigit(static_cast<unsigned char>(c))
                          ? c - '0'
                          : std::tolower(static_cast<unsigned char>(c)) - 'a' + 10);
    }
    return double(v);
}

}  // namespace

std::optional<double> TextToNumber(std::string_view text) {
    std::string_view s = trim(text);
    if (s.empty()) return std::nullopt;
    if (auto hex = hexNumber(s)) return hex;
    std::size_t n = numberPrefix(s);
    if (n == 0 || n != s.size()) return std::nullopt;
    double v = std::strtod(std::string(s).c_str(), nullptr);
    if (!std::isfinite(v)) return std::nullopt;
    return v;
}

std::optional<long> TextToLong(std::string_view text) {
    auto v = TextToNumber(text);
    if (!v) return std::nullopt;
    double r = std::nearbyint(*v);  // the default rounding mode rounds half to even
    if (r < -2147483648.0 || r > 2147483647.0) return std::nullopt;
    return long(r);
}

std::optional<bool> TextToBool(std::string_view text) {
    std::string_view s = trim(text);
    if (EqualsNoCase(s, "True")) return true;
    if (EqualsNoCase(s, "False")) return false;
    if (auto v = TextToNumber(s)) return *v != 0;
    return std::nullopt;
}

double Val(std::string_view text) {
    std::string compact;
    for (char c : text) {
        if (c != ' ' && c != '\t') compact += c;
    }
    std::size_t n = numberPrefix(compact);
    if (n == 0) return 0;
    return std::strtod(compact.substr(0, n).c_str(), nullptr);
}

}  // namespace ketrel

namespace ketrel {

std::string UpperCase(std::string text) {
    for (char& c : text)
        c = char(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

}  // namespace ketrel
