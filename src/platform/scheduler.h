#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>

#include "platform/clock.h"

namespace ketrel {

class Timer;

// The queue of armed timers and posted events that both event-loop backends run.
// Events due at the same moment run in the order they were armed or posted.
class Scheduler {
  public:
    explicit Scheduler(Clock& clock) : clock_(clock) {}
    Scheduler(const Scheduler&) = delete;
    Scheduler& operator=(const Scheduler&) = delete;

    Clock& clock() { return clock_; }

    // Runs fn at the given time (micros of the clock); returns a handle for cancel().
    std::uint64_t postAt(std::int64_t atMicros, std::function<void()> fn);
    // Runs fn as soon as the loop is pumped.
    std::uint64_t post(std::function<void()> fn) {
        return postAt(clock_.nowMicros(), std::move(fn));
    }
    void cancel(std::uint64_t handle);

    // Runs every event whose time has come; returns how many ran.
    int runDue();
    // Time of the earliest pending event, if any.
    std::optional<std::int64_t> nextDue() const;
    bool empty() const { return queue_.empty(); }
    // How many events are waiting: a queue that only grows is a leak of armed work.
    std::size_t size() const { return queue_.size(); }

  private:
    friend class Timer;
    using Key = std::pair<std::int64_t, std::uint64_t>;
    Clock& clock_;
    std::map<Key, std::function<void()>> queue_;
    std::map<std::uint64_t, Key> byHandle_;
    std::uint64_t nextSeq_ = 1;
};

// A timer on the event thread: interval in ms, enabled, one handler. While enabled it fires
// every interval; a one-shot timer disables itself in its handler.
class Timer {
  public:
    explicit Timer(Scheduler& scheduler, int intervalMs = 0)
        : sched_(scheduler), interval_(intervalMs) {}
    ~Timer();
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    void setInterval(int ms);
    int interval() const { return interval_; }
    // Enabling a stopped timer starts a new interval from now; enabling a running one changes
    // nothing.
    void setEnabled(bool on);
    bool enabled() const { return enabled_; }
    void start() { setEnabled(true); }
    void stop() { setEnabled(false); }
    // Stop and start again: a new interval from now.
    void restart() {
        stop();
        start();
    }
    void setHandler(std::function<void()> fn) { handler_ = std::move(fn); }

  private:
    void arm();
    void disarm();
    void fire();

    Scheduler& sched_;
    int interval_ = 0;
    bool enabled_ = false;
    std::uint64_t handle_ = 0;
    std::function<void()> handler_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace ketrel
