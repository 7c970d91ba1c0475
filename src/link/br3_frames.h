#pragma once
#include <array>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>

namespace ketrel {

// The two frame families of the count-byte converter: J1850 frames carry a CRC and a trailing
// byte for the converter; ISO 9141 and KWP 2000 frames carry a byte sum and nothing after it.
enum class Br3Family { J1850, IsoKwp };

// Three header bytes of a vehicle frame (priority or format, target, source).
using Br3Header = std::array<std::uint8_t, 3>;

// The SAE J1850 CRC-8 (polynomial 0x1D, start 0xFF, result inverted) over the bytes.
std::uint8_t J1850Crc(std::span<const std::uint8_t> bytes);
// The sum of the bytes modulo 256, the check of ISO 9141 and KWP 2000 frames.
std::uint8_t ByteSum(std::span<const std::uint8_t> bytes);

// A frame for the converter as raw bytes: count byte, header, data, check and, on J1850, the
// trailing byte that picks which answer the converter hands back. The check is computed over
// `checkHeader` and the data; `wireHeader` is what goes out (the two differ only when a
// routine sends on a header taken from the connect).
std::string Br3Frame(Br3Family family, const Br3Header& wireHeader, const Br3Header& checkHeader,
                     std::initializer_list<std::uint8_t> data, std::uint8_t trailing = 1);
// The same with one header for the wire and the check.
std::string Br3Frame(Br3Family family, const Br3Header& header,
                     std::initializer_list<std::uint8_t> data, std::uint8_t trailing = 1);

// The same frame as the vehicle sees it on a bare K-line: the ISO/KWP frame without the count
// byte, as the raw K-line cables send it.
std::string KlineFrame(const Br3Header& header, std::initializer_list<std::uint8_t> data);

// A header kept as three raw bytes in FrameHeader or FrameHeader3; `fallback` when the text
// does not hold three bytes.
Br3Header HeaderFromText(const std::string& text, const Br3Header& fallback);
// A header as three raw bytes of text, as FrameHeader keeps it.
std::string HeaderText(const Br3Header& header);

}  // namespace ketrel
