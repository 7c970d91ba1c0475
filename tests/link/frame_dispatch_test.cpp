#include "link/frame_dispatch.h"

#include <gtest/gtest.h>

#include "obd/bit_operations.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

FrameRoute Route(const char* mode, const char* pid, std::size_t length, bool listsRead,
                 ReceivePath path) {
    test::TestApp t;
    t->RxMode = mode;
    t->RxPID = pid;
    t->Mode1ListRead = t->Mode2ListRead = listsRead;
    return RouteFrame(*t, ReadFrameKey(*t), length, path);
}

TEST(FrameDispatch, RouteFollowsModePidLengthAndPath) {
    using R = FrameRoute;
    struct Case {
        const char *mode, *pid;
        std::size_t length;
        bool listsRead;
        R dorvane, counted;  // the text converter's route, the count-byte and K-line route
    } cases[] = {
        {"01", "00", 20, false, R::SupportList, R::SupportList},
        {"01", "00", 20, true, R::None, R::SupportList},
        {"02", "00", 20, true, R::None, R::SupportList},
        {"03", "01", 19, false, R::None, R::TroubleCodes},
        {"03", "01", 20, false, R::TroubleCodes, R::TroubleCodes},
        {"07", "01", 19, false, R::None, R::PendingCodes},
        {"07", "", 20, false, R::PendingCodes, R::PendingCodes},
        {"04", "", 9, false, R::ClearReply, R::ClearReply},
        {"01", "01", 9, false, R::MonitorStatus, R::MonitorStatus},
        {"02", "01", 20, false, R::None, R::None},
        {"01", "02", 20, false, R::None, R::None},
        {"02", "02", 15, false, R::None, R::FreezeCode},
        {"02", "02", 16, false, R::FreezeCode, R::FreezeCode},
        {"01", "20", 20, false, R::SupportPID20, R::SupportPID20},
        {"02", "20", 20, false, R::None, R::None},
        {"01", "40", 20, false, R::None, R::SupportPID40},
        {"01", "0a", 20, false, R::None, R::None},  // the paths hand over upper-case text
        {"05", "0C", 20, false, R::None, R::None},
        {"0F", "0C", 20, false, R::None, R::None},  // a negative answer, 7F
        {"", "0C", 20, false, R::None, R::None},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Route(c.mode, c.pid, c.length, c.listsRead, ReceivePath::Dorvane), c.dorvane)
            << c.mode << " " << c.pid << " " << c.length;
        EXPECT_EQ(Route(c.mode, c.pid, c.length, c.listsRead, ReceivePath::Br3), c.counted)
            << c.mode << " " << c.pid << " " << c.length;
    }
    for (int pid = 0; pid <= 0xFF; ++pid) {  // the value PIDs of each mode and path, no others
        std::string hex = ByteToHexText(pid);
        bool mainPid = pid >= 0x03 && pid <= 0x1F;
        bool extended = pid >= 0x21 && pid <= 0x4E && pid != 0x40;
        EXPECT_EQ(Route("01", hex.c_str(), 20, false, ReceivePath::Dorvane) == R::LiveValue,
                  mainPid)
            << pid;
        EXPECT_EQ(Route("01", hex.c_str(), 20, false, ReceivePath::Kline) == R::LiveValue,
                  mainPid || extended)
            << pid;
        EXPECT_EQ(Route("02", hex.c_str(), 20, false, ReceivePath::Br3) == R::FreezeValue,
                  pid >= 0x03 && pid <= 0x13)
            << pid;
    }
}

TEST(FrameDispatch, CountedPathsStopTheWatchdogOnTheirFiveModes) {
    for (auto [mode, stops] : {std::pair{"01", true},
                               {"03", true},
                               {"04", true},
                               {"07", true},
                               {"09", false},
                               {"0F", false},
                               {"", false}}) {
        for (ReceivePath path : {ReceivePath::Dorvane, ReceivePath::Br3}) {
            test::TestApp t;
            t->RxMode = mode;
            t->RxPID = "0D";
            t->frmMain().TimeOutConnect.start();
            DispatchFrame(*t, path);
            bool stopped = !t->frmMain().TimeOutConnect.enabled();
            EXPECT_EQ(stopped, stops && path == ReceivePath::Br3) << mode;
        }
    }
}

}  // namespace
}  // namespace ketrel
