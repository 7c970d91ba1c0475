#include <gtest/gtest.h>

#include "platform/text_convert.h"

namespace ketrel {
namespace {

TEST(TextConvert, WholeNumbersConvertOnlyFromWholeNumericText) {
    struct Case {
        const char* text;
        std::optional<long> value;
    } cases[] = {
        {"12", 12},
        {" 12 ", 12},
        {"-7", -7},
        {"2.5", 2},
        {"3.5", 4},
        {"1e3", 1000},
        {"&H1F", 31},
        {"", std::nullopt},
        {"abc", std::nullopt},
        {"12abc", std::nullopt},
        {"99999999999", std::nullopt},
        {".", std::nullopt},
    };
    for (const Case& c : cases)
        EXPECT_EQ(TextToLong(c.text), c.value) << c.text;
}

TEST(TextConvert, BooleansTakeTheirWordsOrANumber) {
    struct Case {
        const char* text;
        std::optional<bool> value;
    } cases[] = {{"True", true},     {"false", false},      {"TRUE", true},
                 {"-1", true},       {"0", false},          {"2", true},
                 {"", std::nullopt}, {"yes", std::nullopt}, {" True ", true}};
    for (const Case& c : cases)
        EXPECT_EQ(TextToBool(c.text), c.value) << c.text;
}

TEST(TextConvert, ValReadsTheNumericPrefix) {
    struct Case {
        const char* text;
        double value;
    } cases[] = {{"180", 180}, {"1 80", 180}, {"125ms", 125}, {"abc", 0}, {"", 0}, {"-3.5x", -3.5}};
    for (const Case& c : cases)
        EXPECT_DOUBLE_EQ(Val(c.text), c.value) << c.text;
}

}  // namespace
}  // namespace ketrel
