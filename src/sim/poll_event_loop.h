#pragma once
#include <chrono>
#include <csignal>
#include <functional>
#include <map>

#include "platform/event_loop.h"
#include "platform/steady_clock.h"

namespace ketrel::sim {

// A real-time event loop without a toolkit: the shared scheduler on the steady clock, and
// file descriptors watched with poll(). The simulator tool runs on it.
class PollEventLoop : public EventLoop {
  public:
    PollEventLoop() : sched_(clock_) {}

    void pump() override { waitFor(0); }
    void waitAndPump() override;
    void sleep(int ms) override;
    Scheduler& scheduler() override { return sched_; }

    // Runs fn with the poll events when fd is readable or hung up, until unwatch().
    void watch(int fd, std::function<void(short revents)> fn);
    void unwatch(int fd);
    // Runs the loop until *stop is set (a signal handler may set it); returns then.
    void run(const volatile std::sig_atomic_t* stop);

  private:
    // Waits at most timeoutMs for a descriptor, then runs what is due.
    void waitFor(int timeoutMs);

    SteadyClock clock_;
    Scheduler sched_;
    std::map<int, std::function<void(short)>> watched_;
};

}  // namespace ketrel::sim
