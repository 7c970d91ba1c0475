#include <gtest/gtest.h>

#include <sstream>

#include "data/generator/dtc_table_check.h"

namespace ketrel::dtcgen {
namespace {

std::vector<std::string> keys(std::initializer_list<const char*> list) {
    return {list.begin(), list.end()};
}

TEST(KeyList, WordsExpandToRunsOrSingleKeys) {
    struct Case {
        const char* word;
        std::vector<std::string> want;
        bool error;
    } cases[] = {
        {"P0100-P0103", keys({"P0100", "P0101", "P0102", "P0103"}), false},
        {"P1298-P1301", keys({"P1298", "P1299", "P1300", "P1301"}), false},  // across a hundred
        {"P0510-P0510", keys({"P0510"}), false},
        {"P0510", keys({"P0510"}), false},
        {"P1641..", keys({"P1641.."}), false},
        {"P1111-T", keys({"P1111-T"}), false},  // a suffix, not a run
        {"P0103-P0100", {}, true},              // backwards
        {"P0100-C0103", {}, true},              // two letters
        {"P01", {}, true},
        {"PX100", {}, true},
    };
    for (const Case& c : cases) {
        std::string error;
        EXPECT_EQ(ExpandKeyWord(c.word, error), c.want) << c.word;
        EXPECT_EQ(!error.empty(), c.error) << c.word;
    }
}

TEST(KeyList, KeysMustAscendByteByByte) {
    struct Case {
        const char* line;
        const char* error;  // "" when the keys ascend
    } cases[] = {
        {"gm 3 P1641 P1641. P1642", ""},
        {"gm 3 P1641. P1641 P1642", "key list line 1: gm key P1641 does not come after P1641."},
        {"gm 2 P1641 P1641", "key list line 1: gm key P1641 does not come after P1641"},
    };
    for (const Case& c : cases) {
        std::istringstream in(c.line);
        std::vector<std::string> errors;
        ParseKeyLists(in, errors);
        auto order = std::find_if(errors.begin(), errors.end(), [](const std::string& e) {
            return e.find("come after") != std::string::npos;
        });
        EXPECT_EQ(order == errors.end() ? "" : *order, c.error) << c.line;
    }
}

TEST(CodeTableFile, ATableMustHoldEveryListedKeyOnceAndInOrder) {
    KeyList list{"gm", 3, keys({"P1641", "P1641.", "P1642"}), 1};
    auto rowsOf = [](std::initializer_list<const char*> ks) {
        std::vector<Row> rows{{"ford", "P1641", "other table", 1}};
        for (const char* k : ks)
            rows.push_back({"gm", k, "text", 2});
        return rows;
    };
    struct Case {
        std::vector<Row> rows;
        const char* firstError;  // "" when the table is right
    } cases[] = {
        {rowsOf({"P1641", "P1641.", "P1642"}), ""},
        {rowsOf({"P1641", "P1642"}), "gm: key P1641. is missing"},
        {rowsOf({"P1641", "P1641.", "P1641.", "P1642"}), "gm: key P1641. repeated at line 2"},
        {rowsOf({"P1641", "P1641.", "P1641..", "P1642"}), "gm: key P1641.. is not listed"},
        {rowsOf({"P1641.", "P1641", "P1642"}), "gm: key P1641. stands where P1641 belongs"},
    };
    for (const Case& c : cases) {
        std::vector<std::string> errors;
        CheckTable(list, c.rows, errors);
        EXPECT_EQ(errors.empty() ? "" : errors.front(), c.firstError);
    }
}

}  // namespace
}  // namespace ketrel::dtcgen
