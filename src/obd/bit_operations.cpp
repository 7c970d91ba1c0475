#include "obd/bit_operations.h"

#include <stdexcept>

namespace ketrel {

void ByteToBits(std::uint8_t& value, BitArray& bits) {
    bits.fill(false);
    int index = 7;
    // Tested at the end: a byte of 0 still writes index 7 once.
    do {
        bits[std::size_t(index)] = (value & 1) != 0;
        value = std::uint8_t(value / 2);
        --index;
    } while (value != 0);
}

std::string BitsToText(const BitArray& bits) {
    std::string text(8, '0');
    for (std::size_t i = 0; i < 8; ++i) {
        if (bits[i]) text[i] = '1';
    }
    return text;
}

std::string ByteToHexText(int value) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    unsigned v = unsigned(value);
    do {
        text.insert(text.begin(), kDigits[v % 16]);
        v /= 16;
    } while (v != 0);
    if (text.size() == 1) text.insert(text.begin(), '0');
    return text;
}

namespace {

int HexDigitValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

}  // namespace

std::uint8_t HexTextToByte(std::string_view text, bool& bad) {
    bad = false;
    long long number = 0;
    for (char c : text) {
        int d = HexDigitValue(c);
        if (d < 0) break;
        number = number * 16 + d;
        if (number > 255) throw std::overflow_error("hex text worth more than a byte");
    }
    auto byte = std::uint8_t(number);
    if (byte == 0 && text != "00") bad = true;
    return byte;
}

SlicedByte SliceByte(std::string_view slice) {
    bool bad = false;  // read by nobody: a corrupt slice flows on as 0
    std::uint8_t scratch = HexTextToByte(slice, bad);
    SlicedByte out;
    out.hex = ByteToHexText(scratch);
    out.value = scratch;
    BitArray bits;
    ByteToBits(scratch, bits);
    out.bits = BitsToText(bits);
    return out;
}

std::string_view FrameSlice(std::string_view frame, int start) {
    std::size_t from = std::size_t(start - 1);
    if (start < 1 || from >= frame.size()) return {};
    return frame.substr(from, 2);
}

}  // namespace ketrel
