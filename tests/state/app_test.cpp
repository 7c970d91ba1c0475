#include <gtest/gtest.h>

#include "support/test_app.h"

namespace ketrel {
namespace {

TEST(cTimeIt, ResultIsMinusOneUntilStoppedThenSecondsAtATenthOfAMillisecond) {
    test::TestApp t;
    cTimeIt& timer = t->TimerObject();
    EXPECT_EQ(timer.Frequency(), 1'000'000);
    timer.Start();
    EXPECT_EQ(timer.Result(), -1);
    t.loop.sleep(150);
    timer.StopNow();
    EXPECT_NEAR(timer.Result(), 0.1500, 0.00011);
    EXPECT_EQ(&timer, &t->TimerObject());  // one shared instance
}

TEST(cTimeIt, WithoutACounterItSaysSoOnceAndNeverMeasures) {
    test::TestApp t;
    t.loop.virtualClock().setHasCounter(false);
    cTimeIt& timer = t->TimerObject();
    ASSERT_EQ(t.dialogs.shown().size(), 1u);
    EXPECT_EQ(t.dialogs.shown()[0].text,
              "This timer class doesn't support high frequency clock's!");
    timer.Start();
    timer.StopNow();
    EXPECT_EQ(timer.Result(), -1);
}

TEST(App, ScreensExistFromTheStartAndPortsHaveTheirDesignedSettings) {
    test::TestApp t;
    EXPECT_FALSE(t->frmMain().loaded());
    EXPECT_EQ(t->screenByName("frmSettings"), &t->frmSettings());
    EXPECT_EQ(t->frmMain().MSComm->rThreshold(), 1);
    EXPECT_EQ(t->frmMain().BR3MSComm->rThreshold(), 0);
    EXPECT_EQ(t->frmMain().MSComm->settings(), "19200,n,8,1");
}

}  // namespace
}  // namespace ketrel
