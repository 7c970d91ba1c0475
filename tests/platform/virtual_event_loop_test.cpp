#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/virtual_event_loop.h"

namespace ketrel {
namespace {

TEST(VirtualEventLoop, TimersFireInDeadlineOrderAndTiesInArmingOrder) {
    VirtualEventLoop loop;
    std::vector<std::string> order;
    Timer a(loop.scheduler(), 300), b(loop.scheduler(), 100), c(loop.scheduler(), 300);
    a.setHandler([&] {
        order.push_back("a@" + std::to_string(loop.nowMs()));
        a.stop();
    });
    b.setHandler([&] { order.push_back("b@" + std::to_string(loop.nowMs())); });
    c.setHandler([&] {
        order.push_back("c@" + std::to_string(loop.nowMs()));
        c.stop();
    });
    a.start();
    b.start();
    c.start();
    loop.runFor(350);
    EXPECT_EQ(order, (std::vector<std::string>{"b@100", "b@200", "a@300", "c@300", "b@300"}));
}

TEST(VirtualEventLoop, OneShotDisablesItselfAndRestartBeginsANewInterval) {
    VirtualEventLoop loop;
    Timer t(loop.scheduler(), 1000);
    int fired = 0;
    t.setHandler([&] {
        ++fired;
        t.stop();
    });
    t.start();
    loop.runFor(600);
    t.restart();  // a new full interval from 600
    loop.runFor(900);
    EXPECT_EQ(fired, 0);
    loop.runFor(200);
    EXPECT_EQ(fired, 1);
    loop.runFor(5000);
    EXPECT_EQ(fired, 1);
    EXPECT_FALSE(t.enabled());
    // Enabling a running timer does not restart it.
    t.start();
    loop.runFor(500);
    t.start();
    loop.runFor(500);
    EXPECT_EQ(fired, 2);
}

TEST(VirtualEventLoop, APumpedWaitRunsOtherHandlersAndItsOwnTimerAgain) {
    VirtualEventLoop loop;
    Timer outer(loop.scheduler(), 100), inner(loop.scheduler(), 30);
    int innerCount = 0, innerDuringWait = 0, depth = 0, maxDepth = 0;
    inner.setHandler([&] { ++innerCount; });
    outer.setHandler([&] {
        ++depth;
        maxDepth = std::max(maxDepth, depth);
        if (depth == 1) {
            int before = innerCount;
            std::int64_t until = loop.nowMs() + 250;
            while (loop.nowMs() < until)
                loop.pump();
            innerDuringWait = innerCount - before;
            outer.stop();
        }
        --depth;
    });
    outer.start();
    inner.start();
    loop.runFor(1000);
    EXPECT_EQ(maxDepth, 2);
    EXPECT_GE(innerDuringWait, 7);  // one every 30 ms of the 250 ms wait
}

TEST(VirtualEventLoop, SleepLetsTimePassWithoutRunningHandlers) {
    VirtualEventLoop loop;
    Timer t(loop.scheduler(), 10);
    int fired = 0;
    t.setHandler([&] { ++fired; });
    t.start();
    loop.sleep(1000);
    EXPECT_EQ(fired, 0);
    EXPECT_EQ(loop.nowMs(), 1000);
    loop.pump();  // overdue timer runs once, and counts its next interval from now
    EXPECT_EQ(fired, 1);
    loop.runFor(10);
    EXPECT_EQ(fired, 2);
}

TEST(VirtualEventLoop, PostedEventsRunInOrderAndCancelledOnesDoNot) {
    VirtualEventLoop loop;
    std::string seen;
    loop.scheduler().post([&] { seen += "1"; });
    auto h = loop.scheduler().post([&] { seen += "X"; });
    loop.scheduler().post([&] {
        seen += "2";
        loop.scheduler().post([&] { seen += "4"; });  // waits for the next pass
    });
    loop.scheduler().postAt(5000, [&] { seen += "5"; });
    loop.scheduler().post([&] { seen += "3"; });
    loop.scheduler().cancel(h);
    loop.pump();
    EXPECT_EQ(seen, "123");
    loop.pump();
    EXPECT_EQ(seen, "1234");
    loop.pump();  // nothing due: a tenth of a millisecond passes, nothing runs
    EXPECT_EQ(seen, "1234");
    EXPECT_EQ(loop.virtualClock().nowMicros(), 100);
    loop.waitAndPump();  // the blocking wait jumps to the next event
    EXPECT_EQ(seen, "12345");
    EXPECT_EQ(loop.nowMs(), 5);
}

TEST(VirtualEventLoop, LimitTurnsAnEndlessWaitIntoAnError) {
    VirtualEventLoop loop;
    loop.setLimitMs(2000);
    bool never = false;
    EXPECT_THROW(
        {
            while (!never)
                loop.pump();
        },
        VirtualTimeExceeded);
}

}  // namespace
}  // namespace ketrel
