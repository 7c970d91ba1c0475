// ketrel-sim as a program: started, opened as a serial device, asked, stopped. Real time,
// a second or two per test.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

// Reads from fd until `done(text)` holds or `ms` passed; returns all that was read.
std::string readUntil(int fd, const std::function<bool(const std::string&)>& done, int ms) {
    std::string out;
    auto end = Clock::now() + std::chrono::milliseconds(ms);
    while (!done(out) && Clock::now() < end) {
        pollfd p{fd, POLLIN, 0};
        if (::poll(&p, 1, 20) <= 0) continue;
        char buf[256];
        ssize_t n = ::read(fd, buf, sizeof buf);
        if (n <= 0) break;
        out.append(buf, static_cast<std::size_t>(n));
    }
    return out;
}

// One run of the tool, its output read through pipes.
class SimProcess {
  public:
    explicit SimProcess(std::vector<std::string> args) {
        int out[2], err[2];
        if (::pipe(out) != 0 || ::pipe(err) != 0) return;
        pid_ = ::fork();
        if (pid_ == 0) {
            ::dup2(out[1], 1);
            ::dup2(err[1], 2);
            ::close(out[0]);
            ::close(err[0]);
            std::vector<char*> argv{const_cast<char*>(KETREL_SIM_BINARY)};
            for (auto& a : args)
                argv.push_back(a.data());
            argv.push_back(nullptr);
            ::execv(KETREL_SIM_BINARY, argv.data());
            ::_exit(127);
        }
        ::close(out[1]);
        ::close(err[1]);
        out_ = out[0];
        err_ = err[0];
    }
    ~SimProcess() {
        if (pid_ > 0 && !exited_) {
            ::kill(pid_, SIGKILL);
            ::waitpid(pid_, nullptr, 0);
        }
        ::close(out_);
        ::close(err_);
    }
    // The first line of standard output: the device path.
    std::string firstLine() {
        std::string s = readUntil(
            out_, [](const std::string& t) { return t.find('\n') != std::string::npos; }, 3000);
        return s.substr(0, s.find('\n'));
    }
    std::string errors() {
        return readUntil(
            err_, [](const std::string&) { return false; }, 300);
    }
    // Sends `sig` (0: none) and waits up to 3 s for the exit; the exit code, -1 if none.
    int stop(int sig) {
        if (sig) ::kill(pid_, sig);
        auto end = Clock::now() + std::chrono::seconds(3);
        int status = 0;
        while (Clock::now() < end) {
            if (::waitpid(pid_, &status, WNOHANG) == pid_) {
                exited_ = true;
                return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
            }
            ::usleep(10'000);
        }
        return -1;
    }

  private:
    pid_t pid_ = -1;
    int out_ = -1, err_ = -1;
    bool exited_ = false;
};

int openRaw(const std::string& path) {
    int fd = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (fd < 0) return fd;
    termios t{};
    ::tcgetattr(fd, &t);
    ::cfmakeraw(&t);
    ::tcsetattr(fd, TCSANOW, &t);
    return fd;
}

bool endsWithSync(const std::string& s) {
    return !s.empty() && s.back() == 'S';
}

TEST(KetrelSim, AnswersLikeTheConverterOnAPseudoTerminal) {
    std::string link = "/tmp/ketrel-sim-test-" + std::to_string(::getpid());
    SimProcess sim({"--converter", "dorvane", "--vehicle",
                    std::string(KETREL_DATA_DIR) + "/sim/idle_then_drive.vehicle", "--link", link});
    std::string device = sim.firstLine();
    ASSERT_EQ(device.rfind("/dev/pts/", 0), 0u) << device << sim.errors();
    EXPECT_EQ(std::filesystem::read_symlink(link).string(), device);

    int fd = openRaw(link);
    ASSERT_GE(fd, 0);
    EXPECT_EQ(readUntil(fd, endsWithSync, 2000), "S");

    ASSERT_EQ(::write(fd, "010C07", 6), 6);
    std::string rpm = readUntil(fd, endsWithSync, 1000);
    ASSERT_EQ(rpm.rfind("V486B10410C", 0), 0u) << rpm;
    ASSERT_EQ(rpm.size(), 1 + 14 + 2 + 1u) << rpm;  // V, 7 bytes, check byte, S
    int value = std::stoi(rpm.substr(11, 4), nullptr, 16) / 4;
    EXPECT_GT(value, 600);  // idling
    EXPECT_LT(value, 900);

    ASSERT_EQ(::write(fd, "010009", 6), 6);
    std::string support = readUntil(fd, endsWithSync, 1000);
    EXPECT_EQ(support.rfind("V486B104100BE3FB813", 0), 0u) << support;
    EXPECT_NE(support.find("V486B18410080080000"), std::string::npos) << support;
    ::close(fd);

    EXPECT_EQ(sim.stop(SIGTERM), 0);
    EXPECT_FALSE(std::filesystem::is_symlink(link));
}

TEST(KetrelSim, RefusesWhatItCannotDoWithAClearMessage) {
    struct Case {
        std::vector<std::string> args;
        const char* message;
    };
    const Case cases[] = {
        {{"--converter", "br3"}, "the br3 converter is not available yet"},
        {{"--converter", "kesh"}, "the kesh converter is not available yet"},
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
