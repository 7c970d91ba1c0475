#pragma once
#include "platform/clock.h"
#include "platform/scheduler.h"

namespace ketrel {

// The one event thread as the logic sees it: a pump that runs what is due, a blocking sleep
// during which no handler runs, and a wait that blocks until something happens.
class EventLoop {
  public:
    virtual ~EventLoop() = default;
    // Runs every event that is due now and returns at once (the nested pump of pumped waits).
    virtual void pump() = 0;
    // Blocks until at least one event has been handled (used by modal waits).
    virtual void waitAndPump() = 0;
    // Blocks for ms milliseconds; time passes, no handler runs, serial bytes wait in the buffer.
    virtual void sleep(int ms) = 0;
    virtual Scheduler& scheduler() = 0;
    // Whether time on this loop is the machine's own: only then is it worth raising the
    // thread's priority or spinning for precise edges.
    virtual bool realTime() const { return true; }
    Clock& clock() { return scheduler().clock(); }
};

}  // namespace ketrel
