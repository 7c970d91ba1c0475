// Measures, on the real clock and at the port call, how far the ten bit edges of a 5-baud
// byte and the 25 ms wait before the inverted key byte land from their instants: with the
// machine idle, and with two CPU-bound processes running beside it. Prints the maximum and
// mean error of each case, and whether real-time priority and the memory lock were granted.
//
// Usage: bench_kline [bytes per case (3)] [waits per case (40)]
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "link/kline_timing.h"
#include "platform/null_serial_port.h"
#include "platform/realtime_section.h"
#include "platform/steady_clock.h"

namespace ketrel {
namespace {

// The real-time loop as the desktop program has it for these waits: a steady clock and a
// real sleep; nothing to pump.
class RealLoop : public EventLoop {
  public:
    void pump() override {}
    void waitAndPump() override {}
    void sleep(int ms) override { std::this_thread::sleep_for(std::chrono::milliseconds(ms)); }
    Scheduler& scheduler() override { return sched_; }

  private:
    SteadyClock clock_;
    Scheduler sched_{clock_};
};

// A port that records the instant of every Break call and every output, on the same counter
// the timer reads.
class StampingPort : public NullSerialPort {
  public:
    explicit StampingPort(EdgeTimer& timer) : timer_(timer) {}
    void setBreak(bool) override { breaks.push_back(timer_.nowMicros()); }
    void output(std::string_view) override { outputs.push_back(timer_.nowMicros()); }
    std::vector<std::int64_t> breaks, outputs;

  private:
    EdgeTimer& timer_;
};

struct Errors {
    std::vector<double> micros;
    void add(double e) { micros.push_back(e); }
    double max() const {
        double m = 0;
        for (double e : micros)
            m = std::max(m, std::abs(e));
        return m;
    }
    double mean() const {
        double s = 0;
        for (double e : micros)
            s += std::abs(e);
        return micros.empty() ? 0 : s / double(micros.size());
    }
};

struct CaseResult {
    Errors bits, wait, heldWait;
    bool realtime = false, locked = false;
};

CaseResult RunCase(int bytes, int waits) {
    RealLoop loop;
    EdgeTimer timer(loop);
    StampingPort port(timer);
    CaseResult r;
    for (int b = 0; b < bytes; ++b) {
        port.breaks.clear();
        auto timing = ClockOutFiveBaud(loop, port, 0x33);
        r.realtime = timing.realtime;
        r.locked = timing.memoryLocked;
        // Each edge against its slot, from the instant the first Break call was made.
        for (std::size_t i = 1; i < port.breaks.size(); ++i)
            r.bits.add(double(port.breaks[i] - port.breaks[0]) - double(i) * kFiveBaudBitMicros);
    }
    // The waits twice: taking the priority at each wait as WaitFromInstant does, then with it
    // held already when the instant is read, as a connect holding it through the handshake.
    for (int w = 0; w < 2 * waits; ++w) {
        std::optional<RealtimeSection> held;
        if (w >= waits) held.emplace(false);
        std::int64_t from = timer.nowMicros();
        WaitFromInstant(loop, from, kInvertedKeyDelayMicros);
        port.output(std::string(1, '\xCC'));
        (w < waits ? r.wait : r.heldWait)
            .add(double(port.outputs.back() - from) - kInvertedKeyDelayMicros);
        // Some idle time between waits, as between a byte's arrival and the next.
        std::this_thread::sleep_for(std::chrono::milliseconds(3 + w % 7));
    }
    return r;
}

void Print(const char* name, const CaseResult& r) {
    std::printf(
        "%-7s bit edges (%zu): max %.3f ms, mean %.3f ms | 25 ms wait (%zu): max %.3f ms, "
        "mean %.3f ms | priority held: max %.3f ms, mean %.3f ms | realtime %s, memory "
        "locked %s\n",
        name, r.bits.micros.size(), r.bits.max() / 1000, r.bits.mean() / 1000, r.wait.micros.size(),
        r.wait.max() / 1000, r.wait.mean() / 1000, r.heldWait.max() / 1000,
        r.heldWait.mean() / 1000, r.realtime ? "yes" : "no", r.locked ? "yes" : "no");
}

}  // namespace
}  // namespace ketrel

int main(int argc, char** argv) {
    int bytes = argc > 1 ? std::atoi(argv[1]) : 3;
    int waits = argc > 2 ? std::atoi(argv[2]) : 40;
    auto idle = ketrel::RunCase(bytes, waits);
    ketrel::Print("idle", idle);
    std::vector<pid_t> hogs;
    for (int i = 0; i < 2; ++i) {
        pid_t pid = fork();
        if (pid == 0) {
            volatile unsigned long n = 0;
            for (;;)
                n = n + 1;
        }
        if (pid > 0) hogs.push_back(pid);
    }
    auto loaded = ketrel::RunCase(bytes, waits);
    for (pid_t pid : hogs) {
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
    }
    ketrel::Print("loaded", loaded);
    return 0;
}
