#include <gtest/gtest.h>

#include <sstream>

#include "sim/vehicle_file.h"

namespace ketrel::sim {
namespace {

using Bytes = std::vector<std::uint8_t>;

SimVehicle Read(const std::string& text) {
    std::istringstream in(text);
    return ReadVehicleFile(in).vehicle;
}

TEST(O2TestData, AnswersTestsAndSupportFromTheVehicleFile) {
    SimVehicle v = Read(
        "protocol ISO9141\necu 10 engine\nmode1 01\no2test 01 1 7F 10 20\n"
        "o2test 21 2 64 32 96\no2test 41 1 5A 14 B4\n");
    // Standard test of sensor 1: service 45, id, sensor, value, minimum, maximum.
    auto a = v.answer({0x05, 0x01, 0x01}, 0);
    ASSERT_EQ(a.size(), 1u);
    EXPECT_EQ(HexText(a[0]),
              "486B104501017F1020" + HexText({ByteSum(Bytes(a[0].begin(), a[0].end() - 1))}));
    // Support of the ids above 20 and above 40, over every sensor; none above 60.
    a = v.answer({0x05, 0x20}, 0);
    ASSERT_EQ(a.size(), 1u);
    EXPECT_EQ(HexText(Bytes(a[0].begin() + 3, a[0].end() - 1)), "45200080000000");
    a = v.answer({0x05, 0x40}, 0);
    ASSERT_EQ(a.size(), 1u);
    EXPECT_EQ(HexText(Bytes(a[0].begin() + 3, a[0].end() - 1)), "45400080000000");
    EXPECT_TRUE(v.answer({0x05, 0x60}, 0).empty());
    // What the module lacks goes unanswered.
    EXPECT_TRUE(v.answer({0x05, 0x01, 0x02}, 0).empty());
    EXPECT_TRUE(v.answer({0x05, 0x02, 0x01}, 0).empty());
}

}  // namespace
}  // namespace ketrel::sim
