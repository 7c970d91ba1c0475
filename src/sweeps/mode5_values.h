#pragma once
#include <string>

namespace ketrel {

// The number a text starts with, as the screens read their own texts back: blanks, a sign,
// digits and one decimal point; "0.200 Secs" reads 0.2, a text without a number 0.
double TextNumber(const std::string& text);

// A number in upper-case hexadecimal without leading zeros: 5 gives "5", 31 gives "1F".
std::string HexNumber(int value);

// The texts of one row of the maker's oxygen-sensor tests, by the range of its test id: the
// scaled value, the two limits with the range's unit, and the verdict worked out from those
// texts as they read.
struct ManufRowTexts {
    std::string test, minimum, maximum, verdict;
};
ManufRowTexts ManufRow(int testId, int value, int minimum, int maximum);

}  // namespace ketrel
