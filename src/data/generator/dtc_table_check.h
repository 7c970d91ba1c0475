#pragma once
// Reading, checking and compiling the trouble-code tables of data/dtc.tsv. Used by the build
// step that turns the tables into C++, and by its tests.
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <istream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace ketrel::dtcgen {

// One row of a table: which table, the key and its text exactly as stored.
struct Row {
    std::string table, key, text;
    int line = 0;
};

// The keys a table must hold, in order, and its row count.
struct KeyList {
    std::string table;
    int rows = 0;
    std::vector<std::string> keys;
    int line = 0;
};

// The tables the program knows, in the order it keeps them, with the C++ name of each.
struct TableName {
    const char* file;
    const char* cpp;
};
inline constexpr TableName kTables[] = {
    {"generic", "Generic"}, {"gm", "GM"}, {"ford", "Ford"}, {"chrysler", "Chrysler"}};

inline bool isKnownTable(const std::string& name) {
    return std::any_of(std::begin(kTables), std::end(kTables),
                       [&](const TableName& t) { return name == t.file; });
}

inline std::vector<std::string> splitTabs(const std::string& line) {
    std::vector<std::string> out;
    std::size_t start = 0;
    for (;;) {
        std::size_t tab = line.find('\t', start);
        out.push_back(line.substr(start, tab - start));
        if (tab == std::string::npos) return out;
        start = tab + 1;
    }
}

// Reads "table<TAB>key<TAB>text<TAB>origin" rows after one header line. Problems go to errors.
inline std::vector<Row> ParseRows(std::istream& in, std::vector<std::string>& errors) {
    std::vector<Row> rows;
    std::string line;
    int number = 0;
    while (std::getline(in, line)) {
        ++number;
        if (number == 1) {
            if (line != "table\tkey\ttext\torigin")
                errors.push_back("line 1: the header must be table, key, text, origin");
            continue;
        }
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty()) continue;
        std::vector<std::string> cols = splitTabs(line);
        std::string where = "line " + std::to_string(number) + ": ";
        if (cols.size() != 4) {
            errors.push_back(where + "expected 4 columns, found " + std::to_string(cols.size()));
            continue;
        }
        if (!isKnownTable(cols[0])) {
            errors.push_back(where + "unknown table \"" + cols[0] + "\"");
            continue;
        }
        if (cols[1].empty() || cols[2].empty()) {
            errors.push_back(where + "empty key or text");
            continue;
        }
        rows.push_back({cols[0], cols[1], cols[2], number});
    }
    if (number == 0) errors.push_back("the table file is empty");
    return rows;
}

// "P0100": a letter and four decimal digits.
inline bool isPlainNumber(const std::string& s) {
    return s.size() == 5 && std::isupper(static_cast<unsigned char>(s[0])) &&
           std::all_of(s.begin() + 1, s.end(),
                       [](char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; });
}

// Expands one word of a key list: "P0100-P0103" gives the four numbers, any other word itself.
inline std::vector<std::string> ExpandKeyWord(const std::string& word, std::string& error) {
    std::size_t dash = word.find('-');
    if (dash == 5 && word.size() == 11) {
        std::string first = word.substr(0, 5), last = word.substr(6);
        if (isPlainNumber(first) && isPlainNumber(last)) {
            int a = std::stoi(first.substr(1)), b = std::stoi(last.substr(1));
            if (first[0] != last[0] || b < a) {
                error = "bad run \"" + word + "\"";
                return {};
            }
            std::vector<std::string> keys;
            for (int n = a; n <= b; ++n) {
                char digits[8];
                std::snprintf(digits, sizeof digits, "%04d", n);
                keys.push_back(first[0] + std::string(digits));
            }
            return keys;
        }
    }
    if (word.size() < 5 || !isPlainNumber(word.substr(0, 5))) {
        error = "bad key \"" + word + "\"";
        return {};
    }
    return {word};
}

