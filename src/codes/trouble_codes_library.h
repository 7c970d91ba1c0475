#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "data/dtc_tables.h"

namespace ketrel {

class App;

// The text of a key in one table, if the table holds exactly that key (case and every
// character count; a suffixed key is its own key).
std::optional<std::string_view> FindCodeText(data::CodeTable table, std::string_view code);

// The lookups of the code library: each empties CodeDescription, then leaves there the text of
// the first row whose key equals code exactly. An unknown code leaves it empty.
void LookupGeneric(App& app, const std::string& code);
void LookupGM(App& app, const std::string& code);
void LookupFord(App& app, const std::string& code);
void LookupChrysler(App& app, const std::string& code);

}  // namespace ketrel
