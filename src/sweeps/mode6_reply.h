#pragma once
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ketrel {

// Where the items of a Mode 6 reply stand in its hex text, as 1-based columns. A J1850 reply
// has the count-byte converter's own byte in front of the vehicle frame; an ISO 9141 / KWP 2000
// reply is the vehicle frames alone, one behind the other.
struct Mode6Layout {
    int serviceDigit;  // second digit of the answer byte 46
    int component;
    int value;   // four digits, high byte first
    int limit;   // four digits, high byte first
    int bitmap;  // eight digits of a support reply
};
inline constexpr Mode6Layout kMode6J1850{10, 13, 15, 19, 15};
inline constexpr Mode6Layout kMode6Iso{8, 11, 13, 17, 13};

// The digits an ISO frame of a test reply takes; the next frame starts after them.
inline constexpr std::size_t kMode6IsoFrameDigits = 22;

// RxMode of a reply: its service digit with "0" in front, "" when the reply is too short.
std::string Mode6ServiceMode(std::string_view text, const Mode6Layout& layout);

// The four bytes of a support reply: values (0 where missing) and their eight-character bit
// texts, most significant bit first; bit text k of byte b decides test id base + 8b + k + 1.
struct Mode6SupportBytes {
    std::array<int, 4> values{};
    std::array<std::string, 4> bits;
};
Mode6SupportBytes ReadMode6Support(std::string_view text, const Mode6Layout& layout);

// One test frame, cut by columns. A field the reply does not hold is empty (none).
struct Mode6Frame {
    std::string controlByte;               // component byte as decimal text, bit 7 still in it
    std::string component;                 // two hex digits, bit 7 removed
    std::string valueDigits, limitDigits;  // the columns as they stand
    std::optional<long> result;
    std::optional<std::string> limit;  // decimal text
};
Mode6Frame ReadMode6Frame(std::string_view text, const Mode6Layout& layout);

// The frames of one ISO 9141 / KWP 2000 test reply: the head always, then each following frame
// while more than 15 digits are left and the eighth of them is the service digit 6.
std::vector<std::string_view> Mode6IsoFrames(std::string_view text);

// The value of four hex digits worked out digit by digit; a missing or foreign digit counts 0.
long Mode6Word(std::string_view digits);

// The limit rule: bit 7 of the control byte makes the limit a minimum, else a maximum; a value
// equal to the limit passes under both; a reply without a value gets "*" for both.
struct Mode6Verdict {
    std::string limitType;  // "MINIMUM", "MAXIMUM" or "*"
    std::string passFail;   // "PASS", "FAIL" or "*"
};
Mode6Verdict Mode6LimitRule(const std::string& controlByte, std::optional<long> result,
                            const std::string& limit);

}  // namespace ketrel
