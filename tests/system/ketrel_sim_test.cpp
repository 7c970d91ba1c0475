// ketrel-sim as a program: started, opened as a serial device, asked, stopped. Real time,
// a second or two per test.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "system/child_process.h"

namespace {

using ketrel::test::ChildProcess;
using ketrel::test::OpenRaw;
using ketrel::test::ReadUntil;

// One run of the simulator.
struct SimProcess : ChildProcess {
    explicit SimProcess(std::vector<std::string> args)
        : ChildProcess(KETREL_SIM_BINARY, std::move(args)) {}
};

bool endsWithSync(const std::string& s) {
    return !s.empty() && s.back() == 'S';
}

// Sends a command and reads its answer up to the sync that follows it, from its first "V": an
// idle sync that came before (the test may be slow to write on a loaded machine) is left out.
std::string AnswerTo(int fd, const std::string& command) {
    ::tcflush(fd, TCIFLUSH);
    EXPECT_EQ(::write(fd, command.data(), command.size()), ssize_t(command.size()));
    std::string in = ReadUntil(
        fd, [](const std::string& s) { return s.find('V') != s.npos && endsWithSync(s); }, 10000);
    return in.substr(std::min(in.find('V'), in.size()));
}

TEST(KetrelSim, AnswersLikeTheConverterOnAPseudoTerminal) {
    std::string link = "/tmp/ketrel-sim-test-" + std::to_string(::getpid());
    SimProcess sim({"--converter", "dorvane", "--vehicle",
                    std::string(KETREL_DATA_DIR) + "/sim/idle_then_drive.vehicle", "--link", link});
    std::string device = sim.firstLine();
    ASSERT_EQ(device.rfind("/dev/pts/", 0), 0u) << device << sim.errors();
    EXPECT_EQ(std::filesystem::read_symlink(link).string(), device);

    int fd = OpenRaw(link);
    ASSERT_GE(fd, 0);
    EXPECT_EQ(ReadUntil(fd, endsWithSync, 10000), "S");

    std::string rpm = AnswerTo(fd, "010C07");
    ASSERT_EQ(rpm.rfind("V486B10410C", 0), 0u) << rpm;
    ASSERT_EQ(rpm.size(), 1 + 14 + 2 + 1u) << rpm;  // V, 7 bytes, check byte, S
    int value = std::stoi(rpm.substr(11, 4), nullptr, 16) / 4;
    EXPECT_GT(value, 600);  // idling
    EXPECT_LT(value, 900);

    std::string support = AnswerTo(fd, "010009");
    EXPECT_EQ(support.rfind("V486B104100BE3FB813", 0), 0u) << support;
    EXPECT_NE(support.find("V486B18410080080000"), std::string::npos) << support;
    ::close(fd);

    EXPECT_EQ(sim.stop(SIGTERM), 0);
    EXPECT_FALSE(std::filesystem::is_symlink(link));
}

TEST(KetrelSim, TheCountByteConverterWakesOnASpaceAndAnswersFrames) {
    SimProcess sim(
        {"--converter", "br3", "--vehicle", std::string(KETREL_DATA_DIR) + "/sim/pwm.vehicle"});
    std::string device = sim.firstLine();
    ASSERT_EQ(device.rfind("/dev/pts/", 0), 0u) << device << sim.errors();
    int fd = OpenRaw(device);
    ASSERT_GE(fd, 0);
    ::usleep(100'000);  // as the program waits after opening; the simulator sees the open
    auto ask = [fd](const std::string& out, std::size_t size) {
        EXPECT_EQ(::write(fd, out.data(), out.size()), static_cast<ssize_t>(out.size()));
        return ReadUntil(
            fd, [size](const std::string& s) { return s.size() >= size; }, 10000);
    };
    EXPECT_EQ(ask(" ", 2), std::string("\x01\xFF", 2));
    EXPECT_EQ(ask(std::string("\x41\x01", 2), 2), std::string("\x02\x01", 2));
    std::string support = ask(std::string("\x07\x61\x6A\xF1\x01\x00\x0A\x01", 8), 11);
    EXPECT_EQ(support.substr(0, 6), std::string("\x0A\x41\x6B\x10\x41\x00", 6));
    ::close(fd);
    EXPECT_EQ(sim.stop(SIGTERM), 0);
}

TEST(KetrelSim, RefusesWhatItCannotDoWithAClearMessage) {
    struct Case {
        std::vector<std::string> args;
        const char* message;
    };
    const Case cases[] = {
        {{"--converter", "tactrix"}, "pseudo-terminal can't carry a break"},
        {{"--converter", "kesh"}, "--hardware kesh --port sim:"},
        {{}, "--converter is required"},
        {{"--converter", "dorvane", "--vehicle", "/nonexistent.vehicle"},
         "can't open vehicle file"},
    };
    for (const auto& c : cases) {
        SimProcess sim(c.args);
        EXPECT_EQ(sim.stop(0), 2);
        EXPECT_NE(sim.errors().find(c.message), std::string::npos) << c.message;
    }
}

}  // namespace
