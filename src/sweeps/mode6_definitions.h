#pragma once
#include <string>

namespace ketrel {

class App;

// What the definition table makes of one grid row.
struct Mode6Described {
    std::string description;
    std::string resultUnits;  // Mode6ResultUnits
    std::string limitUnits;   // Mode6LimitUnits
};

// The definition of a row of test id `testId` (two hex digits) that stands at place `group`
// among consecutive rows of that id, with this component id, raw result and raw limit (decimal
// texts, "" for none).
Mode6Described DescribeMode6Row(const std::string& testId, int group, const std::string& component,
                                const std::string& result, const std::string& limit);

// cmdFordDef: fills the description and the two unit columns of every row the sweep wrote, down
// to the first row with no id, component, result or limit. Pressing it again does the same.
void Mode6ApplyDefinitions(App& app);

}  // namespace ketrel
