#include "platform/sqlite_db.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace ketrel {
namespace {

namespace fs = std::filesystem;

fs::path TempFile(const char* name) {
    fs::path p = fs::temp_directory_path() / (std::string("ketrel_sqlite_") + name);
    fs::remove(p);
    return p;
}

TEST(SqliteDb, ValuesTravelAsParametersAndBadFilesFailToOpen) {
    const fs::path file = TempFile("values.db");
    SqliteDb db;
    ASSERT_TRUE(db.open(file, true)) << db.error();
    ASSERT_TRUE(db.execScript("CREATE TABLE t (name TEXT, frames INTEGER, note TEXT);"));
    const std::string tricky = "a'b\" %_; DROP TABLE t; --";
    ASSERT_TRUE(db.exec("INSERT INTO t VALUES (?, ?, ?)", {tricky, 42LL, nullptr}));
    SqlRows rows;
    ASSERT_TRUE(db.query("SELECT name, frames, note FROM t WHERE name = ?", {tricky}, rows));
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0], (std::vector<std::string>{tricky, "42", ""}));
    EXPECT_FALSE(db.exec("INSERT INTO missing VALUES (1)"));
    EXPECT_NE(db.error().find("missing"), std::string::npos);
    fs::remove(file);

    // A missing or damaged file fails to open, with a message.
    const fs::path missing = TempFile("missing.db");
    SqliteDb bad;  // no error left from the queries above
    EXPECT_FALSE(bad.open(missing));
    EXPECT_FALSE(bad.error().empty());
    EXPECT_FALSE(fs::exists(missing));

    const fs::path damaged = TempFile("damaged.db");
    std::ofstream(damaged) << std::string(4096, 'x');
    EXPECT_FALSE(bad.open(damaged));
    EXPECT_FALSE(bad.isOpen());
    EXPECT_FALSE(bad.error().empty());
    fs::remove(damaged);
}

}  // namespace
}  // namespace ketrel
