#include "codes/trouble_codes_library.h"

#include "state/app.h"

namespace ketrel {

std::optional<std::string_view> FindCodeText(data::CodeTable table, std::string_view code) {
    // A few lookups per code reply at most: a plain walk through the table is enough.
    for (const data::CodeRow& row : data::CodeTableRows(table)) {
        if (row.key == code) return row.text;
    }
    return std::nullopt;
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
