#pragma once
#include <QObject>
#include <QTimer>
#include <chrono>

#include "platform/event_loop.h"
#include "platform/steady_clock.h"

namespace ketrel {

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
