#include "platform/virtual_event_loop.h"

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
    auto next = sched_.nextDue();
    if (next) {
        clock_.advanceTo(*next);
    } else {
        clock_.advanceBy(1000);  // nothing armed at all: let a millisecond pass
    }
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
