#pragma once
#include <QObject>
#include <QTimer>
#include <chrono>

#include "platform/event_loop.h"

namespace ketrel {

// The machine's steady clock, in the units the logic reads.
class SteadyClock : public Clock {
  public:
    SteadyClock() : start_(std::chrono::steady_clock::now()) {}
    std::int64_t frequency() override { return 1'000'000'000; }
    std::int64_t counter() override;
    std::uint32_t tickCount() override;
    std::int64_t nowMicros() override;

  private:
    std::chrono::steady_clock::time_point start_;
};

// The event loop of the desktop program: the shared scheduler driven from Qt's loop by one
// single-shot timer set to the next deadline, re-armed whenever Qt is about to wait.
class QtEventLoop : public QObject, public EventLoop {
    Q_OBJECT
  public:
    explicit QtEventLoop(QObject* parent = nullptr);

    void pump() override;
    void waitAndPump() override;
    void sleep(int ms) override;
    Scheduler& scheduler() override { return sched_; }

    // Sets the Qt timer to the earliest deadline of the scheduler (or stops it).
    void rearm();

  private:
    void runDue();

    SteadyClock clock_;
    Scheduler sched_;
    QTimer timer_;
    std::int64_t armedFor_ = 0;  // the deadline the timer is set to
};

}  // namespace ketrel
