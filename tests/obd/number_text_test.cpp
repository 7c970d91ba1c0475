#include "obd/number_text.h"

#include <gtest/gtest.h>

#include <clocale>

namespace ketrel {
namespace {

TEST(NumberText, PlainIsTheShortestDecimalText) {
    struct Case {
        double x;
        const char* text;
    } cases[] = {{240, "240"},     {25.5, "25.5"},     {-40, "-40"},     {0, "0"},
                 {-0.0, "0"},      {0.1 + 0.2, "0.3"}, {16383, "16383"}, {1726.25, "1726.25"},
                 {65535, "65535"}, {300, "300"}};
    for (const Case& c : cases)
        EXPECT_EQ(plain(c.x), c.text) << c.x;
}

TEST(NumberText, FixedRoundsToNearestOnTheDecimalValue) {
    struct Case {
        double x;
        int decimals;
        const char* text;
    } cases[] = {
        {100.011, 1, "100.0"},
        {-64, 1, "-64.0"},
        {63.5, 1, "63.5"},
        {-99.9936, 2, "-99.99"},
        {16383, 2, "16383.00"},
        {0.64, 3, "0.640"},
        {62.1, 0, "62"},
        {43.512, 0, "44"},
        {0.5, 0, "1"},
        {-0.5, 0, "-1"},
        {2.5, 0, "3"},
        {1.005, 2, "1.01"},
        {12.345, 2, "12.35"},
        {0.0005, 3, "0.001"},
        {-0.4, 0, "0"},
        {-0.004, 2, "0.00"},
        {1234567.891, 2, "1234567.89"},
        {0.999424, 3, "0.999"},
        {-128, 3, "-128.000"},
        {29.90913, 1, "29.9"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(fixed(c.x, c.decimals), c.text) << c.x << " fix" << c.decimals;
    EXPECT_EQ(fix0(680), "680");
    EXPECT_EQ(fix1(29.9), "29.9");
    EXPECT_EQ(fix2(2.56), "2.56");
    EXPECT_EQ(fix3(65.69583), "65.696");
}

TEST(NumberText, TheDecimalMarkIsAPointWhateverTheLocale) {
    // Where a locale with a decimal comma is installed, it must not leak into the texts.
    const char* old = std::setlocale(LC_ALL, nullptr);
    std::string saved = old ? old : "C";
    bool switched = false;
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8"}) {
        if (std::setlocale(LC_ALL, name)) {
            switched = true;
            break;
        }
    }
    EXPECT_EQ(fix2(2.56), "2.56");
    EXPECT_EQ(plain(25.5), "25.5");
    EXPECT_EQ(fix1(1234.5), "1234.5");
    std::setlocale(LC_ALL, saved.c_str());
    if (!switched) GTEST_SKIP() << "no decimal-comma locale installed";
}

}  // namespace
}  // namespace ketrel
