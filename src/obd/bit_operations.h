#pragma once
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace ketrel {

class App;

// Eight bits of a byte; element 0 is the most significant bit (weight 128).
using BitArray = std::array<bool, 8>;

// Fills `bits` from a byte, most significant bit first. The byte is consumed: it reads 0 on
// return, which is why the receive paths call this last on their scratch byte.
void ByteToBits(std::uint8_t& value, BitArray& bits);

// Eight characters "0"/"1", element 0 first: 0x41 gives "01000001".
std::string BitsToText(const BitArray& bits);

// Two upper-case hex digits: 5 gives "05", 171 gives "AB".
std::string ByteToHexText(int value);

// The value of the leading hex digits of `text` (either case; none gives 0). `bad` is set when
// the result is 0 and the text is not exactly "00", the one sign of a corrupt slice that the
// receive paths can see. Text worth more than 255 throws std::overflow_error.
std::uint8_t HexTextToByte(std::string_view text, bool& bad);

// One data byte as the receive paths store it: value, hex text and bit text.
struct SlicedByte {
    int value = 0;
    std::string hex;
    std::string bits;
};

// Runs a two-character slice through the helpers in their fixed order: HexTextToByte, then
// ByteToHexText, then ByteToBits and BitsToText on the scratch byte.
SlicedByte SliceByte(std::string_view slice);

// The two characters of `frame` from 1-based column `start`: shorter or empty past the end.
std::string_view FrameSlice(std::string_view frame, int start);

}  // namespace ketrel
