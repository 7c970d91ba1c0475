// ketrel-export --connect against ketrel-sim on a pseudo-terminal: a real session without a
// window, in real time, a few seconds per test.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "platform/sqlite_db.h"
#include "support/test_app.h"
#include "system/child_process.h"

namespace ketrel::test {
namespace {

std::vector<std::string> Cells(const std::string& line) {
    std::vector<std::string> v(1);
    for (char c : line) {
        if (c == ',') {
            v.emplace_back();
        } else {
            v.back() += c;
        }
    }
    return v;
}

// Bounds on real-time waits: only a hang reaches them. A loaded machine starts programs and
// connects slowly, so a test waits for what it needs to see, never for a fixed time.
constexpr int kStartMs = 20000, kScanMs = 60000;

// A car of data/sim that pulls away at once, so speed and engine speed move within seconds.
std::filesystem::path DrivingCar(const TempDir& dir, const std::string& name = "idle_then_drive") {
    std::string source = std::string(KETREL_DATA_DIR) + "/sim/" + name + ".vehicle";
    std::ifstream in(source);
    std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::size_t at = text.find("idle-time");
    std::size_t end = text.find('\n', at);
    return EditedCopy(source, text.substr(at, end - at), "idle-time  1",
                      dir.path() / (name + "-driving.vehicle"));
}

// The simulator on a pseudo-terminal, with a link to it in the temporary folder.
struct Car {
    explicit Car(const TempDir& dir, const std::string& converter = "dorvane",
                 const std::string& vehicle = "idle_then_drive")
        : link((dir.path() / ("car-" + vehicle)).string()),
          sim(KETREL_SIM_BINARY, {"--converter", converter, "--vehicle",
                                  DrivingCar(dir, vehicle).string(), "--link", link}) {
        device = sim.firstLine(kStartMs);
    }
    std::string link;
    ChildProcess sim;
    std::string device;
};

// ketrel-export with its own settings folder (empty unless a test writes one).
struct Export : ChildProcess {
    Export(const TempDir& dir, std::vector<std::string> args, const std::string& config = "config")
        : ChildProcess(KETREL_EXPORT_BINARY, std::move(args),
                       {"XDG_CONFIG_HOME=" + (dir.path() / config).string()}) {}
};

// Values of one column over all rows, in order, empty cells left out.
std::vector<std::string> Column(const std::vector<std::string>& lines, const std::string& name) {
    if (lines.empty()) return {};
    std::vector<std::string> header = Cells(lines[0]);
    auto col = std::find(header.begin(), header.end(), name) - header.begin();
    std::vector<std::string> values;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        std::vector<std::string> cells = Cells(lines[i]);
        if (std::size_t(col) < cells.size() && !cells[std::size_t(col)].empty())
            values.push_back(cells[std::size_t(col)]);
    }
    return values;
}

// How many values other than "N/A" one column took.
std::size_t Distinct(const std::vector<std::string>& lines, const std::string& column) {
    const std::vector<std::string> values = Column(lines, column);
    std::set<std::string> distinct(values.begin(), values.end());
    distinct.erase("N/A");
    return distinct.size();
}

// Lets a run without --seconds scan until its rows satisfy `enough`, then interrupts it, which
// ends the session cleanly; false if it never ended.
bool ScanUntil(ChildProcess& run,
               const std::function<bool(const std::vector<std::string>&)>& enough) {
    // Whole lines only: the last one may still be on its way.
    run.collect(kScanMs, [&] { return enough(Lines(run.out.substr(0, run.out.rfind('\n') + 1))); });
    ::kill(run.pid(), SIGINT);
    return run.collect(10000);
}

TEST(KetrelExportConnect, ScansTheSimulatedCarAndWritesARowPerFrame) {
    TempDir dir;
    Car car(dir);
    ASSERT_EQ(car.device.rfind("/dev/pts/", 0), 0u) << car.device << car.sim.errors();
    Export run(dir, {"--connect", "--hardware", "DORVANE PROTOCOL CONVERTER", "--port", car.link});
    ASSERT_TRUE(ScanUntil(run, [](const std::vector<std::string>& lines) {
        return lines.size() > 20 && Distinct(lines, "lblRPM") >= 2 &&
               Distinct(lines, "lblSpeed") >= 2;
    })) << run.err;
    EXPECT_EQ(run.exitCode(), 0) << run.err;

    std::vector<std::string> lines = Lines(run.out);
    ASSERT_GT(lines.size(), 20u) << run.err;
    EXPECT_EQ(lines[0].rfind("frame,lblCoolant,lblIntakeAir,", 0), 0u);
    for (const std::string& l : lines)
        EXPECT_EQ(Cells(l).size(), Cells(lines[0]).size()) << l;
    EXPECT_EQ(lines[1].rfind("V", 0), 0u) << lines[1];
    for (const char* column : {"lblRPM", "lblSpeed"})
        EXPECT_GE(Distinct(lines, column), 2u) << column << " never changed";

    const char* said[] = {"ketrel-export: CONNECTION STATUS:  CONNECTING...",
                          "ketrel-export: STATUS: Connecting With DORVANE...",
                          "ketrel-export: CONNECTION STATUS:  CONNECTED",
                          "ketrel-export: CONNECTION STATUS:  DISCONNECTED"};
    std::size_t at = 0;
    for (const char* line : said) {
        std::size_t found = run.err.find(line, at);
        ASSERT_NE(found, std::string::npos) << "missing in order: " << line << "\n" << run.err;
        at = found;
    }
    EXPECT_EQ(run.err.find("message"), std::string::npos) << run.err;
    // The settings are read, never written.
    EXPECT_FALSE(std::filesystem::exists(dir.path() / "config" / "Ketrel" / "Ketrel.ini"));
    // The simulator's link leads to its pseudo-terminal while it runs, and goes with it.
    EXPECT_EQ(std::filesystem::read_symlink(car.link).string(), car.device);
    EXPECT_EQ(car.sim.stop(SIGTERM), 0);
    EXPECT_FALSE(std::filesystem::is_symlink(car.link));
}

// The count-byte converter on the protocol its "BR3 Start" row of the settings file tries: the
// settings are read, and engine speed, road speed, coolant or the time since start moves.
TEST(KetrelExportConnect, ScansTheSimulatedBr3OnTheProtocolOfItsStartRow) {
    TempDir dir;
    std::filesystem::create_directories(dir.path() / "config" / "Ketrel");
    std::ofstream(dir.path() / "config" / "Ketrel" / "Ketrel.ini")
        << "[Settings]\nBR3 Start=3\nBR3SetDelay=True\n";
    Car car(dir, "br3", "pwm");
    ASSERT_EQ(car.device.rfind("/dev/pts/", 0), 0u) << car.sim.errors();
    Export run(dir, {"--connect", "--hardware", "br3", "--port", car.link});
    auto moving = [](const std::vector<std::string>& lines) {
        std::size_t changing = 0;
        for (const char* column : {"lblRPM", "lblSpeed", "lblCoolant", "lblTimeStart"})
            changing += Distinct(lines, column) >= 2;
        return changing;
    };
    ASSERT_TRUE(ScanUntil(run, [&](const std::vector<std::string>& lines) {
        return lines.size() > 10 && moving(lines) >= 1;
    })) << run.err;
    EXPECT_EQ(run.exitCode(), 0) << run.err;
    EXPECT_NE(run.err.find("Trying PWM..."), std::string::npos) << run.err;
    EXPECT_EQ(run.err.find("Trying VPW..."), std::string::npos) << run.err;
    EXPECT_GE(moving(Lines(run.out)), 1u) << "no value moved\n" << run.out;
    EXPECT_EQ(run.err.find("message"), std::string::npos) << run.err;
    EXPECT_EQ(car.sim.stop(SIGTERM), 0);
}

// The K-line cable wakes the simulated car for real (4 s idle, 2 s address byte) and scans it.
TEST(KetrelExportConnect, TheKlineCableWakesTheCarOnASimPortAndScansIt) {
    TempDir dir;
    Export run(dir, {"--connect", "--hardware", "kesh", "--port",
                     "sim:" + std::string(KETREL_DATA_DIR) + "/sim/iso9141.vehicle"});
    auto distinctFrames = [](const std::vector<std::string>& lines) {
        const std::vector<std::string> frames = Column(lines, "frame");
        return std::set(frames.begin(), frames.end()).size();
    };
    ASSERT_TRUE(ScanUntil(run, [&](const std::vector<std::string>& lines) {
        return distinctFrames(lines) > 5;
    })) << run.err;
    EXPECT_EQ(run.exitCode(), 0) << run.err;
    EXPECT_NE(run.err.find("CONNECTION STATUS:  CONNECTED"), std::string::npos) << run.err;
    EXPECT_GT(distinctFrames(Lines(run.out)), 5u) << run.out << run.err;
}

TEST(KetrelExportConnect, NoCarOrNoUsableConverterGivesAMessageAndAFailingStatus) {
    TempDir dir;
    const std::string missing = (dir.path() / "no-car-here").string();
    const std::string recheck =
        "message \"Error\": Please Recheck Your Settings Or Run Auto Detect.";
    struct Case {
        std::vector<std::string> args;
        std::string message;
    } cases[] = {
        {{"--connect", "--hardware", "dorvane", "--port", missing, "--seconds", "6"}, recheck},
        // A sim: port whose vehicle file isn't there is a port that isn't.
        {{"--connect", "--hardware", "dorvane", "--port",
          "sim:" + (dir.path() / "none.vehicle").string(), "--seconds", "3"},
         recheck},
        {{"--connect", "--seconds", "3"}, "OBD II Hardware Has Not Been Detected or Configured."},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.args.back());
        Export run(dir, c.args);
        ASSERT_TRUE(run.collect(kScanMs)) << run.err;
        EXPECT_EQ(run.exitCode(), 1) << run.err;
        EXPECT_NE(run.err.find(c.message), std::string::npos) << run.err;
        EXPECT_EQ(run.out, "");
    }
}

