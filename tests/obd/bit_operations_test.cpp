#include "obd/bit_operations.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace ketrel {
namespace {

TEST(BitOperations, BitsAreMostSignificantFirstAndTheByteIsConsumed) {
    for (int value : {0, 1, 0x41, 0x80, 0xA5, 0xFF}) {
        std::uint8_t byte = std::uint8_t(value);
        BitArray bits;
        bits.fill(true);  // a stale array is set up anew
        ByteToBits(byte, bits);
        std::string expected;
        for (int b = 7; b >= 0; --b)
            expected += (value >> b & 1) ? '1' : '0';
        EXPECT_EQ(BitsToText(bits), expected) << value;
        EXPECT_EQ(bits[0], value >= 0x80) << value;
        EXPECT_EQ(byte, 0) << value;
    }
    EXPECT_EQ(ByteToHexText(5), "05");
    EXPECT_EQ(ByteToHexText(10), "0A");
    EXPECT_EQ(ByteToHexText(171), "AB");
}

TEST(BitOperations, HexTextReadsItsLeadingDigitsAndFlagsASuspectZero) {
    struct Case {
        const char* text;
        int value;
        bool bad;
    } cases[] = {{"00", 0, false}, {"0a", 10, false}, {"FF", 255, false}, {"xx", 0, true},
                 {"", 0, true},    {"  ", 0, true},   {"0", 0, true},     {"1G", 1, false},
                 {"G1", 0, true},  {"7", 7, false},   {"000", 0, true}};
    for (const Case& c : cases) {
        bool bad = !c.bad;  // the flag is always written
        EXPECT_EQ(HexTextToByte(c.text, bad), c.value) << '"' << c.text << '"';
        EXPECT_EQ(bad, c.bad) << '"' << c.text << '"';
    }
    bool bad = false;
    EXPECT_THROW(HexTextToByte("100", bad), std::overflow_error);
}

TEST(BitOperations, ASliceGivesItsThreeFormsAndRunsShortPastTheFrame) {
    SlicedByte b = SliceByte("f8");
    EXPECT_EQ(b.value, 248);
    EXPECT_EQ(b.hex, "F8");
    EXPECT_EQ(b.bits, "11111000");
    EXPECT_EQ(SliceByte("7").hex, "07");
    EXPECT_EQ(SliceByte("").bits, "00000000");
    const std::string frame = "V486B10410C1AF8";
    EXPECT_EQ(FrameSlice(frame, 12), "1A");
    EXPECT_EQ(FrameSlice(frame, 15), "8");
    EXPECT_EQ(FrameSlice(frame, 16), "");
}

}  // namespace
}  // namespace ketrel
