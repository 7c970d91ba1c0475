#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>

#include "platform/sqlite_db.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

// Runs a shell command; its exit status and standard output.
std::pair<int, std::string> Shell(const std::string& cmd, const std::filesystem::path& out) {
    int raw = std::system((cmd + " >'" + out.string() + "' 2>&1 </dev/null").c_str());
    return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, test::ReadFile(out)};
}

// The page as a customer gets it: the real tool writes the PDF after a saved log and after a
// log file, and the text read back from the PDF has the vehicle, the captions and the codes.
TEST(KetrelExportReport, WritesThePageAsPdf) {
    if (std::system("command -v pdftotext >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "pdftotext (poppler-utils) is not installed";
    test::TempDir dir;
    const auto tool = dir.path() / "ketrel-export";
    std::filesystem::copy_file(KETREL_EXPORT_BINARY, tool);
    std::filesystem::create_directories(dir.path() / "System");
    SqliteDb db;
    ASSERT_TRUE(db.open(dir.path() / "System" / "LogRecords.db", true));
    ASSERT_TRUE(db.execScript(test::ReadFile(std::string(KETREL_DATA_DIR) + "/db/LogRecords.sql")));
    ASSERT_TRUE(db.exec("INSERT INTO LogRecords VALUES (?,?,?,?,?,?,?,?,?,?)",
                        {"shop", "3/4/2026", "1999", "DAEWOO", "N/A", "KLATA19Y1XB123456", "PL8",
                         3LL, "DORVANE", "84120"}));
    const std::string frames =
        "\"V486B10410C1AF8\"\r\n\"V486B10430133000000000\"\r\n\"V486B104100BE1FA813\"\r\n";
    test::WriteFile(dir.path() / "Log" / "shop.log", frames);
    test::WriteFile(dir.path() / "plain.log", frames);
    const auto pdf = dir.path() / "page.pdf", text = dir.path() / "text";

    auto [status, out] = Shell(
        "'" + tool.string() + "' --saved shop --report '" + pdf.string() + "'", dir.path() / "out");
    ASSERT_EQ(status, 0) << out;
    auto [pdfStatus, page] = Shell("pdftotext -layout '" + pdf.string() + "' -", text);
    ASSERT_EQ(pdfStatus, 0) << page;
    for (const char* want : {"KETREL REPORT", "YEAR:", "1999", "DAEWOO", "KLATA19Y1XB123456",
                             "84120", "SHORT TERM FUEL TRIM B2:", "THROTTLE POSITION:", "CODE:",
                             "P0133 - Oxygen Sensor Circuit Slow Response (Bank 1 Sensor 1) (TC)"})
        EXPECT_NE(page.find(want), std::string::npos) << want << "\n" << page;
    EXPECT_LT(page.find("VIN:"), page.find("CALCULATED LOAD:"));
    // A picture of the page, to look at.
    const std::string shots =
        std::filesystem::path(KETREL_EXPORT_BINARY).parent_path().parent_path() / "screenshots";
    std::filesystem::create_directories(shots);
    Shell("pdftoppm -png -r 80 -singlefile '" + pdf.string() + "' '" + shots + "/report_page'",
          text);

    // A log file has no catalogue row: the vehicle prints "N/A".
    auto [fileStatus, fileOut] =
        Shell("'" + tool.string() + "' --type DORVANE --report '" + pdf.string() + "' '" +
                  (dir.path() / "plain.log").string() + "'",
              dir.path() / "out");
    ASSERT_EQ(fileStatus, 0) << fileOut;
    page = Shell("pdftotext -layout '" + pdf.string() + "' -", text).second;
    EXPECT_EQ(page.find("DAEWOO"), std::string::npos) << page;
    EXPECT_NE(page.find("N/A"), std::string::npos) << page;
}

}  // namespace
}  // namespace ketrel
