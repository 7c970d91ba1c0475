#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>

#include "platform/sqlite_db.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

struct ToolRun {
    int status = -1;
    std::string out, err;
};

// The real tool copied into a folder of its own, which is then the program's folder, with a
// catalogue of two logs and one of the logs' files.
struct Installed {
    test::TempDir dir;
    Installed() {
        std::filesystem::copy_file(KETREL_EXPORT_BINARY, dir.path() / "ketrel-export");
        std::filesystem::create_directories(dir.path() / "System");
        SqliteDb db;
        EXPECT_TRUE(db.open(dir.path() / "System" / "LogRecords.db", true));
        EXPECT_TRUE(
            db.execScript(test::ReadFile(std::string(KETREL_DATA_DIR) + "/db/LogRecords.sql")));
        EXPECT_TRUE(db.exec("INSERT INTO LogRecords VALUES (?,?,?,?,?,?,?,?,?,?)",
                            {"trip", "3/4/2026", "2004", "Vantor", "Cresta", "VIN1", "PL8", 3LL,
                             "BR3ISO", "12000"}));
        EXPECT_TRUE(db.exec(
            "INSERT INTO LogRecords VALUES (?,?,?,?,?,?,?,?,?,?)",
            {"gone", "5/6/2026", "N/A", "N/A", "N/A", "N/A", "N/A", 9LL, "DORVANE", "N/A"}));
        test::WriteFile(dir.path() / "Log" / "trip.log",
                        "\"486B10410C1AF855\"\r\n\"486B104105A055\"\r\n\"486B10412F8055\"\r\n");
    }
    ToolRun run(const std::string& args) {
        auto out = dir.path() / "out", err = dir.path() / "err";
        std::string cmd = "'" + (dir.path() / "ketrel-export").string() + "' " + args + " >'" +
                          out.string() + "' 2>'" + err.string() + "' </dev/null";
        int raw = std::system(cmd.c_str());
        return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, test::ReadFile(out), test::ReadFile(err)};
    }
};

TEST(KetrelExportSaved, ListsTheCatalogueAndExportsASavedLogWithItsRowsType) {
    Installed tool;
    ToolRun list = tool.run("--list");
    EXPECT_EQ(list.status, 0) << list.err;
    EXPECT_EQ(list.out,
              "trip\tBR3ISO\t3/4/2026\t3\t2004\tVantor\tCresta\tVIN1\tPL8\t12000\n"
              "gone\tDORVANE\t5/6/2026\t9\tN/A\tN/A\tN/A\tN/A\tN/A\tN/A\n");

    // The ISO frames decode only when the row's type, not the default, picks the routine.
    ToolRun fin = tool.run("--saved trip --final");
    EXPECT_EQ(fin.status, 0) << fin.err;
    std::vector<std::string> lines = test::Lines(fin.out);
    EXPECT_NE(std::find(lines.begin(), lines.end(), "lblRPM\t1726"), lines.end());
    ToolRun csv = tool.run("--saved=trip");
    EXPECT_EQ(csv.status, 0) << csv.err;
    EXPECT_EQ(test::Lines(csv.out).size(), 4u);

    struct Case {
        const char *args, *message;
    } failures[] = {{"--saved nosuch", "no saved log is named \"nosuch\""},
                    {"--saved gone", "cannot open"}};
    for (const Case& c : failures) {
        ToolRun r = tool.run(c.args);
        EXPECT_EQ(r.status, 1) << c.args;
        EXPECT_NE(r.err.find(c.message), std::string::npos) << r.err;
        EXPECT_EQ(r.out, "");
    }
    std::filesystem::remove(tool.dir.path() / "System" / "LogRecords.db");
    ToolRun missing = tool.run("--list");
    EXPECT_EQ(missing.status, 1);
    EXPECT_NE(missing.err.find("LogRecords.db"), std::string::npos) << missing.err;
}

}  // namespace
}  // namespace ketrel
