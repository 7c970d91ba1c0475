#include <gtest/gtest.h>

#include <sys/wait.h>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>

#include "export.h"
#include "export_session.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

const std::string kSession = std::string(KETREL_EXPORT_DATA) + "/session.log";

// What one run of the program gave.
struct ExportRun {
    int status = -1;
    std::string out, err;
    std::vector<std::string> lines() const {
        std::vector<std::string> v;
        std::istringstream in(out);
        for (std::string l; std::getline(in, l);)
            v.push_back(l);
        return v;
    }
    // The --final output as name -> text.
    std::map<std::string, std::string> fields() const {
        std::map<std::string, std::string> m;
        for (const std::string& l : lines()) {
            auto tab = l.find('\t');
            if (tab != std::string::npos) m[l.substr(0, tab)] = l.substr(tab + 1);
        }
        return m;
    }
};

std::string ReadFile(const std::filesystem::path& p) {
    std::ifstream in(p, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// Runs ketrel-export with the arguments, the standard input from `stdinFile` if given.
ExportRun Export(const std::string& args, const std::string& stdinFile = "") {
    static test::TempDir dir;
    std::string out = (dir.path() / "out").string(), err = (dir.path() / "err").string();
    std::string cmd =
        std::string("'") + KETREL_EXPORT_PATH + "' " + args + " >'" + out + "' 2>'" + err + "'";
    cmd += " <'" + (stdinFile.empty() ? std::string("/dev/null") : stdinFile) + "'";
    ExportRun r;
    int raw = std::system(cmd.c_str());
    r.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    r.out = ReadFile(out);
    r.err = ReadFile(err);
    return r;
}

// A log file with the given bytes.
std::string WriteLog(const std::string& name, const std::string& bytes) {
    static test::TempDir dir;
    std::filesystem::path p = dir.path() / name;
    std::ofstream(p, std::ios::binary) << bytes;
    return p.string();
}

TEST(KetrelExport, FinalShowsTheFieldsAfterTheLastFrameInEitherUnits) {
    struct Case {
        std::string args;
        std::map<std::string, std::string> expected;
    } cases[] = {
        {"--final",
         {{"lblRPM", "1726"},
          {"lblCoolant", "248"},
          {"lblSpeed", "62"},
          {"lblFFRPM", "1726"},
          {"lblNumberCodes", "3"},
          {"lblMil", "ON"},
          {"lblIntakeAir", "N/A"},
          {"msM1Grid[1,2]", "YES"},
          {"msM1Grid[2,2]", "NO"},
          {"msGridReady[1,3]", "8"},
          {"lblTemp(0)", "Deg {F}"},
          {"frmNewPids.lblBaro", "N/A"},
          {"LogData", ""}}},
        {"--units C,KPH,kPa --final",
         {{"lblCoolant", "120"}, {"lblSpeed", "100"}, {"lblTemp(0)", "Deg {C}"}}},
    };
    for (const Case& c : cases) {
        ExportRun r = Export(c.args + " '" + kSession + "'");
        EXPECT_EQ(r.status, 0) << r.err;
        std::map<std::string, std::string> fields = r.fields();
        for (const auto& [name, text] : c.expected) {
            ASSERT_TRUE(fields.count(name)) << name;
            EXPECT_EQ(fields[name], text) << name;
        }
        std::vector<std::string> lines = r.lines();
        EXPECT_TRUE(std::is_sorted(lines.begin(), lines.end()));
    }
}

TEST(KetrelExport, CsvHasAHeaderAndOneRowPerFrameFromAFileOrTheStandardInput) {
    for (bool viaStdin : {false, true}) {
        ExportRun r = viaStdin ? Export("-", kSession) : Export("'" + kSession + "'");
        EXPECT_EQ(r.status, 0) << r.err;
        EXPECT_EQ(r.err, "");
        std::vector<std::string> lines = r.lines();
        ASSERT_EQ(lines.size(), 9u);
        EXPECT_EQ(lines[0].rfind("frame,lblCoolant,lblIntakeAir,", 0), 0u);
        EXPECT_NE(lines[0].find(",frmNewPids.lblTimeClearDTC"), std::string::npos);
        // Row 2 is the RPM frame: coolant still N/A, RPM set.
        EXPECT_EQ(lines[2].rfind("V486B10410C1AF8,N/A,N/A,", 0), 0u);
        EXPECT_NE(lines[2].find(",1726,"), std::string::npos);
        EXPECT_EQ(lines[3].rfind("V486B104105A0,248,", 0), 0u);
        std::size_t columns = std::count(lines[0].begin(), lines[0].end(), ',');
        for (const std::string& l : lines)
            EXPECT_EQ(std::size_t(std::count(l.begin(), l.end(), ',')), columns) << l;
    }
}

TEST(KetrelExport, BadLinesAreSkippedWithTheirNumbersAndUnreadableLogsFail) {
    struct Case {
        std::string name, bytes;
        int status;
        const char* message;
        std::size_t rows;  // data rows of the CSV
    } cases[] = {
        {"empty.log", "", 1, "the log is empty", 0},
        {"open.log", "\"V486B10410C1AF8\r\n", 1, "line 1: a quote is left open", 0},
        {"binary.log", std::string("\x7f\x45\x4c\x46\x02\x01\x01\0\0\x89\xff\n\x01\x02", 14), 1,
         "line 1: unreadable characters", 0},
        {"long.log", std::string(100 * 1024, 'A') + "\r\n\"V486B10410C1AF8\"\r\n", 0,
         "line 1: longer than", 1},
        {"mixed.log", "\"V486B10410C1AF8\"\n\"V48\"6\"\nV486B104105A0\n\n", 0,
         "line 2: text after the closing quote", 2},
    };
    for (const Case& c : cases) {
        ExportRun r = Export("'" + WriteLog(c.name, c.bytes) + "'");
        EXPECT_EQ(r.status, c.status) << c.name << ": " << r.err;
        EXPECT_NE(r.err.find(c.message), std::string::npos) << c.name << ": " << r.err;
        std::size_t lines = r.lines().size();
        EXPECT_EQ(lines, c.rows == 0 ? 0 : c.rows + 1) << c.name;
    }
}

TEST(KetrelExport, OptionsAreCheckedBeforeAnythingIsRead) {
    struct Case {
        std::string args;
        int status;
        const char* message;
    } cases[] = {
        {"--type BR3", 2, "BR3 are not available yet"},
        {"--type=TACTRIXISO-9141", 2, "not available yet"},
        {"--type KESH", 2, "unknown interface type \"KESH\""},
        {"--units F,MPH,bar", 2, "pressure unit must be PSI or kPa"},
        {"--units C,KPH", 2, "three values"},
        {"--units", 2, "--units wants"},
        {"--verbose", 2, "unknown option"},
        {"'/nonexistent/x.log'", 1, "cannot open"},
        {"a.log b.log", 2, "only one log"},
    };
    for (const Case& c : cases) {
        ExportRun r = Export(
            c.args + (c.args.find(".log") == std::string::npos ? " '" + kSession + "'" : ""));
        EXPECT_EQ(r.status, c.status) << c.args;
        EXPECT_NE(r.err.find(c.message), std::string::npos) << c.args << ": " << r.err;
        EXPECT_EQ(r.out, "") << c.args;
    }
    ExportRun help = Export("--help");
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.out.rfind("Usage: ketrel-export", 0), 0u);
}

TEST(KetrelExport, CsvCellsAreQuotedOnlyWhenTheyNeedIt) {
    struct Case {
        const char* text;
        const char* cell;
    } cases[] = {{"1726", "1726"},
                 {"", ""},
                 {"OPEN (D)", "OPEN (D)"},
                 {"a,b", "\"a,b\""},
                 {"say \"hi\"", "\"say \"\"hi\"\"\""},
                 {" 5", "\" 5\""},
                 {"two\nlines", "\"two\nlines\""}};
    for (const Case& c : cases) {
        std::string row;
        exporter::AppendCsvCell(row, c.text);
        EXPECT_EQ(row, c.cell);
    }
}

TEST(KetrelExport, DecodingMessagesGoToTheErrorStreamWithTheLine) {
    exporter::ExportOptions options;
    std::istringstream in("\"V486B10410C1AF8\"\n");
    std::ostringstream out, err;
    EXPECT_EQ(exporter::RunExport(options, in, "log", out, err), 0);
    exporter::StreamDialogs dialogs(err);
    dialogs.context = "log: line 7";
    EXPECT_EQ(dialogs.show({"CODE(S) ALERT", "In Trouble Code", MsgButtons::YesNo}), MsgAnswer::No);
    EXPECT_NE(err.str().find("log: line 7: message \"CODE(S) ALERT\": In Trouble Code"),
              std::string::npos);
}

}  // namespace
}  // namespace ketrel
