#include "link/kline_timing.h"

#include "platform/realtime_section.h"

namespace ketrel {

std::array<FiveBaudSlot, 10> FiveBaudSlots(unsigned char address) {
    static constexpr const char* kNames[10] = {"START BIT", "BIT 1", "BIT 2", "BIT 3", "BIT 4",
                                               "BIT 5",     "BIT 6", "BIT 7", "BIT 8", "STOP BIT"};
    std::array<FiveBaudSlot, 10> slots{};
    for (int i = 0; i < 10; ++i) {
        bool high = i == 9 || (i > 0 && ((address >> (i - 1)) & 1) != 0);
        slots[i] = {kNames[i], !high, i * kFiveBaudBitMicros};
    }
    return slots;
}

std::int64_t EdgeTimer::counterMicros() {
    Clock& clock = loop_.clock();
    std::int64_t freq = clock.frequency();
    if (freq <= 0) return clock.nowMicros();
    // Split so that a nanosecond counter of a long-running machine does not overflow.
    std::int64_t count = clock.counter();
    return count / freq * 1'000'000 + count % freq * 1'000'000 / freq;
}

std::int64_t EdgeTimer::nowMicros() {
    return counterMicros();
}

std::int64_t EdgeTimer::waitUntil(std::int64_t atMicros) {
    bool spin = loop_.clock().frequency() > 0;
    std::int64_t now = counterMicros();
    // Without a counter there is nothing to spin on: sleep whole milliseconds up to the edge.
    std::int64_t lead = spin ? kSpinLeadMicros : 0;
    while (atMicros - now > lead) {
        std::int64_t ms = (atMicros - now - lead) / 1000;
        if (!spin && (atMicros - now) % 1000 != 0) ++ms;
        if (ms <= 0) break;
        loop_.sleep(static_cast<int>(ms));
        now = counterMicros();
    }
    if (!spin) return now;
    while (now < atMicros)
        now = counterMicros();
    return now;
}

std::vector<std::int64_t> EdgeTimer::runEdges(
    std::optional<std::int64_t> startMicros, std::span<const std::int64_t> offsets,
    const std::function<void(std::size_t, std::int64_t)>& atEdge, bool lockMemory) {
    RealtimeSection rt(lockMemory, loop_.realTime());
    gotRealtime_ = rt.raised();
    gotMemoryLock_ = rt.locked();
    // Timed from after the priority and the memory lock are in place, when no start is
    // given, so the time mlockall takes does not shorten the first slot.
    std::int64_t start = startMicros ? *startMicros : counterMicros();
    std::vector<std::int64_t> reached;
    reached.reserve(offsets.size());
    for (std::size_t i = 0; i < offsets.size(); ++i) {
        reached.push_back(waitUntil(start + offsets[i]));
        if (atEdge) atEdge(i, reached.back());
    }
    return reached;
}

FiveBaudTiming ClockOutFiveBaud(EventLoop& loop, SerialPort& port, unsigned char address,
                                const SlotStartFn& slotStart, const SlotEndFn& slotEnd) {
    const auto slots = FiveBaudSlots(address);
    std::array<std::int64_t, 11> offsets{};
    for (std::size_t i = 0; i < 10; ++i)
        offsets[i] = slots[i].offsetMicros;
    offsets[10] = 10 * kFiveBaudBitMicros;
    FiveBaudTiming timing;
    EdgeTimer timer(loop);
    auto atEdge = [&](std::size_t i, std::int64_t reached) {
        if (i < 10) port.setBreak(slots[i].breakOn);
        timing.edgeMicros[i] = reached;
        if (i > 0 && slotEnd)
            slotEnd(slots[i - 1], double(reached - timing.edgeMicros[i - 1]) / 1e6);
        if (i < 10 && slotStart) slotStart(slots[i]);
    };
    timer.runEdges(std::nullopt, offsets, atEdge, true);
    timing.realtime = timer.gotRealtime();
    timing.memoryLocked = timer.gotMemoryLock();
    return timing;
}

std::int64_t WaitFromInstant(EventLoop& loop, std::int64_t fromMicros, std::int64_t delayMicros) {
    EdgeTimer timer(loop);
    RealtimeSection rt(false, loop.realTime());
    return timer.waitUntil(fromMicros + delayMicros);
}

}  // namespace ketrel
