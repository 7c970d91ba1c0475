#include "platform/steady_clock.h"

namespace ketrel {

std::int64_t SteadyClock::counter() {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(std::chrono::steady_clock::now() -
                                                                start_)
        .count();
}

std::uint32_t SteadyClock::tickCount() {
    return static_cast<std::uint32_t>(nowMicros() / 1000);
}

std::int64_t SteadyClock::nowMicros() {
    return std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() -
                                                                 start_)
        .count();
}

}  // namespace ketrel
