#include "platform/realtime_section.h"

#include <sched.h>
#include <sys/mman.h>

namespace ketrel {

RealtimeSection::RealtimeSection(bool lockMemory, bool enabled) {
    if (!enabled) return;
    sched_param old{};
    oldPolicy_ = sched_getscheduler(0);
    if (oldPolicy_ >= 0 && sched_getparam(0, &old) == 0) {
        oldPriority_ = old.sched_priority;
        // A high priority, short of the top, which the kernel's own real-time threads keep.
        sched_param rt{};
        rt.sched_priority = sched_get_priority_max(SCHED_FIFO) - 10;
        if (rt.sched_priority < 1) rt.sched_priority = 1;
        raised_ = sched_setscheduler(0, SCHED_FIFO, &rt) == 0;
    }
    if (lockMemory) locked_ = mlockall(MCL_CURRENT | MCL_FUTURE) == 0;
}

RealtimeSection::~RealtimeSection() {
    if (locked_) munlockall();
    if (raised_) {
        sched_param old{};
        old.sched_priority = oldPriority_;
        sched_setscheduler(0, oldPolicy_, &old);
    }
}

}  // namespace ketrel
