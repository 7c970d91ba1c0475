#pragma once
// A program of the build run as a child process for the system tests: its standard output
// and error read through pipes, stopped by its own pid.
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace ketrel::test {

using SteadyClock = std::chrono::steady_clock;

// Reads from fd until `done(text)` holds or `ms` passed; returns all that was read.
inline std::string ReadUntil(int fd, const std::function<bool(const std::string&)>& done, int ms) {
    std::string out;
    auto end = SteadyClock::now() + std::chrono::milliseconds(ms);
    while (!done(out) && SteadyClock::now() < end) {
        pollfd p{fd, POLLIN, 0};
        if (::poll(&p, 1, 20) <= 0) continue;
        char buf[256];
        ssize_t n = ::read(fd, buf, sizeof buf);
        if (n <= 0) break;
        out.append(buf, static_cast<std::size_t>(n));
    }
    return out;
}

// One run of a program with its arguments and extra environment ("NAME=value").
class ChildProcess {
  public:
    ChildProcess(const std::string& binary, std::vector<std::string> args,
                 std::vector<std::string> env = {}) {
        int out[2], err[2];
        if (::pipe(out) != 0 || ::pipe(err) != 0) return;
        pid_ = ::fork();
        if (pid_ == 0) {
            ::dup2(out[1], 1);
            ::dup2(err[1], 2);
            ::close(out[0]);
            ::close(err[0]);
            for (std::string& e : env)
                ::putenv(e.data());
            std::vector<char*> argv{const_cast<char*>(binary.c_str())};
            for (auto& a : args)
                argv.push_back(a.data());
            argv.push_back(nullptr);
            ::execv(binary.c_str(), argv.data());
            ::_exit(127);
        }
        ::close(out[1]);
        ::close(err[1]);
        out_ = out[0];
        err_ = err[0];
    }
    ~ChildProcess() {
        if (pid_ > 0 && !exited_) {
            ::kill(pid_, SIGKILL);
            ::waitpid(pid_, nullptr, 0);
        }
        ::close(out_);
        ::close(err_);
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    pid_t pid() const { return pid_; }
    // The first line of standard output, waited for up to `ms` (a loaded machine starts a
    // program slowly).
    std::string firstLine(int ms = 20000) {
        std::string s = ReadUntil(
            out_, [](const std::string& t) { return t.find('\n') != std::string::npos; }, ms);
        return s.substr(0, s.find('\n'));
    }
    std::string errors() {
        return ReadUntil(
            err_, [](const std::string&) { return false; }, 300);
    }
    // Sends `sig` (0: none) and waits up to 3 s for the exit; the exit code, -1 if none.
    int stop(int sig) {
        if (sig) ::kill(pid_, sig);
        auto end = SteadyClock::now() + std::chrono::seconds(3);
        int status = 0;
        while (SteadyClock::now() < end) {
            if (::waitpid(pid_, &status, WNOHANG) == pid_) {
                exited_ = true;
                return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
            }
            ::usleep(10'000);
        }
        return -1;
    }

    // Standard output and error gathered so far by collect().
    std::string out, err;
    // Reads both outputs (so the program never blocks on a full pipe) until `done()` holds,
    // the program has ended, or `ms` passed. True when `done()` held or the program ended.
    bool collect(
        int ms, const std::function<bool()>& done = [] { return false; }) {
        auto end = SteadyClock::now() + std::chrono::milliseconds(ms);
        while (SteadyClock::now() < end) {
            pollfd p[2] = {{out_, POLLIN, 0}, {err_, POLLIN, 0}};
            bool open = false;
            if (::poll(p, 2, 20) > 0) {
                for (int i = 0; i < 2; ++i) {
                    if (!(p[i].revents & (POLLIN | POLLHUP))) continue;
                    char buf[4096];
                    ssize_t n = ::read(p[i].fd, buf, sizeof buf);
                    if (n > 0) (i == 0 ? out : err).append(buf, std::size_t(n));
                    open = open || n > 0;
                }
            }
            if (done()) return true;
            if (!open && finished()) return true;
        }
        return false;
    }
    // The exit code once the program has ended; -1 while it runs or if a signal ended it.
    int exitCode() const { return exited_ && WIFEXITED(status_) ? WEXITSTATUS(status_) : -1; }

  private:
    bool finished() {
        if (!exited_ && ::waitpid(pid_, &status_, WNOHANG) == pid_) exited_ = true;
        return exited_;
    }

    pid_t pid_ = -1;
    int out_ = -1, err_ = -1;
    bool exited_ = false;
    int status_ = 0;
};

}  // namespace ketrel::test
