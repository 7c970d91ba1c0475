#include "obd/number_text.h"

#include <charconv>
#include <cmath>

namespace ketrel {

std::string plain(double x) {
    if (x == 0) return "0";  // also for -0
    char buf[64];
    auto res = std::to_chars(buf, buf + sizeof buf, x, std::chars_format::general, 15);
    return std::string(buf, res.ptr);
}

std::string fixed(double x, int decimals) {
    static constexpr double kScale[] = {1, 10, 100, 1000};
    if (decimals < 0) decimals = 0;
    if (decimals > 3) decimals = 3;
    double scaled = x * kScale[decimals];
    if (!std::isfinite(scaled) || std::fabs(scaled) >= 1e17) {
        char buf[512];
        auto res = std::to_chars(buf, buf + sizeof buf, x, std::chars_format::fixed, decimals);
        return std::string(buf, res.ptr);
    }
    // Round the 15-digit decimal form, so that 1.005 (held as 1.00499...) gives "1.01".
    char buf[64];
    auto res = std::to_chars(buf, buf + sizeof buf, scaled, std::chars_format::general, 15);
    double decimal = scaled;
    std::from_chars(buf, res.ptr, decimal);
    auto units = static_cast<long long>(std::llround(decimal));
    bool negative = units < 0;
    std::string digits = std::to_string(negative ? -units : units);
    if (decimals > 0) {
        if (digits.size() <= std::size_t(decimals))
            digits.insert(0, std::size_t(decimals) + 1 - digits.size(), '0');
        digits.insert(digits.size() - std::size_t(decimals), 1, '.');
    }
    return negative ? "-" + digits : digits;
}

}  // namespace ketrel
