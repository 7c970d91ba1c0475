#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <sstream>

#include "export.h"
#include "export_session.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

const std::string kSession = std::string(KETREL_EXPORT_DATA) + "/session.log";

using test::Lines;
using test::ReadFile;

// One run of the real program: exit status, standard output and error.
struct ExportRun {
    int status = -1;
    std::string out, err;
};

ExportRun Export(const std::string& args, const std::string& stdinFile = "/dev/null") {
    static test::TempDir dir;
    std::filesystem::path out = dir.path() / "out", err = dir.path() / "err";
    std::string cmd = std::string("'") + KETREL_EXPORT_PATH + "' " + args + " >'" + out.string() +
                      "' 2>'" + err.string() + "' <'" + stdinFile + "'";
    int raw = std::system(cmd.c_str());
    return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, ReadFile(out), ReadFile(err)};
}

std::string WriteLog(const std::string& name, const std::string& bytes) {
    static test::TempDir dir;
    return "'" + test::WriteFile(dir.path() / name, bytes).string() + "'";
}

TEST(KetrelExport, FinalShowsEveryFieldAfterTheLastFrameSortedByName) {
    struct Case {
        std::string args;
        std::vector<std::string> expected;
    } cases[] = {
        {"--final",
         {"lblRPM\t1726", "lblCoolant\t248", "lblSpeed\t62", "lblFFRPM\tN/A", "lblNumberCodes\t3",
          "lblIntakeAir\tN/A", "msM1Grid[1,2]\tYES", "msGridReady[1,3]\t8", "lblTemp(0)\tDeg {F}",
          "frmNewPids.lblBaro\tN/A", "lstCodes\tP0133,P0000", "gridTroubleCode[2,1]\tP0133",
          "gridTroubleCode[3,1]\tP0000"}},
        {"--units C,KPH,kPa --final", {"lblCoolant\t120", "lblSpeed\t100", "lblTemp(0)\tDeg {C}"}},
        // The count-byte converter's logs: hex pairs, a J1850 answer behind the converter's own
        // byte, an ISO answer alone; both paths take the extended PIDs too.
        {"--type BR3 --final " + WriteLog("j1850.log",
                                          "\"08416B10410C1AF855\"\r\n"
                                          "\"07416B104105A055\"\r\n"
                                          "\"07416B10412F8055\"\r\n"),
         {"lblRPM\t1726", "lblCoolant\t248", "frmNewPids.lblFuelLevel\t50"}},
        {"--type BR3ISO --final " + WriteLog("iso.log",
                                             "\"486B10410C1AF855\"\r\n"
                                             "\"486B104105A055\"\r\n"
                                             "\"486B10412F8055\"\r\n"),
         {"lblRPM\t1726", "lblCoolant\t248", "frmNewPids.lblFuelLevel\t50"}},
        // The K-line cables' logs: the answers with the echo already cut, ISO 9141 or KWP 2000.
        {"--type KESHISO-9141 --final " + WriteLog("kesh.log",
                                                   "\"486B10410C1AF855\"\r\n"
                                                   "\"486B104105A055\"\r\n"),
         {"lblRPM\t1726", "lblCoolant\t248"}},
        {"--type=TACTRIXISO-9141 --final " + WriteLog("tactrix.log",
                                                      "\"84F110410C1AF855\"\r\n"
                                                      "\"83F1104105A055\"\r\n"),
         {"lblRPM\t1726", "lblCoolant\t248"}},
    };
    for (const Case& c : cases) {
        bool ownLog = c.args.find("--type") != std::string::npos;
        ExportRun r = Export(ownLog ? c.args : c.args + " '" + kSession + "'");
        EXPECT_EQ(r.status, 0) << r.err;
        std::vector<std::string> lines = Lines(r.out);
        for (const std::string& e : c.expected)
            EXPECT_NE(std::find(lines.begin(), lines.end(), e), lines.end()) << e;
        EXPECT_TRUE(std::is_sorted(lines.begin(), lines.end()));
    }
}

