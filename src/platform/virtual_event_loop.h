#pragma once
#include <cstdint>
#include <functional>
#include <stdexcept>

#include "platform/event_loop.h"

namespace ketrel {

// A clock that only moves when told, and by a few microseconds at every counter read, so that
// a busy wait on the counter ends.
class VirtualClock : public Clock {
  public:
    std::int64_t frequency() override { return hasCounter_ ? 1'000'000 : 0; }
    std::int64_t counter() override {
        now_ += readStepMicros_;
        return now_;
    }
    std::uint32_t tickCount() override { return static_cast<std::uint32_t>(now_ / 1000); }
    std::int64_t nowMicros() override { return now_; }

    void advanceTo(std::int64_t micros) {
        if (micros > now_) now_ = micros;
    }
    void advanceBy(std::int64_t micros) { now_ += micros; }
    // For tests of a machine without a high-resolution counter.
    void setHasCounter(bool on) { hasCounter_ = on; }
    void setReadStepMicros(int step) { readStepMicros_ = step; }

  private:
    std::int64_t now_ = 0;
    int readStepMicros_ = 5;
    bool hasCounter_ = true;
};

// Thrown when virtual time runs past the limit a test set: a wait that would never end.
class VirtualTimeExceeded : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// The event loop of tests and of the in-process simulator: deterministic virtual time.
// pump() with nothing due lets 0.1 ms pass, waitAndPump() jumps to the next event, sleep()
// advances time.
class VirtualEventLoop : public EventLoop {
  public:
    VirtualEventLoop() : sched_(clock_) {}

    void pump() override;
    // Jumps to the next event and runs it.
    void waitAndPump() override;
    // Virtual time a pump lets pass when nothing is due.
    static constexpr std::int64_t kPumpStepMicros = 100;
    void sleep(int ms) override;
    Scheduler& scheduler() override { return sched_; }
    bool realTime() const override { return false; }
    VirtualClock& virtualClock() { return clock_; }
    std::int64_t nowMs() const { return clock_ms(); }

    // Runs events until `ms` of virtual time have passed.
    void runFor(int ms);
    // Runs events until pred() holds; false if maxMs passed first.
    bool runUntil(const std::function<bool()>& pred, int maxMs);
    // Virtual time after which any further pumping throws VirtualTimeExceeded (0: no limit).
    void setLimitMs(std::int64_t ms) { limitMicros_ = ms * 1000; }

  private:
    std::int64_t clock_ms() const { return const_cast<VirtualClock&>(clock_).nowMicros() / 1000; }
    void checkLimit();

    VirtualClock clock_;
    Scheduler sched_;
    std::int64_t limitMicros_ = 0;
};

}  // namespace ketrel
