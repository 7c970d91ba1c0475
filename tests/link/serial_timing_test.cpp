#include "link/serial_timing.h"

#include <gtest/gtest.h>

#include "support/test_app.h"

namespace ketrel {
namespace {

TEST(Waits, BusyTimingLetsTimeReachTheLimitWithoutRunningHandlers) {
    test::TestApp t;
    Timer tick(t.loop.scheduler(), 10);
    int ticks = 0;
    tick.setHandler([&] { ++ticks; });
    tick.start();
    std::int64_t before = t.loop.virtualClock().nowMicros();
    BusyWait(t->TimerObject(), 0.15);
    std::int64_t waited = t.loop.virtualClock().nowMicros() - before;
    // The stopwatch rounds to 0.1 ms, so the spin may end up to 50 us early.
    EXPECT_GE(waited, 149'950);
    EXPECT_LT(waited, 150'100);
    EXPECT_EQ(ticks, 0);  // nothing ran during the spin
    t.loop.pump();
    EXPECT_EQ(ticks, 1);  // the overdue tick runs once the loop is pumped again
}

TEST(Waits, BusyTimingWithoutACounterReturnsInsteadOfHanging) {
    test::TestApp t;
    t.loop.virtualClock().setHasCounter(false);
    BusyWait(t->TimerObject(), 0.2);
    EXPECT_LT(t.loop.virtualClock().nowMicros(), 1000);
}

TEST(Waits, BusyTimingCanWatchSomethingAndStopEarly) {
    test::TestApp t;
    int turns = 0;
    EXPECT_TRUE(BusyWaitPolling(t->TimerObject(), 1.0, [&] { return ++turns == 5; }));
    EXPECT_EQ(turns, 5);
    EXPECT_FALSE(BusyWaitPolling(t->TimerObject(), 0.001, [] { return false; }));
}

TEST(Waits, APumpedWaitRunsHandlersUntilItsConditionHolds) {
    test::TestApp t;
    Timer second(t.loop.scheduler(), 1000);
    int seconds = 0;
    second.setHandler([&] { ++seconds; });
    second.start();
    PumpedWait(t.loop, [&] { return seconds == 3; });
    EXPECT_EQ(seconds, 3);
}

}  // namespace
}  // namespace ketrel
