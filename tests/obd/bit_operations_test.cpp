#include "obd/bit_operations.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace ketrel {
namespace {

TEST(ByteToBits, MostSignificantBitFirstAndTheByteIsConsumed) {
    struct Case {
        int value;
        const char* text;
    } cases[] = {{0, "00000000"},    {255, "11111111"},  {128, "10000000"}, {1, "00000001"},
                 {0x41, "01000001"}, {0x0F, "00001111"}, {0xA5, "10100101"}};
    for (const Case& c : cases) {
        std::uint8_t byte = std::uint8_t(c.value);
        BitArray bits;
        bits.fill(true);  // a stale array is set up anew
        ByteToBits(byte, bits);
        EXPECT_EQ(BitsToText(bits), c.text) << c.value;
        EXPECT_EQ(byte, 0) << c.value;
        EXPECT_EQ(bits[0], (c.value & 0x80) != 0) << c.value;
        EXPECT_EQ(bits[7], (c.value & 0x01) != 0) << c.value;
    }
}

TEST(ByteToHexText, TwoUpperCaseDigits) {
    struct Case {
        int value;
        const char* text;
    } cases[] = {{0, "00"}, {5, "05"}, {10, "0A"}, {171, "AB"}, {255, "FF"}, {16, "10"}};
    for (const Case& c : cases)
        EXPECT_EQ(ByteToHexText(c.value), c.text) << c.value;
}

TEST(HexTextToByte, LeadingHexDigitsAndTheBadFlagOnASuspectZero) {
    struct Case {
        const char* text;
        int value;
        bool bad;
    } cases[] = {
        {"00", 0, false}, {"0a", 10, false},  {"0A", 10, false}, {"FF", 255, false},
        {"xx", 0, true},  {"", 0, true},      {"ZZ", 0, true},   {"  ", 0, true},
        {"0", 0, true},   {"1G", 1, false},   {"G1", 0, true},   {"7", 7, false},
        {"000", 0, true}, {"ab", 171, false},
    };
    for (const Case& c : cases) {
        bool bad = !c.bad;  // the flag is always written
        EXPECT_EQ(HexTextToByte(c.text, bad), c.value) << '"' << c.text << '"';
        EXPECT_EQ(bad, c.bad) << '"' << c.text << '"';
    }
}

TEST(HexTextToByte, MoreThanAByteIsAnOverflow) {
    bool bad = false;
    EXPECT_THROW(HexTextToByte("100", bad), std::overflow_error);
    EXPECT_EQ(HexTextToByte("0FF", bad), 255);
}

TEST(SliceByte, StoresTheThreeFormsOfOneSlice) {
    struct Case {
        const char* slice;
        int value;
        const char* hex;
        const char* bits;
    } cases[] = {{"1A", 26, "1A", "00011010"},
                 {"f8", 248, "F8", "11111000"},
                 {"7", 7, "07", "00000111"},
                 {"", 0, "00", "00000000"},
                 {"Q1", 0, "00", "00000000"}};
    for (const Case& c : cases) {
        SlicedByte b = SliceByte(c.slice);
        EXPECT_EQ(b.value, c.value) << c.slice;
        EXPECT_EQ(b.hex, c.hex) << c.slice;
        EXPECT_EQ(b.bits, c.bits) << c.slice;
    }
}

TEST(FrameSlice, TwoCharactersFromAOneBasedColumnAndShortPastTheEnd) {
    const std::string frame = "V486B10410C1AF8";  // 15 characters
    EXPECT_EQ(FrameSlice(frame, 1), "V4");
    EXPECT_EQ(FrameSlice(frame, 12), "1A");
    EXPECT_EQ(FrameSlice(frame, 15), "8");
    EXPECT_EQ(FrameSlice(frame, 16), "");
    EXPECT_EQ(FrameSlice(frame, 40), "");
    EXPECT_EQ(FrameSlice(frame, 0), "");
}

}  // namespace
}  // namespace ketrel
