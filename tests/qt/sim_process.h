#pragma once
// ketrel-sim started as a program for the GUI tests: a simulated converter and car on a
// pseudo-terminal, reached through a symbolic link, stopped when the object goes.
#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

namespace ketrel::test {

class SimProcess {
  public:
    // Starts the simulator with the given vehicle file and waits (up to 3 s) for the link.
    SimProcess(const std::string& link, const std::string& vehicleFile,
               const std::string& converter = "dorvane")
        : link_(link) {
        std::filesystem::remove(link_);
        pid_ = ::fork();
        if (pid_ == 0) {
            int quiet = ::open("/dev/null", O_WRONLY);
            ::dup2(quiet, 1);
            std::vector<std::string> args{KETREL_SIM_BINARY, "--converter", converter, "--vehicle",
                                          vehicleFile,       "--link",      link_};
            std::vector<char*> argv;
            for (auto& a : args)
                argv.push_back(a.data());
            argv.push_back(nullptr);
            ::execv(KETREL_SIM_BINARY, argv.data());
            ::_exit(127);
        }
        auto end = std::chrono::steady_clock::now() + std::chrono::seconds(3);
        while (!std::filesystem::exists(link_) && std::chrono::steady_clock::now() < end)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    ~SimProcess() {
        if (pid_ <= 0) return;
        ::kill(pid_, SIGTERM);
        ::waitpid(pid_, nullptr, 0);
    }
    SimProcess(const SimProcess&) = delete;
    SimProcess& operator=(const SimProcess&) = delete;

    bool ready() const { return pid_ > 0 && std::filesystem::exists(link_); }
    const std::string& link() const { return link_; }

  private:
    std::string link_;
    pid_t pid_ = -1;
};

}  // namespace ketrel::test
