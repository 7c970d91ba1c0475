#pragma once
#include <cstdint>

namespace ketrel {

// The time sources the logic reads: a high-resolution counter and a millisecond tick count.
class Clock {
  public:
    virtual ~Clock() = default;
    // Counts per second of counter(); 0 when the machine has no high-resolution counter.
    virtual std::int64_t frequency() = 0;
    // Current value of the high-resolution counter.
    virtual std::int64_t counter() = 0;
    // Milliseconds since an arbitrary start, as a 32-bit wrapping count.
    virtual std::uint32_t tickCount() = 0;
    // Microseconds since the clock's start; what the scheduler orders timers by.
    virtual std::int64_t nowMicros() = 0;
};

}  // namespace ketrel
