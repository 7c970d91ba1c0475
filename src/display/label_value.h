#pragma once
#include <string_view>

namespace ketrel {

// The number a value field shows: its leading decimal number, spaces passed over, 0 when it
// starts with none ("N/A", ""). The displays read the main screen's values back this way.
double LabelValue(std::string_view text);

}  // namespace ketrel
