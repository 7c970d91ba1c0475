#include "platform/virtual_event_loop.h"

#include <algorithm>
#include <string>

namespace ketrel {

void VirtualEventLoop::checkLimit() {
    if (limitMicros_ > 0 && clock_.nowMicros() > limitMicros_) {
        throw VirtualTimeExceeded("virtual time passed " + std::to_string(limitMicros_ / 1000) +
                                  " ms");
    }
}

void VirtualEventLoop::pump() {
    checkLimit();
    if (sched_.runDue() > 0) return;
    // Nothing due: a pump returns at once on the desktop too, having let a sliver of time
    // pass. A loop that pumps once per step (a search) thus costs little time, and a
    // pumped wait still reaches its next event.
    std::int64_t step = clock_.nowMicros() + kPumpStepMicros;
    auto next = sched_.nextDue();
    clock_.advanceTo(next ? std::min(*next, step) : step);
    checkLimit();
    sched_.runDue();
}

void VirtualEventLoop::waitAndPump() {
    checkLimit();
    if (sched_.runDue() > 0) return;
    auto next = sched_.nextDue();
    clock_.advanceTo(next ? *next : clock_.nowMicros() + 1000);
    checkLimit();
    sched_.runDue();
}

void VirtualEventLoop::sleep(int ms) {
    clock_.advanceBy(std::int64_t(ms) * 1000);
}

void VirtualEventLoop::runFor(int ms) {
    std::int64_t end = clock_.nowMicros() + std::int64_t(ms) * 1000;
    while (true) {
        sched_.runDue();
        auto next = sched_.nextDue();
        if (!next || *next > end) break;
        clock_.advanceTo(*next);
        checkLimit();
    }
    clock_.advanceTo(end);
}

bool VirtualEventLoop::runUntil(const std::function<bool()>& pred, int maxMs) {
    std::int64_t end = clock_.nowMicros() + std::int64_t(maxMs) * 1000;
    while (!pred()) {
        sched_.runDue();
        if (pred()) return true;
        auto next = sched_.nextDue();
        if (!next || *next > end) {
            clock_.advanceTo(end);
            return pred();
        }
        clock_.advanceTo(*next);
        checkLimit();
    }
    return true;
}

}  // namespace ketrel
