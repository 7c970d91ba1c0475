#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "platform/event_loop.h"
#include "platform/serial_port.h"

namespace ketrel {

// One bit slot lasts 200 ms at 5 baud.
inline constexpr std::int64_t kFiveBaudBitMicros = 200'000;
// From the last key byte to the inverted key byte.
inline constexpr std::int64_t kInvertedKeyDelayMicros = 25'000;
// How long before an edge the timer stops sleeping and starts spinning on the counter.
inline constexpr std::int64_t kSpinLeadMicros = 2'000;

// One slot of a byte clocked out at 5 baud: its name in the connecting log, the Break state
// it sets (True holds the line low) and where it starts, from the start of the byte.
struct FiveBaudSlot {
    const char* name;
    bool breakOn;
    std::int64_t offsetMicros;
};

// The ten slots of `address` at 5 baud: start bit (low), eight bits least significant
// first (a 1 is a high line, Break off), stop bit (high).
std::array<FiveBaudSlot, 10> FiveBaudSlots(unsigned char address);

// Waits for instants on the loop's clock to a fraction of a millisecond: it sleeps until
// shortly before the instant and spins on the high-resolution counter for the rest. On a
// virtual loop the same code runs on virtual time and costs no real time.
class EdgeTimer {
  public:
    explicit EdgeTimer(EventLoop& loop) : loop_(loop) {}
    // The present instant in microseconds, on the counter (the loop's clock where there is
    // no counter).
    std::int64_t nowMicros();
    // Blocks until `atMicros`, nothing pumped; returns the instant reached (never earlier).
    std::int64_t waitUntil(std::int64_t atMicros);
    // Calls atEdge(i, reached) at startMicros + offsets[i] for each edge in turn, with the
    // thread at real-time priority where allowed (and memory locked if lockMemory); each edge
    // is timed from the start, so lateness does not add up. No start: from the moment the
    // priority is in place. Returns the instants reached.
    std::vector<std::int64_t> runEdges(std::optional<std::int64_t> startMicros,
                                       std::span<const std::int64_t> offsets,
                                       const std::function<void(std::size_t, std::int64_t)>& atEdge,
                                       bool lockMemory);
    // What the last runEdges was granted.
    bool gotRealtime() const { return gotRealtime_; }
    bool gotMemoryLock() const { return gotMemoryLock_; }

  private:
    std::int64_t counterMicros();

    EventLoop& loop_;
    bool gotRealtime_ = false;
    bool gotMemoryLock_ = false;
};

// Called right after a slot's Break is set (the connect logs "SENDING:  " + name there).
using SlotStartFn = std::function<void(const FiveBaudSlot&)>;
// Called when a slot has ended, with its measured length in seconds ("TIME ELAPSE:  ").
using SlotEndFn = std::function<void(const FiveBaudSlot&, double seconds)>;

// What a 5-baud byte took: the instant of each of the ten Break calls and of the end of the
// stop bit, and what the system granted for it.
struct FiveBaudTiming {
    std::array<std::int64_t, 11> edgeMicros{};
    bool realtime = false;
    bool memoryLocked = false;
};

// Clocks `address` out on the port's Break in ten 200 ms slots starting now, waiting out
// the stop bit too. Nothing is pumped for the 2 seconds of the byte.
FiveBaudTiming ClockOutFiveBaud(EventLoop& loop, SerialPort& port, unsigned char address,
                                const SlotStartFn& slotStart = {}, const SlotEndFn& slotEnd = {});

// Waits until `delayMicros` after `fromMicros` (an EdgeTimer::nowMicros instant, such as
// when the key bytes arrived) at real-time priority where allowed; the inverted key byte
// goes out at the instant returned. Under load the thread can lose a few ms before this
// takes the priority: a connect that holds a RealtimeSection(false, loop.realTime()) from
// the 5-baud byte to the inverted key byte keeps the wait within a few microseconds.
std::int64_t WaitFromInstant(EventLoop& loop, std::int64_t fromMicros, std::int64_t delayMicros);

}  // namespace ketrel
