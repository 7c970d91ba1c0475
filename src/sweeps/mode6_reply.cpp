#include "sweeps/mode6_reply.h"

#include <cstdlib>

#include "obd/bit_operations.h"

namespace ketrel {
namespace {

// The characters of `text` from 1-based column `start`, `count` of them or fewer at the end.
std::string_view Columns(std::string_view text, int start, std::size_t count) {
    const auto from = std::size_t(start - 1);
    if (from >= text.size()) return {};
    return text.substr(from, count);
}

int HexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return 0;
}

double Number(const std::string& text) {
    return text.empty() ? 0.0 : std::strtod(text.c_str(), nullptr);
}

}  // namespace

std::string Mode6ServiceMode(std::string_view text, const Mode6Layout& layout) {
    std::string_view digit = Columns(text, layout.serviceDigit, 1);
    return digit.empty() ? std::string() : "0" + std::string(digit);
}

Mode6SupportBytes ReadMode6Support(std::string_view text, const Mode6Layout& layout) {
    Mode6SupportBytes out;
    for (int b = 0; b < 4; ++b) {
        bool bad = false;
        std::uint8_t value = HexTextToByte(Columns(text, layout.bitmap + 2 * b, 2), bad);
        out.values[std::size_t(b)] = value;
        BitArray bits{};
        ByteToBits(value, bits);
        out.bits[std::size_t(b)] = BitsToText(bits);
    }
    return out;
}

long Mode6Word(std::string_view digits) {
    long value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value = value * 16 + (i < digits.size() ? HexValue(digits[i]) : 0);
    return value;
}

Mode6Frame ReadMode6Frame(std::string_view text, const Mode6Layout& layout) {
    Mode6Frame f;
    bool bad = false;
    int control = HexTextToByte(Columns(text, layout.component, 2), bad);
    f.controlByte = std::to_string(control);
    if (control & 0x80) control -= 128;
    f.component = ByteToHexText(control);
    f.valueDigits = Columns(text, layout.value, 4);
    f.limitDigits = Columns(text, layout.limit, 4);
    if (!f.valueDigits.empty()) f.result = Mode6Word(f.valueDigits);
    if (!f.limitDigits.empty()) f.limit = std::to_string(Mode6Word(f.limitDigits));
    return f;
}

std::vector<std::string_view> Mode6IsoFrames(std::string_view text) {
    std::vector<std::string_view> frames{text};
    while (text.size() > kMode6IsoFrameDigits) {
        text.remove_prefix(kMode6IsoFrameDigits);
        if (text.size() <= 15 || text[7] != '6') break;
        frames.push_back(text);
    }
    return frames;
}

Mode6Verdict Mode6LimitRule(const std::string& controlByte, std::optional<long> result,
                            const std::string& limit) {
    if (!result) return {"*", "*"};
    const double v = double(*result), l = Number(limit);
    if (int(Number(controlByte)) & 0x80) return {"MINIMUM", v >= l ? "PASS" : "FAIL"};
    return {"MAXIMUM", v <= l ? "PASS" : "FAIL"};
}

}  // namespace ketrel
