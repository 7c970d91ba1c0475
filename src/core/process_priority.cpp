#include "core/process_priority.h"

#include <sys/resource.h>

#include <cerrno>

namespace ketrel {

void RaiseProcessPriority() {
    errno = 0;
    int current = getpriority(PRIO_PROCESS, 0);
    if (current == -1 && errno != 0) return;
    // The lowest niceness that setpriority accepts depends on privileges and RLIMIT_NICE:
    // take the first that works, from the strongest down to the present one.
    for (int nice = -20; nice < current; ++nice) {
        if (setpriority(PRIO_PROCESS, 0, nice) == 0) return;
    }
}

}  // namespace ketrel