TEST(KetrelExport, CsvHasAHeaderAndOneRowPerFrameFromAFileOrTheStandardInput) {
    for (bool viaStdin : {false, true}) {
        ExportRun r = viaStdin ? Export("-", kSession) : Export("'" + kSession + "'");
        EXPECT_EQ(r.status, 0) << r.err;
        EXPECT_EQ(r.err, "");
        std::vector<std::string> lines = Lines(r.out);
        ASSERT_EQ(lines.size(), 9u);
        EXPECT_EQ(lines[0].rfind("frame,lblCoolant,lblIntakeAir,", 0), 0u);
        EXPECT_NE(lines[0].find(",frmNewPids.lblTimeClearDTC"), std::string::npos);
        EXPECT_EQ(lines[2].rfind("V486B10410C1AF8,N/A,N/A,", 0), 0u);  // RPM in, coolant not
        EXPECT_NE(lines[2].find(",1726,"), std::string::npos);
        EXPECT_EQ(lines[3].rfind("V486B104105A0,248,", 0), 0u);
        auto commas = [](const std::string& l) { return std::count(l.begin(), l.end(), ','); };
        for (const std::string& l : lines)
            EXPECT_EQ(commas(l), commas(lines[0])) << l;
    }
}

TEST(KetrelExport, BadLinesAreSkippedWithTheirNumbersAndUnreadableLogsFail) {
    struct Case {
        std::string name, bytes;
        int status;
        const char* message;
        std::size_t lines;  // of the CSV, header included
    } cases[] = {
        {"empty.log", "", 1, "the log is empty", 0},
        {"open.log", "\"V486B10410C1AF8\r\n", 1, "line 1: a quote is left open", 0},
        {"binary.log", std::string("\x7f\x45\x4c\x46\x02\0\0\x89\xff\n\x01", 11), 1,
         "line 1: unreadable characters", 0},
        {"long.log", std::string(100 * 1024, 'A') + "\r\n\"V486B10410C1AF8\"\r\n", 0,
         "line 1: longer than", 2},
        {"mixed.log", "\"V486B10410C1AF8\"\n\"V48\"6\"\nV486B104105A0\n\n", 0,
         "line 2: text after the closing quote", 3},
    };
    for (const Case& c : cases) {
        ExportRun r = Export(WriteLog(c.name, c.bytes));
        EXPECT_EQ(r.status, c.status) << c.name << ": " << r.err;
        EXPECT_NE(r.err.find(c.message), std::string::npos) << c.name << ": " << r.err;
        EXPECT_EQ(Lines(r.out).size(), c.lines) << c.name;
    }
}

TEST(KetrelExport, OptionsAreCheckedBeforeAnythingIsRead) {
    struct Case {
        std::string args;
        int status;
        const char* message;
    } cases[] = {
        {"--type KESH", 2, "unknown interface type \"KESH\""},
        {"--units F,MPH,bar", 2, "pressure unit must be PSI or kPa"},
        {"--units C,KPH", 2, "three values"},
        {"--verbose", 2, "unknown option"},
        {"'/nonexistent/x.log'", 1, "cannot open"},
        {"a.log b.log", 2, "only one log"},
    };
    for (const Case& c : cases) {
        bool hasLog = c.args.find(".log") != std::string::npos;
        ExportRun r = Export(c.args + (hasLog ? "" : " '" + kSession + "'"));
        EXPECT_EQ(r.status, c.status) << c.args;
        EXPECT_NE(r.err.find(c.message), std::string::npos) << c.args << ": " << r.err;
        EXPECT_EQ(r.out, "") << c.args;
    }
    ExportRun help = Export("--help");
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.out.rfind("Usage: ketrel-export", 0), 0u);
}

