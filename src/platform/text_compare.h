#pragma once
#include <cctype>
#include <string_view>

namespace ketrel {

// Compares two texts ignoring the case of ASCII letters (setting keys, Boolean words).
inline bool EqualsNoCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (std::tolower(static_cast<unsigned char>(a[i])) !=
            std::tolower(static_cast<unsigned char>(b[i])))
            return false;
    }
    return true;
}

}  // namespace ketrel