// Reads the key lists: one line per table, "name rows key...", '#' starts a comment line.
inline std::vector<KeyList> ParseKeyLists(std::istream& in, std::vector<std::string>& errors) {
    std::vector<KeyList> lists;
    std::string line;
    int number = 0;
    while (std::getline(in, line)) {
        ++number;
        if (line.empty() || line[0] == '#') continue;
        std::istringstream words(line);
        KeyList list;
        list.line = number;
        std::string where = "key list line " + std::to_string(number) + ": ";
        if (!(words >> list.table >> list.rows) || !isKnownTable(list.table)) {
            errors.push_back(where + "expected a known table name and a row count");
            continue;
        }
        std::string word;
        while (words >> word) {
            std::string error;
            for (std::string& key : ExpandKeyWord(word, error))
                list.keys.push_back(std::move(key));
            if (!error.empty()) errors.push_back(where + error);
        }
        auto back =
            std::adjacent_find(list.keys.begin(), list.keys.end(),
                               [](const std::string& a, const std::string& b) { return a >= b; });
        if (back != list.keys.end())
            errors.push_back(where + list.table + " key " + back[1] + " does not come after " +
                             back[0]);
        if (int(list.keys.size()) != list.rows) {
            errors.push_back(where + list.table + " lists " + std::to_string(list.keys.size()) +
                             " keys but says " + std::to_string(list.rows) + " rows");
        }
        lists.push_back(std::move(list));
    }
    for (const TableName& t : kTables) {
        auto n = std::count_if(lists.begin(), lists.end(),
                               [&](const KeyList& l) { return l.table == t.file; });
        if (n != 1)
            errors.push_back(std::string("the key lists must name table ") + t.file + " once");
    }
    return lists;
}

// Checks the rows of one table against its key list: every key present exactly once, no
// other key, and the rows in the listed order.
inline void CheckTable(const KeyList& list, const std::vector<Row>& rows,
                       std::vector<std::string>& errors) {
    std::map<std::string, int> seen;
    std::vector<std::string> order;
    for (const Row& r : rows) {
        if (r.table != list.table) continue;
        if (++seen[r.key] == 2) {
            errors.push_back(list.table + ": key " + r.key + " repeated at line " +
                             std::to_string(r.line));
        }
        order.push_back(r.key);
    }
    std::set<std::string> wanted(list.keys.begin(), list.keys.end());
    for (const std::string& key : list.keys) {
        if (!seen.count(key)) errors.push_back(list.table + ": key " + key + " is missing");
    }
    for (const auto& [key, n] : seen) {
        if (!wanted.count(key)) errors.push_back(list.table + ": key " + key + " is not listed");
    }
    if (errors.empty() && order != list.keys) {
        for (std::size_t i = 0; i < order.size(); ++i) {
            if (order[i] != list.keys[i]) {
                errors.push_back(list.table + ": key " + order[i] + " stands where " +
                                 list.keys[i] + " belongs");
                break;
            }
        }
    }
}

// A C++ string literal that gives back the text byte for byte.
inline std::string CppLiteral(const std::string& text) {
    std::string out = "\"";
    for (unsigned char c : text) {
        if (c == '"' || c == '\\' || c == '?') {
            out += '\\';
            out += char(c);
        } else if (c < 0x20 || c >= 0x7F) {
            char esc[8];
            std::snprintf(esc, sizeof esc, "\\%03o", c);
            out += esc;
        } else {
            out += char(c);
        }
    }
    return out + "\"";
}

// The C++ source of the four tables and of CodeTableRows.
inline std::string EmitTables(const std::vector<Row>& rows) {
    std::ostringstream out;
    out << "// Made by the build from data/dtc.tsv; edit that file, not this one.\n"
        << "#include \"data/dtc_tables.h\"\n\n"
        << "namespace ketrel::data {\nnamespace {\n\n";
    for (const TableName& t : kTables) {
        out << "constexpr CodeRow k" << t.cpp << "[] = {\n";
        for (const Row& r : rows) {
            if (r.table == t.file)
                out << "    {" << CppLiteral(r.key) << ", " << CppLiteral(r.text) << "},\n";
        }
        out << "};\n\n";
    }
    out << "}  // namespace\n\n"
        << "std::span<const CodeRow> CodeTableRows(CodeTable table) {\n"
        << "    switch (table) {\n";
    for (const TableName& t : kTables) {
        out << "        case CodeTable::" << t.cpp << ":\n"
            << "            return k" << t.cpp << ";\n";
    }
    out << "    }\n    return {};\n}\n\n}  // namespace ketrel::data\n";
    return out.str();
}

}  // namespace ketrel::dtcgen