// --record: the session, on a car inside the program (a sim: port), goes into Log/NAME.log
// beside the program and a catalogue row when the time given is up. The program runs from a
// copy in the temporary folder, so Log/ and System/ are the test's own.
TEST(KetrelExportConnect, RecordsTheSessionIntoANamedLogAndTheCatalogue) {
    TempDir dir;
    namespace fs = std::filesystem;
    const fs::path built = fs::path(KETREL_EXPORT_BINARY).parent_path();
    fs::create_directories(dir.path() / "System");
    fs::copy_file(built / "ketrel-export", dir.path() / "ketrel-export");
    fs::copy_file(built / "System" / "LogRecords.db", dir.path() / "System" / "LogRecords.db");
    ChildProcess run((dir.path() / "ketrel-export").string(),
                     {"--connect", "--hardware", "dorvane", "--port", "sim:", "--record",
                      "first drive", "--seconds", "4"},
                     {"XDG_CONFIG_HOME=" + (dir.path() / "config").string()});
    ASSERT_TRUE(run.collect(kScanMs)) << run.err;
    EXPECT_EQ(run.exitCode(), 0) << run.err;
    EXPECT_NE(run.err.find("CONNECTION STATUS:  CONNECTED"), std::string::npos) << run.err;
    const std::vector<std::string> lines = Lines(ReadFile(dir.path() / "Log" / "first drive.log"));
    ASSERT_GT(lines.size(), 2u) << run.err;
    EXPECT_EQ(lines[2].rfind("\"V", 0), 0u) << lines[2];
    SqliteDb db;
    SqlRows rows;
    ASSERT_TRUE(
        db.open(dir.path() / "System" / "LogRecords.db") &&
        db.query("SELECT \"Name\", \"Frame\", \"Interface Type\" FROM LogRecords", {}, rows));
    EXPECT_EQ(rows, (SqlRows{{"first drive", std::to_string(lines.size()), "DORVANE"}}));
}
}  // namespace
}  // namespace ketrel::test
