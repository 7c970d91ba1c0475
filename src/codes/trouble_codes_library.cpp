#include "codes/trouble_codes_library.h"

#include <algorithm>

#include "state/app.h"

namespace ketrel {

std::optional<std::string_view> FindCodeText(data::CodeTable table, std::string_view code) {
    // The build keeps each table in ascending key order with every key once.
    const auto rows = data::CodeTableRows(table);
    auto it =
        std::lower_bound(rows.begin(), rows.end(), code,
                         [](const data::CodeRow& row, std::string_view c) { return row.key < c; });
    if (it == rows.end() || it->key != code) return std::nullopt;
    return it->text;
}

namespace {

void lookup(App& app, data::CodeTable table, const std::string& code) {
    app.CodeDescription.clear();
    if (auto text = FindCodeText(table, code)) app.CodeDescription = std::string(*text);
}

}  // namespace

void LookupGeneric(App& app, const std::string& code) {
    lookup(app, data::CodeTable::Generic, code);
}

void LookupGM(App& app, const std::string& code) {
    lookup(app, data::CodeTable::GM, code);
}

void LookupFord(App& app, const std::string& code) {
    lookup(app, data::CodeTable::Ford, code);
}

void LookupChrysler(App& app, const std::string& code) {
    lookup(app, data::CodeTable::Chrysler, code);
}

}  // namespace ketrel
