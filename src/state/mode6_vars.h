#pragma once
#include <array>
#include <optional>
#include <string>

namespace ketrel {

// The variables of one Mode 6 sweep module. The count-byte converter's sweep and the K-line
// cables' sweep each keep a copy of their own; the cancel flag, the support index and the
// J1850 frame index are shared and live in the application object beside them.
struct Mode6Vars {
    std::array<bool, 256> Supported{};  // index n-1: test id n
    int SupportedCount = 0;             // never reset: grows from one sweep to the next
    int TestID = 0;                     // the test id being requested
    int Row = 0;                        // last grid row written
    std::optional<long> Result;         // the test value; none when the reply held none
    std::string Limit;                  // decimal text; "" when no reply held one yet
    std::string Component;              // two hex digits, bit 7 removed
    std::string ControlByte;            // the component byte as received, decimal, bit 7 in it
};

}  // namespace ketrel
