// ketrel-export over the catalogue of saved logs: the list, a saved log's rows and its page as
// a PDF, each as the real tool gives them.
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

// Runs a shell command; its exit status, standard output and error.
ToolRun Shell(const std::string& cmd, const std::filesystem::path& dir) {
    auto out = dir / "out", err = dir / "err";
    int raw =
        std::system((cmd + " >'" + out.string() + "' 2>'" + err.string() + "' </dev/null").c_str());
    return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, test::ReadFile(out), test::ReadFile(err)};
}

// The real tool copied into a folder of its own, which is then the program's folder, with a
// catalogue of three logs and two of the logs' files.
struct Installed {
    test::TempDir dir;
    Installed() {
        std::filesystem::copy_file(KETREL_EXPORT_BINARY, dir.path() / "ketrel-export");
        std::filesystem::create_directories(dir.path() / "System");
        SqliteDb db;
        EXPECT_TRUE(db.open(dir.path() / "System" / "LogRecords.db", true));
        EXPECT_TRUE(
            db.execScript(test::ReadFile(std::string(KETREL_DATA_DIR) + "/db/LogRecords.sql")));
        const std::vector<std::vector<SqlValue>> rows = {
            {"trip", "3/4/2026", "2004", "Vantor", "Cresta", "VIN1", "PL8", 3LL, "BR3ISO", "12000"},
            {"gone", "5/6/2026", "N/A", "N/A", "N/A", "N/A", "N/A", 9LL, "DORVANE", "N/A"},
            {"shop", "3/4/2026", "1999", "DAEWOO", "N/A", "KLATA19Y1XB123456", "PL8", 3LL,
             "DORVANE", "84120"}};
        for (const std::vector<SqlValue>& row : rows)
            EXPECT_TRUE(db.exec("INSERT INTO LogRecords VALUES (?,?,?,?,?,?,?,?,?,?)", row));
        test::WriteFile(dir.path() / "Log" / "trip.log",
                        "\"486B10410C1AF855\"\r\n\"486B104105A055\"\r\n\"486B10412F8055\"\r\n");
        test::WriteFile(dir.path() / "Log" / "shop.log", kShopFrames);
    }
    ToolRun run(const std::string& args) {
        return Shell("'" + (dir.path() / "ketrel-export").string() + "' " + args, dir.path());
    }
    static constexpr const char* kShopFrames =
        "\"V486B10410C1AF8\"\r\n\"V486B10430133000000000\"\r\n\"V486B104100BE1FA813\"\r\n";
};

TEST(KetrelExportSaved, ListsTheCatalogueAndExportsASavedLogWithItsRowsType) {
    Installed tool;
    ToolRun list = tool.run("--list");
    EXPECT_EQ(list.status, 0) << list.err;
    EXPECT_EQ(list.out,
              "trip\tBR3ISO\t3/4/2026\t3\t2004\tVantor\tCresta\tVIN1\tPL8\t12000\n"
              "gone\tDORVANE\t5/6/2026\t9\tN/A\tN/A\tN/A\tN/A\tN/A\tN/A\n"
              "shop\tDORVANE\t3/4/2026\t3\t1999\tDAEWOO\tN/A\tKLATA19Y1XB123456\tPL8\t84120\n");

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

// The page as a customer gets it: the tool writes the PDF after a saved log and after a log
// file, and the text read back from the PDF has the vehicle, the captions and the codes.
TEST(KetrelExportSaved, WritesThePageAsPdf) {
    if (std::system("command -v pdftotext >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "pdftotext (poppler-utils) is not installed";
    Installed tool;
    const std::string pdf = (tool.dir.path() / "page.pdf").string();
    const auto text = [&] { return Shell("pdftotext -layout '" + pdf + "' -", tool.dir.path()); };

    ToolRun saved = tool.run("--saved shop --report '" + pdf + "'");
    ASSERT_EQ(saved.status, 0) << saved.err;
    ToolRun page = text();
    ASSERT_EQ(page.status, 0) << page.err;
    for (const char* want : {"KETREL REPORT", "YEAR:", "1999", "DAEWOO", "KLATA19Y1XB123456",
                             "84120", "SHORT TERM FUEL TRIM B2:", "THROTTLE POSITION:", "CODE:",
                             "P0133 - Oxygen Sensor Circuit Slow Response (Bank 1 Sensor 1) (TC)"})
        EXPECT_NE(page.out.find(want), std::string::npos) << want << "\n" << page.out;
    EXPECT_LT(page.out.find("VIN:"), page.out.find("CALCULATED LOAD:"));
    // A picture of the page, to look at.
    const std::string shots =
        std::filesystem::path(KETREL_EXPORT_BINARY).parent_path().parent_path() / "screenshots";
    std::filesystem::create_directories(shots);
    Shell("pdftoppm -png -r 80 -singlefile '" + pdf + "' '" + shots + "/report_page'",
          tool.dir.path());

    // A log file has no catalogue row: the vehicle prints "N/A".
    const auto plain = test::WriteFile(tool.dir.path() / "plain.log", Installed::kShopFrames);
    ToolRun file = tool.run("--type DORVANE --report '" + pdf + "' '" + plain.string() + "'");
    ASSERT_EQ(file.status, 0) << file.err;
    page = text();
    EXPECT_EQ(page.out.find("DAEWOO"), std::string::npos) << page.out;
    EXPECT_NE(page.out.find("N/A"), std::string::npos) << page.out;
}

}  // namespace
}  // namespace ketrel
