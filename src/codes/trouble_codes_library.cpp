#include "codes/trouble_codes_library.h"

#include <algorithm>
#include <array>
#include <vector>

#include "state/app.h"

namespace ketrel {

namespace {

// Row positions of one table ordered by key; among equal keys the earlier row comes first, so a
// lookup still finds the first row of a repeated key. Built once per table on first use.
const std::vector<std::size_t>& keyOrder(data::CodeTable table) {
    static const auto build = [](data::CodeTable t) {
        const auto rows = data::CodeTableRows(t);
        std::vector<std::size_t> order(rows.size());
        for (std::size_t i = 0; i < order.size(); ++i)
            order[i] = i;
        std::stable_sort(order.begin(), order.end(),
                         [&](std::size_t a, std::size_t b) { return rows[a].key < rows[b].key; });
        return order;
    };
    static const std::array<std::vector<std::size_t>, 4> orders{
        build(data::CodeTable::Generic), build(data::CodeTable::GM), build(data::CodeTable::Ford),
        build(data::CodeTable::Chrysler)};
    return orders[static_cast<std::size_t>(table)];
}

}  // namespace

std::optional<std::string_view> FindCodeText(data::CodeTable table, std::string_view code) {
    const auto rows = data::CodeTableRows(table);
    const auto& order = keyOrder(table);
    auto it = std::lower_bound(order.begin(), order.end(), code,
                               [&](std::size_t i, std::string_view c) { return rows[i].key < c; });
    if (it == order.end() || rows[*it].key != code) return std::nullopt;
    return rows[*it].text;
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
