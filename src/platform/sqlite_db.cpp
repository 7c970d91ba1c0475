#include "platform/sqlite_db.h"

#include <sqlite3.h>

#include <utility>

namespace ketrel {

namespace {

// Finalises a prepared statement however the caller leaves.
struct Statement {
    sqlite3_stmt* stmt = nullptr;
    ~Statement() { sqlite3_finalize(stmt); }
};

bool Bind(sqlite3_stmt* stmt, const std::vector<SqlValue>& params) {
    for (std::size_t i = 0; i < params.size(); ++i) {
        const int index = static_cast<int>(i) + 1;
        int rc = SQLITE_OK;
        if (const auto* text = std::get_if<std::string>(&params[i])) {
            rc = sqlite3_bind_text(stmt, index, text->data(), static_cast<int>(text->size()),
                                   SQLITE_TRANSIENT);
        } else if (const auto* whole = std::get_if<long long>(&params[i])) {
            rc = sqlite3_bind_int64(stmt, index, *whole);
        } else if (const auto* real = std::get_if<double>(&params[i])) {
            rc = sqlite3_bind_double(stmt, index, *real);
        } else {
            rc = sqlite3_bind_null(stmt, index);
        }
        if (rc != SQLITE_OK) return false;
    }
    return true;
}

}  // namespace

SqliteDb::~SqliteDb() {
    close();
}

SqliteDb::SqliteDb(SqliteDb&& other) noexcept
    : db_(std::exchange(other.db_, nullptr)),
      error_(std::move(other.error_)),
      errorCode_(other.errorCode_) {}

SqliteDb& SqliteDb::operator=(SqliteDb&& other) noexcept {
    if (this != &other) {
        close();
        db_ = std::exchange(other.db_, nullptr);
        error_ = std::move(other.error_);
        errorCode_ = other.errorCode_;
    }
    return *this;
}

bool SqliteDb::open(const std::filesystem::path& path, bool create) {
    close();
    int flags = SQLITE_OPEN_READWRITE;
    if (create) flags |= SQLITE_OPEN_CREATE;
    if (const int rc = sqlite3_open_v2(path.c_str(), &db_, flags, nullptr); rc != SQLITE_OK) {
        errorCode_ = rc;
        error_ = db_ ? sqlite3_errmsg(db_) : "out of memory";
        if (!create && !std::filesystem::exists(path)) error_ = "File not found: " + path.string();
        close();
        return false;
    }
    // A damaged file opens; its first read fails. Read the schema now so open() reports it.
    if (sqlite3_exec(db_, "SELECT count(*) FROM sqlite_master", nullptr, nullptr, nullptr) !=
        SQLITE_OK) {
        error_ = sqlite3_errmsg(db_);
        errorCode_ = sqlite3_errcode(db_);
        close();
        return false;
    }
    sqlite3_busy_timeout(db_, 2000);
    error_.clear();
    errorCode_ = 0;
    return true;
}

void SqliteDb::close() {
    if (db_) sqlite3_close_v2(db_);
    db_ = nullptr;
}

bool SqliteDb::fail() {
    error_ = db_ ? sqlite3_errmsg(db_) : "The database is not open";
    errorCode_ = db_ ? sqlite3_errcode(db_) : SQLITE_MISUSE;
    return false;
}

bool SqliteDb::exec(std::string_view sql, const std::vector<SqlValue>& params) {
    SqlRows ignored;
    return query(sql, params, ignored);
}

bool SqliteDb::query(std::string_view sql, const std::vector<SqlValue>& params, SqlRows& rows) {
    rows.clear();
    if (!db_) return fail();
    Statement s;
    if (sqlite3_prepare_v2(db_, sql.data(), static_cast<int>(sql.size()), &s.stmt, nullptr) !=
            SQLITE_OK ||
        !Bind(s.stmt, params))
        return fail();
    for (;;) {
        const int rc = sqlite3_step(s.stmt);
        if (rc == SQLITE_DONE) break;
        if (rc != SQLITE_ROW) return fail();
        const int columns = sqlite3_column_count(s.stmt);
        auto& row = rows.emplace_back();
        for (int c = 0; c < columns; ++c) {
            const auto* text = sqlite3_column_text(s.stmt, c);
            row.emplace_back(text ? reinterpret_cast<const char*>(text) : "");
        }
    }
    error_.clear();
    errorCode_ = 0;
    return true;
}

bool SqliteDb::execScript(const std::string& sql) {
    if (!db_) return fail();
    char* message = nullptr;
    if (const int rc = sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, &message);
        rc != SQLITE_OK) {
        errorCode_ = rc;
        error_ = message ? message : sqlite3_errmsg(db_);
        sqlite3_free(message);
        return false;
    }
    error_.clear();
    errorCode_ = 0;
    return true;
}

}  // namespace ketrel
