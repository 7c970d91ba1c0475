#include "link/kline_timing.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/null_serial_port.h"
#include "platform/virtual_event_loop.h"

namespace ketrel {
namespace {

// Records the virtual instant and state of every Break call.
class BreakRecorder : public NullSerialPort {
  public:
    explicit BreakRecorder(VirtualClock& clock) : clock_(clock) {}
    void setBreak(bool on) override { calls.push_back({clock_.nowMicros(), on}); }
    struct Call {
        std::int64_t at;
        bool on;
    };
    std::vector<Call> calls;

  private:
    VirtualClock& clock_;
};

TEST(KlineTiming, FiveBaudByteLandsOnItsSlots) {
    // With a counter the edges land within a few counter reads of their slot; without one
    // the timer sleeps whole milliseconds and still ends, at most 1 ms late.
    for (bool hasCounter : {true, false}) {
        SCOPED_TRACE(hasCounter);
        VirtualEventLoop loop;
        loop.virtualClock().setHasCounter(hasCounter);
        loop.virtualClock().advanceBy(12'345);
        loop.setLimitMs(3000);
        BreakRecorder port(loop.virtualClock());
        std::vector<std::string> log;
        auto timing = ClockOutFiveBaud(
            loop, port, 0x33, [&](const FiveBaudSlot& s) { log.push_back(s.name); },
            [&](const FiveBaudSlot&, double seconds) { EXPECT_NEAR(seconds, 0.2, 0.0011); });
        EXPECT_FALSE(timing.realtime);
        ASSERT_EQ(port.calls.size(), 10u);
        const bool expected[10] = {true, false, false, true, true, false, false, true, true, false};
        std::int64_t start = port.calls[0].at;
        for (int i = 0; i < 10; ++i) {
            EXPECT_EQ(port.calls[i].on, expected[i]) << i;
            EXPECT_GE(port.calls[i].at - start, i * kFiveBaudBitMicros - 10) << i;
            EXPECT_LE(port.calls[i].at - start, i * kFiveBaudBitMicros + (hasCounter ? 50 : 1000))
                << i;
        }
        EXPECT_EQ(log.front(), "START BIT");
        EXPECT_EQ(log.back(), "STOP BIT");
        EXPECT_NEAR(double(timing.edgeMicros[10] - timing.edgeMicros[0]), 2e6, 1000);
    }
}

TEST(KlineTiming, WaitFromInstantNeverEndsEarlyNorDrifts) {
    VirtualEventLoop loop;
    loop.setLimitMs(1000);
    EdgeTimer timer(loop);
    std::int64_t from = timer.nowMicros();
    loop.virtualClock().advanceBy(7'000);  // time spent handling the key bytes
    std::int64_t reached = WaitFromInstant(loop, from, kInvertedKeyDelayMicros);
    EXPECT_GE(reached - from, kInvertedKeyDelayMicros);
    EXPECT_LE(reached - from, kInvertedKeyDelayMicros + 50);
    // An instant already past returns at once.
    EXPECT_LE(WaitFromInstant(loop, from, 0) - reached, 50);
}

}  // namespace
}  // namespace ketrel
