#pragma once
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/sqlite_db.h"

namespace ketrel {

// One saved log as its catalogue row holds it; the columns in the order the catalogue shows.
struct LogRecord {
    std::string Name, DateRecorded, Year, Make, Model, Vin, Plate;
    long Frame = 0;
    std::string InterfaceType, Mileage;
};

// The table LogRecords of System/LogRecords.db: the saved logs with the vehicle's data. The
// file is shipped with the program and never made here; a missing or damaged file fails to
// open with the library's message in error().
class LogCatalogue {
  public:
    // Opens <appPath>/System/LogRecords.db.
    bool open(const std::filesystem::path& appPath);
    bool isOpen() const { return db_.isOpen(); }
    const std::string& error() const { return db_.error(); }

    // Every row in the table's order.
    bool rows(std::vector<LogRecord>& out);
    bool add(const LogRecord& record);
    // Deletes the first row whose "Name" is name (names are not unique).
    bool removeFirst(const std::string& name);
    bool removeAll();
    // The first row whose column (one of "Name", "Vin", "Plate") equals word, ignoring case;
    // false with found unset when none matches.
    bool find(const std::string& column, const std::string& word, bool& found, LogRecord& out);

    // The column names, as the catalogue's header row shows them.
    static const std::vector<std::string>& ColumnNames();

  private:
    SqliteDb db_;
};

}  // namespace ketrel
