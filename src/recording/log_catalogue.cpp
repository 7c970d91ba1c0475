#include "recording/log_catalogue.h"

#include <cstdlib>

namespace ketrel {

namespace {

constexpr const char* kSelect =
    "SELECT \"Name\", \"Date Recorded\", \"Year\", \"Make\", \"Model\", \"Vin\", \"Plate\", "
    "\"Frame\", \"Interface Type\", \"Mileage\" FROM LogRecords";

LogRecord FromRow(const std::vector<std::string>& r) {
    LogRecord rec;
    rec.Name = r[0];
    rec.DateRecorded = r[1];
    rec.Year = r[2];
    rec.Make = r[3];
    rec.Model = r[4];
    rec.Vin = r[5];
    rec.Plate = r[6];
    rec.Frame = std::strtol(r[7].c_str(), nullptr, 10);
    rec.InterfaceType = r[8];
    rec.Mileage = r[9];
    return rec;
}

}  // namespace

const std::vector<std::string>& LogCatalogue::ColumnNames() {
    static const std::vector<std::string> names{"Name",           "Date Recorded", "Year",  "Make",
                                                "Model",          "Vin",           "Plate", "Frame",
                                                "Interface Type", "Mileage"};
    return names;
}

bool LogCatalogue::open(const std::filesystem::path& appPath) {
    return db_.open(appPath / "System" / "LogRecords.db") &&
           db_.exec("SELECT count(*) FROM LogRecords");
}

bool LogCatalogue::rows(std::vector<LogRecord>& out) {
    out.clear();
    SqlRows rows;
    if (!db_.query(std::string(kSelect) + " ORDER BY rowid", {}, rows)) return false;
    for (const auto& r : rows)
        out.push_back(FromRow(r));
    return true;
}

bool LogCatalogue::add(const LogRecord& r) {
    return db_.exec("INSERT INTO LogRecords VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)",
                    {r.Name, r.DateRecorded, r.Year, r.Make, r.Model, r.Vin, r.Plate,
                     static_cast<long long>(r.Frame), r.InterfaceType, r.Mileage});
}

bool LogCatalogue::removeFirst(const std::string& name) {
    return db_.exec(
        "DELETE FROM LogRecords WHERE rowid = "
        "(SELECT rowid FROM LogRecords WHERE \"Name\" = ? ORDER BY rowid LIMIT 1)",
        {name});
}

bool LogCatalogue::removeAll() {
    return db_.exec("DELETE FROM LogRecords");
}

bool LogCatalogue::find(const std::string& column, const std::string& word, bool& found,
                        LogRecord& out) {
    found = false;
    if (column != "Name" && column != "Vin" && column != "Plate") return false;
    SqlRows rows;
    // The column name comes from the fixed list above; the word is a bound parameter.
    if (!db_.query(std::string(kSelect) + " WHERE upper(\"" + column +
                       "\") = upper(?) ORDER BY rowid LIMIT 1",
                   {word}, rows))
        return false;
    if (!rows.empty()) {
        found = true;
        out = FromRow(rows[0]);
    }
    return true;
}

}  // namespace ketrel
