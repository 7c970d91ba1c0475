#include "display/label_value.h"

#include <cctype>
#include <charconv>
#include <string>

namespace ketrel {

double LabelValue(std::string_view text) {
    std::string digits;
    bool seenDigit = false, seenPoint = false, seenExp = false;
    for (char c : text) {
        if (c == ' ' || c == '\t') continue;
        const bool first = digits.empty();
        const char last = first ? '\0' : digits.back();
        if (std::isdigit(static_cast<unsigned char>(c))) {
            seenDigit = true;
        } else if ((c == '+' || c == '-') && (first || last == 'e')) {
        } else if (c == '.' && !seenPoint && !seenExp) {
            seenPoint = true;
        } else if ((c == 'e' || c == 'E') && seenDigit && !seenExp) {
            seenExp = true;
            c = 'e';
        } else {
            break;
        }
        digits.push_back(c);
    }
    if (!seenDigit) return 0;
    // An exponent without its digits is left out.
    while (!digits.empty() &&
           (digits.back() == 'e' || digits.back() == '+' || digits.back() == '-'))
        digits.pop_back();
    if (digits.front() == '+') digits.erase(0, 1);
    double v = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), v);  // never the locale's mark
    return v;
}

}  // namespace ketrel
