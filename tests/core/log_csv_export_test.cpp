#include <gtest/gtest.h>

#include <sstream>

#include "core/csv_export.h"
#include "core/log_csv_export.h"
#include "recording/catalogue_fixture.h"

namespace ketrel {
namespace {

// The catalogue's export writes what ketrel-export writes for the same log, and only when a
// file was named.
TEST(LogCsvExport, WritesTheHighlightedLogAsTheExportToolDoes) {
    struct Case {
        const char* answer;  // the file named, "" when the question is cancelled
        const char* log;     // the log's content, nullptr when the file is missing
        const char* box;     // title of the box shown at the end, "" when none
    } cases[] = {{"out.csv", "session", "Export CSV"},
                 {"", "session", ""},
                 {"out.csv", "", "Error"},
                 {"out.csv", nullptr, "Error"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.answer) + (c.log ? c.log : "(no file)"));
        test::CatalogueApp a({test::Row("trip"), test::Row("b")});
        InstallLogCsvExport(a.app());
        const std::string session = test::ReadFile(KETREL_SESSION_LOG);
        if (c.log)
            test::WriteFile(a.t.dir.path() / "Log" / "trip.log",
                            std::string(c.log) == "session" ? session : c.log);
        const auto target = a.t.dir.path() / "out.csv";
        if (*c.answer) a.t.dialogs.answerNextSaveFile(target.string());
        a.open();
        a.s->cmdExportCsv.click();
        EXPECT_EQ(a.t.dialogs.fileQuestions.size(), c.log ? 1u : 0u);
        EXPECT_EQ(std::filesystem::exists(target), std::string(c.box) == "Export CSV");
        if (*c.box) {
            ASSERT_FALSE(a.t.dialogs.shown().empty());
            EXPECT_EQ(a.t.dialogs.shown().back().title, c.box);
        } else {
            EXPECT_TRUE(a.t.dialogs.shown().empty());
        }
        if (std::string(c.box) != "Export CSV") continue;
        std::istringstream in(session);
        std::ostringstream expected, err;
        CsvReplayOptions o;
        ASSERT_EQ(ReplayLogToCsv(o, in, "trip.log", expected, err), kCsvOk);
        EXPECT_EQ(test::ReadFile(target), expected.str());
        EXPECT_EQ(test::Lines(expected.str()).size(), 9u);
    }
}

}  // namespace
}  // namespace ketrel
