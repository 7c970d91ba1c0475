#pragma once
#include <span>
#include <string_view>

namespace ketrel::data {

// The four trouble-code tables the program carries.
enum class CodeTable { Generic, GM, Ford, Chrysler };

// One row of a table: a key ("P0133", or a suffixed key such as "P1641.") and its text.
struct CodeRow {
    std::string_view key;
    std::string_view text;
};

// The rows of one table in ascending key order, each suffixed key right behind its bare
// number. Built from data/dtc.tsv when the program is built.
std::span<const CodeRow> CodeTableRows(CodeTable table);

}  // namespace ketrel::data
