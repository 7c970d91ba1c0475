#pragma once
#include <chrono>
#include <cstdint>

#include "platform/clock.h"

namespace ketrel {

// The real clock of the desktop program and the simulator tool: a nanosecond counter and
// milliseconds since the clock was made.
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

}  // namespace ketrel
