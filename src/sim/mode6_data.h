#pragma once
#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace ketrel::sim {

// One result of an on-board test as a module keeps it.
struct Mode6Result {
    std::uint8_t testId = 0;
    std::uint8_t component = 0;  // bit 7 set: the limit is a minimum
    std::uint16_t value = 0;
    std::uint16_t limit = 0;
};

// The on-board tests of one module and how it answers Mode 06: a support request (test id 00,
// 20, ... E0) with four bitmap bytes, a test id with one message per component, in order.
struct Mode6Data {
    std::vector<Mode6Result> results;
    // Support bitmaps held as given, by base; the others follow from the test ids.
    std::map<int, std::array<std::uint8_t, 4>> support;

    bool empty() const { return results.empty() && support.empty(); }
    // The data of each message to a Mode 06 request for `testId` (answer byte 46 first); none
    // for a base nobody needs or a test the module doesn't have.
    std::vector<std::vector<std::uint8_t>> answer(int testId) const;
    // The bitmap of a support request, or none when the module doesn't answer that base.
    std::optional<std::array<std::uint8_t, 4>> bitmap(int base) const;
};

// One line of a vehicle file's module section about Mode 6:
//   mode6          TID COMP VALUE LIMIT   a result: test id and component byte in hex (bit 7 of
//                                         the component for a minimum limit), value and limit
//                                         as four hex digits
//   mode6-support  BASE B1 B2 B3 B4       a support bitmap held as given
// Returns an error text, empty when the line was taken.
std::string AddMode6Setting(Mode6Data& data, const std::string& keyword,
                            const std::vector<std::string>& args);

}  // namespace ketrel::sim
