#pragma once
#include <string>

namespace ketrel {

// Number texts of the value fields. Every other display parses these back, so they never
// depend on the locale: '.' is the decimal mark and there is no thousands separator.

// The shortest decimal text of the number, up to 15 significant digits: 240 gives "240",
// 25.5 gives "25.5".
std::string plain(double x);

// Fixed-point text with `decimals` places (0 to 3), rounded half away from zero on the
// number's 15-digit decimal form, a leading minus for values that stay negative once rounded.
std::string fixed(double x, int decimals);

inline std::string fix0(double x) {
    return fixed(x, 0);
}
inline std::string fix1(double x) {
    return fixed(x, 1);
}
inline std::string fix2(double x) {
    return fixed(x, 2);
}
inline std::string fix3(double x) {
    return fixed(x, 3);
}

}  // namespace ketrel
