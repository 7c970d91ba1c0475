#include "platform/scheduler.h"

namespace ketrel {

std::uint64_t Scheduler::postAt(std::int64_t atMicros, std::function<void()> fn) {
    std::uint64_t seq = nextSeq_++;
    Key key{atMicros, seq};
    queue_.emplace(key, std::move(fn));
    byHandle_.emplace(seq, key);
    return seq;
}

void Scheduler::cancel(std::uint64_t handle) {
    auto it = byHandle_.find(handle);
    if (it == byHandle_.end()) return;
    queue_.erase(it->second);
    byHandle_.erase(it);
}

int Scheduler::runDue() {
    // Only events already due when the pass starts run now; what they post waits for the next pass.
    std::int64_t now = clock_.nowMicros();
    std::uint64_t limitSeq = nextSeq_;
    int count = 0;
    while (true) {
        auto it = queue_.begin();
        while (it != queue_.end() && it->first.second >= limitSeq)
            ++it;
        if (it == queue_.end() || it->first.first > now) break;
        auto fn = std::move(it->second);
        byHandle_.erase(it->first.second);
        queue_.erase(it);
        ++count;
        fn();
    }
    return count;
}

std::optional<std::int64_t> Scheduler::nextDue() const {
    if (queue_.empty()) return std::nullopt;
    return queue_.begin()->first.first;
}

Timer::~Timer() {
    *alive_ = false;
    disarm();
}

void Timer::setInterval(int ms) {
    interval_ = ms;
    if (enabled_) {
        disarm();
        arm();
    }
}

void Timer::setEnabled(bool on) {
    if (on == enabled_) return;
    enabled_ = on;
    if (on) {
        arm();
    } else {
        disarm();
    }
}

void Timer::arm() {
    // An interval of 0 never fires: a timer with no interval is a stopped timer.
    if (interval_ <= 0) return;
    std::int64_t at = sched_.clock().nowMicros() + std::int64_t(interval_) * 1000;
    handle_ = sched_.postAt(at, [this, alive = alive_] {
        if (*alive) fire();
    });
}

void Timer::disarm() {
    if (handle_ != 0) {
        sched_.cancel(handle_);
        handle_ = 0;
    }
}

void Timer::fire() {
    handle_ = 0;
    if (!enabled_) return;
    arm();  // periodic: the next interval counts from this firing
    // A handler that pumps may see its own timer fire again, as on the desktop: a screen
    // re-shown modally from its own time-out handler keeps its time-outs working.
    if (handler_) {
        auto fn = handler_;  // the handler may replace itself or the timer may go away
        fn();
    }
}

}  // namespace ketrel
