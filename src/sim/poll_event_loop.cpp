#include "sim/poll_event_loop.h"

#include <poll.h>
#include <time.h>

#include <algorithm>
#include <cerrno>
#include <vector>

namespace ketrel::sim {

void PollEventLoop::watch(int fd, std::function<void(short)> fn) {
    watched_[fd] = std::move(fn);
}

void PollEventLoop::unwatch(int fd) {
    watched_.erase(fd);
}

void PollEventLoop::sleep(int ms) {
    timespec ts{ms / 1000, static_cast<long>(ms % 1000) * 1'000'000L};
    while (nanosleep(&ts, &ts) != 0 && errno == EINTR) {
    }
}

void PollEventLoop::waitFor(int timeoutMs) {
    std::vector<pollfd> fds;
    for (const auto& [fd, fn] : watched_)
        fds.push_back(pollfd{fd, POLLIN, 0});
    int n = ::poll(fds.data(), fds.size(), timeoutMs);
    if (n > 0) {
        for (const auto& p : fds) {
            if (p.revents == 0) continue;
            auto it = watched_.find(p.fd);
            if (it != watched_.end()) {
                auto fn = it->second;  // the handler may unwatch itself
                fn(p.revents);
            }
        }
    }
    sched_.runDue();
}

void PollEventLoop::waitAndPump() {
    // Wake for the next timer, and at least every 100 ms so a stop request is seen.
    int timeout = 100;
    if (auto next = sched_.nextDue()) {
        std::int64_t wait = (*next - clock_.nowMicros() + 999) / 1000;
        timeout = static_cast<int>(std::clamp<std::int64_t>(wait, 0, 100));
    }
    waitFor(timeout);
}

void PollEventLoop::run(const volatile std::sig_atomic_t* stop) {
    while (!*stop)
        waitAndPump();
}

}  // namespace ketrel::sim
