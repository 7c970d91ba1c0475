#pragma once
#include <filesystem>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

struct sqlite3;

namespace ketrel {

// A value bound to a statement parameter or read from a column.
using SqlValue = std::variant<std::nullptr_t, long long, double, std::string>;
// Rows of a query, each column as text (NULL as an empty text).
using SqlRows = std::vector<std::vector<std::string>>;

// One open SQLite database file, the store of the program's small tables (log catalogue,
// glossary, fuel samples). Values always travel as bound parameters, never inside the SQL
// text; every failure leaves the library's own message in error().
class SqliteDb {
  public:
    SqliteDb() = default;
    ~SqliteDb();
    SqliteDb(const SqliteDb&) = delete;
    SqliteDb& operator=(const SqliteDb&) = delete;
    SqliteDb(SqliteDb&& other) noexcept;
    SqliteDb& operator=(SqliteDb&& other) noexcept;

    // Opens the file for reading and writing. The program expects its databases to be in
    // place, so a missing file is an error unless create is set (the build's maker of them).
    bool open(const std::filesystem::path& path, bool create = false);
    void close();
    bool isOpen() const { return db_ != nullptr; }

    // Runs one statement with its ? parameters bound in order.
    bool exec(std::string_view sql, const std::vector<SqlValue>& params = {});
    // Runs one query with its ? parameters bound in order; rows holds the result.
    bool query(std::string_view sql, const std::vector<SqlValue>& params, SqlRows& rows);
    // Runs several statements without parameters (a schema file).
    bool execScript(const std::string& sql);

    const std::string& error() const { return error_; }
    // The library's result code of the last failure (14 a file that cannot be opened, 26 a
    // file that is not a database), 0 after a success; error boxes show it as the number.
    int errorCode() const { return errorCode_; }

  private:
    bool fail();
    sqlite3* db_ = nullptr;
    std::string error_;
    int errorCode_ = 0;
};

}  // namespace ketrel
