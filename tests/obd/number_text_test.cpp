#include "obd/number_text.h"

#include <gtest/gtest.h>

#include <locale>

#include <clocale>

namespace ketrel {
namespace {

TEST(NumberText, PlainIsShortestAndFixedRoundsHalfAwayOnTheDecimalValue) {
    struct Case {
        double x;
        int decimals;  // -1: plain
        const char* text;
    } cases[] = {
        {240, -1, "240"},        {25.5, -1, "25.5"},
        {0.1 + 0.2, -1, "0.3"},  {-0.0, -1, "0"},
        {100.011, 1, "100.0"},   {-64, 1, "-64.0"},
        {-99.9936, 2, "-99.99"}, {16383, 2, "16383.00"},
        {43.512, 0, "44"},       {2.5, 0, "3"},
        {-0.5, 0, "-1"},         {1.005, 2, "1.01"},
        {12.345, 2, "12.35"},    {-0.4, 0, "0"},
        {0.999424, 3, "0.999"},  {1234567.891, 2, "1234567.89"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(c.decimals < 0 ? plain(c.x) : fixed(c.x, c.decimals), c.text) << c.x;
}

TEST(NumberText, TheDecimalMarkIsAPointWhateverTheLocale) {
    // A global locale with a decimal comma, made here so no system locale is needed.
    struct CommaPunct : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    std::locale saved = std::locale::global(std::locale(std::locale::classic(), new CommaPunct));
    std::string c = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8"})
        if (std::setlocale(LC_ALL, name)) break;
    EXPECT_EQ(fix2(2.56), "2.56");
    EXPECT_EQ(fix0(12345.4), "12345");
    EXPECT_EQ(plain(25.5), "25.5");
    std::setlocale(LC_ALL, c.c_str());
    std::locale::global(saved);
}

}  // namespace
}  // namespace ketrel