TEST(KetrelExport, LiveSessionOptionsAreCheckedAndKeptApartFromTheLogOnes) {
    struct Case {
        std::vector<std::string> args;
        const char* error;  // "" when the line is good
        std::string hardware, port;
        double seconds;
    } cases[] = {
        {{"--connect"}, "", "", "", 0},
        {{"--connect", "--hardware", "dorvane", "--port", "/tmp/car", "--seconds", "6"},
         "",
         kDorvane,
         "/tmp/car",
         6},
        {{"--connect", "--hardware=DORVANE PROTOCOL CONVERTER", "--port=3", "--seconds=0.5"},
         "",
         kDorvane,
         "3",
         0.5},
        {{"--connect", "--hardware", "Br3"}, "", kBr3, "", 0},
        {{"--connect", "--hardware", "kesh"}, "", kKesh, "", 0},
        {{"--connect", "--hardware=TACTRIX"}, "", kTactrix, "", 0},
        {{"--connect", "--hardware", "elm"}, "unknown converter \"elm\"", "", "", 0},
        {{"--connect", "--hardware"}, "--hardware wants", "", "", 0},
        {{"--connect", "--port", "COM3"}, "neither a port number nor a device path", "", "", 0},
        {{"--connect", "--port", "0"}, "neither a port number", "", "", 0},
        {{"--connect", "--port="}, "--port wants", "", "", 0},
        {{"--connect", "--seconds", "0"}, "above 0, not \"0\"", "", "", 0},
        {{"--connect", "--seconds", "-3"}, "above 0", "", "", 0},
        {{"--connect", "--seconds", "5s"}, "above 0, not \"5s\"", "", "", 0},
        {{"--connect", "--seconds", "nan"}, "above 0", "", "", 0},
        {{"--connect", "session.log"}, "--connect reads no log", "", "", 0},
        {{"--connect", "--type", "DORVANE"}, "--type is for logs", "", "", 0},
        {{"--connect", "--final"}, "--final is for logs", "", "", 0},
        {{"--seconds", "6"}, "need --connect", "", "", 0},
        {{"--port", "/dev/ttyUSB0", "session.log"}, "need --connect", "", "", 0},
        {{"--connect", "--record", "../up"}, "--record wants a log name", "", "", 0},
        {{"--connect", "--record="}, "--record wants a log name", "", "", 0},
        {{"--record", "drive"}, "need --connect", "", "", 0},
    };
    for (const Case& c : cases) {
        std::string line;
        for (const std::string& a : c.args)
            line += a + " ";
        SCOPED_TRACE(line);
        exporter::ExportOptions o;
        std::string error = exporter::ParseExportArgs(c.args, o);
        if (*c.error) {
            EXPECT_NE(error.find(c.error), std::string::npos) << error;
            continue;
        }
        EXPECT_EQ(error, "");
        EXPECT_TRUE(o.connect);
        EXPECT_EQ(o.hardware, c.hardware);
        EXPECT_EQ(o.port, c.port);
        EXPECT_DOUBLE_EQ(o.seconds, c.seconds);
    }
}

TEST(KetrelExport, CsvCellsAreQuotedOnlyWhenTheyNeedIt) {
    struct Case {
        const char *text, *cell;
    } cases[] = {{"1726", "1726"},   {"OPEN (D)", "OPEN (D)"},
                 {"a,b", "\"a,b\""}, {"say \"hi\"", "\"say \"\"hi\"\"\""},
                 {" 5", "\" 5\""},   {"two\nlines", "\"two\nlines\""}};
    for (const Case& c : cases) {
        std::string row;
        exporter::AppendCsvCell(row, c.text);
        EXPECT_EQ(row, c.cell);
    }
}

TEST(KetrelExport, MessageBoxesGoToTheErrorStreamWithTheLine) {
    std::ostringstream err;
    exporter::StreamDialogs dialogs(err);
    dialogs.context = "log: line 7";
    EXPECT_EQ(dialogs.show({"CODE(S) ALERT", "In Trouble Code", MsgButtons::YesNo}), MsgAnswer::No);
    EXPECT_EQ(err.str(),
              "ketrel-export: log: line 7: message \"CODE(S) ALERT\": In Trouble Code\n");
}

}  // namespace
}  // namespace ketrel
