#include "tsv_loader.h"

#include <fstream>
#include <vector>

namespace ketrel {

namespace {

std::vector<std::string> splitTabs(const std::string& line) {
    std::vector<std::string> cells;
    std::size_t start = 0;
    for (;;) {
        const std::size_t tab = line.find('\t', start);
        cells.push_back(line.substr(start, tab - start));
        if (tab == std::string::npos) return cells;
        start = tab + 1;
    }
}

std::string quoted(const std::string& name) {
    std::string q = "\"";
    for (char c : name)
        q += c == '"' ? std::string("\"\"") : std::string(1, c);
    return q + "\"";
}

}  // namespace

bool LoadTsvIntoTable(SqliteDb& db, const std::string& table, const std::string& file,
                      std::string& error) {
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        error = "cannot read the file";
        return false;
    }
    SqlRows tableColumns;
    if (!db.query("SELECT name FROM pragma_table_info(?)", {table}, tableColumns) ||
        tableColumns.empty()) {
        error = db.error().empty() ? "no table " + table : db.error();
        return false;
    }
    std::string line;
    if (!std::getline(in, line)) {
        error = "no header line";
        return false;
    }
    if (!line.empty() && line.back() == '\r') line.pop_back();
    // The file's columns that the table holds, by position in the file.
    std::vector<std::size_t> kept;
    std::string names, marks;
    const auto header = splitTabs(line);
    for (std::size_t i = 0; i < header.size(); ++i) {
        for (const auto& column : tableColumns) {
            if (column[0] != header[i]) continue;
            kept.push_back(i);
            names += (names.empty() ? "" : ", ") + quoted(header[i]);
            marks += marks.empty() ? "?" : ", ?";
        }
    }
    if (kept.empty()) {
        error = "no column of the header is a column of " + table;
        return false;
    }
    const std::string insert =
        "INSERT INTO " + quoted(table) + " (" + names + ") VALUES (" + marks + ")";
    if (!db.exec("BEGIN")) return error = db.error(), false;
    int number = 1;
    while (std::getline(in, line)) {
        ++number;
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (line.empty()) continue;
        const auto cells = splitTabs(line);
        if (cells.size() != header.size()) {
            error = "line " + std::to_string(number) + " has " + std::to_string(cells.size()) +
                    " cells, the header " + std::to_string(header.size());
            return false;
        }
        std::vector<SqlValue> values;
        for (std::size_t i : kept)
            values.emplace_back(cells[i]);
        if (!db.exec(insert, values)) return error = db.error(), false;
    }
    if (!db.exec("COMMIT")) return error = db.error(), false;
    return true;
}

}  // namespace ketrel
