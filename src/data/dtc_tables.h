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

// The rows of one table in ascending key order (byte by byte, each key once), each suffixed key
// right behind its bare number. Built from data/dtc.tsv when the program is built, which stops
// on a key list that does not ascend.
std::span<const CodeRow> CodeTableRows(CodeTable table);

}  // namespace ketrel::data
