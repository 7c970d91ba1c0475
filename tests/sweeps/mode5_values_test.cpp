#include <gtest/gtest.h>

#include "sweeps/mode5_values.h"

namespace ketrel {
namespace {

TEST(Mode5Values, EachIdRangeScalesItsBytesAndJudgesOnTheTextsShown) {
    struct Case {
        int id, value, minimum, maximum;
        ManufRowTexts row;
    } cases[] = {
        {0x25, 100, 50, 150, {"0.400", "0.200 Secs", "0.600 Secs", "PASS"}},
        {0x2F, 151, 50, 150, {"0.604", "0.200 Secs", "0.600 Secs", "FAIL"}},
        {0x30, 25, 25, 30, {"1.00", "1.00 Secs", "1.20 Secs", "PASS"}},
        {0x41, 19, 20, 180, {"0.095", "0.100 V", "0.900 V", "FAIL"}},
        // 0.95 against a maximum that reads "1.0 V" once rounded: it passes on the text.
        {0x5A, 19, 0, 20, {"0.95", "0.0 V", "1.0 V", "PASS"}},
        {0x55, 21, 0, 20, {"1.05", "0.0 V", "1.0 V", "FAIL"}},
        {0x6F, 35, 10, 30, {"3.5", "1.0 Hz", "3.0 Hz", "FAIL"}},
        {0x70, 7, 7, 7, {"7", "7 Cnts", "7 Cnts", "PASS"}},
        {0x90, 1, 2, 3, {"*", "*", "*", "*"}},
        {0xFF, 0, 0, 0, {"*", "*", "*", "*"}},
    };
    for (const Case& c : cases) {
        const ManufRowTexts t = ManufRow(c.id, c.value, c.minimum, c.maximum);
        EXPECT_EQ(t.test, c.row.test) << c.id;
        EXPECT_EQ(t.minimum, c.row.minimum) << c.id;
        EXPECT_EQ(t.maximum, c.row.maximum) << c.id;
        EXPECT_EQ(t.verdict, c.row.verdict) << c.id;
    }
}

}  // namespace
}  // namespace ketrel
