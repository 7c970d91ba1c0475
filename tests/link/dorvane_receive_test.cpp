#include "link/dorvane_receive.h"

#include <gtest/gtest.h>

#include "obd/bit_operations.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

// An application in a session, with the frame set as the chunk handler sets it.
struct Session {
    Session() {
        t->Connected = true;
        t->Temp = "F";
        t->Speed = "MPH";
        t->Pressure = "PSI";
    }
    void receive(const std::string& frame) {
        SetDorvaneFrame(*t, frame);
        DORVANERECEIVE(*t);
    }
    test::TestApp t;
};

TEST(SetDorvaneFrame, ModeFromTheNinthCharacterAndPidFromTheTenthAndEleventh) {
    struct Case {
        const char* frame;
        const char* mode;
        const char* pid;
    } cases[] = {
        {"V486B10410C1AF8", "01", "0C"},
        {"v486b10410c1af8", "01", "0C"},
        {"V486B10510C", "01", "0C"},
        {"V486B10410", "01", "0"},
        {"V486B1047", "07", ""},
        {"V486B104", "", ""},
        {"", "", ""},
        {"V486B104202000133", "02", "02"},
    };
    for (const Case& c : cases) {
        test::TestApp t;
        SetDorvaneFrame(*t, c.frame);
        EXPECT_EQ(t->RawFrame, c.frame);
        EXPECT_EQ(t->RxMode, c.mode) << c.frame;
        EXPECT_EQ(t->RxPID, c.pid) << c.frame;
    }
}

TEST(DorvaneReceive, BytesAreCutFromTheColumnsOfTheirMode) {
    struct Case {
        const char* frame;
        std::array<int, 4> values;
        std::array<const char*, 6> hex;
        int bitCells;  // ByteBits(1) to ByteBits(bitCells) are filled
    } cases[] = {
        {"V486B1044", {0x44, 0, 0, 0}, {"44", "", "", "", "", ""}, 4},
        {"V486B10430133000000000", {0x01, 0x33, 0, 0}, {"01", "33", "00", "00", "00", "00"}, 6},
        {"V486B104301330000005", {0x01, 0x33, 0, 0}, {"01", "33", "00", "00", "00", "05"}, 6},
        {"V486B10420000BE1FA813", {0xBE, 0x1F, 0xA8, 0x13}, {"", "", "", "", "", ""}, 4},
        {"V486B104202000133", {0x01, 0x33, 0x33, 0}, {"01", "33", "", "", "", ""}, 4},
        {"V486B104205006412", {0x64, 0x12, 0x12, 0}, {"", "", "", "", "", ""}, 4},
        {"V486B10410C1AF8", {0x1A, 0xF8, 0, 0}, {"", "", "", "", "", ""}, 4},
        {"V486B1041", {0, 0, 0, 0}, {"", "", "", "", "", ""}, 4},
    };
    for (const Case& c : cases) {
        Session s;
        App& app = *s.t;
        app.ByteValue[5] = 9;
        for (std::size_t n = 1; n <= 18; ++n) {
            app.ByteBits[n] = "stale";
            app.ByteHex[n] = "stale";
        }
        s.receive(c.frame);
        for (std::size_t n = 1; n <= 4; ++n)
            EXPECT_EQ(app.ByteValue[n], c.values[n - 1]) << c.frame << " byte " << n;
        for (std::size_t n = 1; n <= 6; ++n)
            EXPECT_EQ(app.ByteHex[n], c.hex[n - 1]) << c.frame << " byte " << n;
        for (std::size_t n = 1; n <= 18; ++n)
            EXPECT_EQ(app.ByteBits[n].size(), n <= std::size_t(c.bitCells) ? 8u : 0u)
                << c.frame << " byte " << n;
        for (std::size_t n = 7; n <= 18; ++n)
            EXPECT_EQ(app.ByteHex[n], "");
        EXPECT_EQ(app.ByteBits[1], SliceByte(ByteToHexText(c.values[0])).bits);
        EXPECT_EQ(app.ByteValue[5], 9);  // another path's cell
    }
}

TEST(DorvaneReceive, DispatchFollowsModePidAndLength) {
    using R = DorvaneRoute;
    struct Case {
        const char* mode;
        const char* pid;
        std::size_t length;
        bool listsRead;
        R route;
    } cases[] = {
        {"01", "00", 20, false, R::SupportList},
        {"01", "00", 20, true, R::None},
        {"02", "00", 20, false, R::SupportList},
        {"02", "00", 20, true, R::None},
        {"03", "01", 19, false, R::None},
        {"03", "01", 20, false, R::TroubleCodes},
        {"07", "01", 19, false, R::None},
        {"07", "01", 20, false, R::PendingCodes},
        {"04", "", 9, false, R::ClearReply},
        {"04", "00", 30, false, R::ClearReply},
        {"01", "01", 20, false, R::MonitorStatus},
        {"02", "01", 20, false, R::None},
        {"01", "02", 20, false, R::None},
        {"02", "02", 15, false, R::None},
        {"02", "02", 16, false, R::FreezeCode},
        {"01", "20", 20, false, R::SupportPID20},
        {"02", "20", 20, false, R::None},
        {"01", "21", 20, false, R::None},
        {"01", "40", 20, false, R::None},
        {"01", "0a", 20, false, R::None},
        {"02", "14", 20, false, R::None},
        {"05", "0C", 20, false, R::None},
        {"", "0C", 20, false, R::None},
        {"09", "02", 20, false, R::None},
        // The first rule that matches wins: mode 03 ignores its PID column.
        {"03", "00", 19, false, R::None},
    };
    for (const Case& c : cases) {
        test::TestApp t;
        t->RxMode = c.mode;
        t->RxPID = c.pid;
        t->RawFrame = std::string(c.length, '0');
        t->Mode1ListRead = t->Mode2ListRead = c.listsRead;
        EXPECT_EQ(RouteDorvaneFrame(*t), c.route)
            << c.mode << " " << c.pid << " length " << c.length;
    }
    // Every value PID of each mode, and nothing around them.
    for (int pid = 0; pid <= 0xFF; ++pid) {
        test::TestApp t;
        t->RawFrame = std::string(20, '0');
        t->RxPID = ByteToHexText(pid);
        t->RxMode = "01";
        bool live = pid >= 0x03 && pid <= 0x1F;
        EXPECT_EQ(RouteDorvaneFrame(*t) == R::LiveValue, live) << pid;
        t->RxMode = "02";
        bool freeze = pid >= 0x03 && pid <= 0x13;
        EXPECT_EQ(RouteDorvaneFrame(*t) == R::FreezeValue, freeze) << pid;
    }
}

TEST(DorvaneReceive, LiveAndFreezeFrameRepliesReachTheirFields) {
    Session s;
    FrmMain& m = s.t->frmMain();
    s.receive("V486B10410C1AF8");
    EXPECT_EQ(m.lblRPM.text(), "1726");
    s.receive("V486B10420C001AF8");
    EXPECT_EQ(m.lblFFRPM.text(), "1726");
    s.receive("V486B10411A8090");
    EXPECT_EQ(m.lblO2b2s3.text(), "0.640");
    EXPECT_EQ(m.LBLSTO2B2S3.text(), "12.50");
    s.receive("V486B10411A8090");
    // A PID the converter path does not serve changes nothing.
    s.t->frmNewPids().lblBaro.setText("old");
    s.receive("V486B104133650000");
    EXPECT_EQ(s.t->frmNewPids().lblBaro.text(), "old");
}

TEST(DorvaneReceive, AFrameOfNineCharactersReadsAsZeroes) {
    Session s;
    s.t->RawFrame = "V486B1041";
    s.t->RxMode = "01";
    s.t->RxPID = "05";
    DORVANERECEIVE(*s.t);
    EXPECT_EQ(s.t->frmMain().lblCoolant.text(), "-40");
    s.t->RxPID = "0C";
    DORVANERECEIVE(*s.t);
    EXPECT_EQ(s.t->frmMain().lblRPM.text(), "0");
}

TEST(DorvaneReceive, TheSupportListIsReadOncePerConnection) {
    Session s;
    App& app = *s.t;
    s.receive("V486B104100BE1FA813");
    EXPECT_TRUE(app.Mode1ListRead);
    EXPECT_TRUE(app.PidDiscoveryDone);
    EXPECT_FALSE(app.Mode2ListRead);
    EXPECT_TRUE(app.Mode1Supported[1]);
    EXPECT_FALSE(app.Mode1Supported[2]);
    s.receive("V486B1041004000000");
    EXPECT_TRUE(app.Mode1Supported[1]);
    EXPECT_FALSE(app.Mode1Supported[2]);
    EXPECT_EQ(app.SupportedCount, 17);

    s.receive("V486B10420000180000000");
    EXPECT_TRUE(app.Mode2ListRead);
    EXPECT_TRUE(app.FFPidsKnown);
    EXPECT_TRUE(app.Mode2Supported[4]);
    EXPECT_TRUE(app.Mode2Supported[5]);
    s.receive("V486B10420000FF0000000");
    EXPECT_FALSE(app.Mode2Supported[1]);
}

TEST(DorvaneReceive, WithoutASessionOnlyTheWatchdogIsRestarted) {
    test::TestApp t;
    Timer& watchdog = t->frmMain().TimeOutConnect;
    int fired = 0;
    watchdog.setHandler([&] { ++fired; });
    t->Connected = false;
    t->frmMain().lblRPM.setText("old");
    t->ByteValue[1] = 5;
    SetDorvaneFrame(*t, "V486B10410C1AF8");
    DORVANERECEIVE(*t);
    EXPECT_TRUE(watchdog.enabled());
    EXPECT_EQ(t->frmMain().lblRPM.text(), "old");
    EXPECT_EQ(t->ByteValue[1], 5);  // not even cleared

    // In a session every frame starts a full interval again.
    t->Connected = true;
    t.loop.runFor(9000);
    DORVANERECEIVE(*t);
    t.loop.runFor(9000);
    EXPECT_EQ(fired, 0);
    EXPECT_EQ(t->frmMain().lblRPM.text(), "1726");
    t.loop.runFor(1500);
    EXPECT_EQ(fired, 1);
}

TEST(DorvaneReceive, ConnectingAndPlaybackDecodeAndLeaveTheWatchdogAlone) {
    for (bool playing : {false, true}) {
        test::TestApp t;
        t->Connected = false;
        t->Connecting = !playing;
        t->PlayingLog = playing;
        t->Temp = "C";
        SetDorvaneFrame(*t, "V486B104105A0");
        DORVANERECEIVE(*t);
        EXPECT_FALSE(t->frmMain().TimeOutConnect.enabled());
        EXPECT_EQ(t->frmMain().lblCoolant.text(), "120");
    }
}

TEST(DorvaneReceive, MonitorStatusAndTheExtendedBitmapAreDispatched) {
    Session s;
    s.receive("V486B104101830700");
    EXPECT_EQ(s.t->frmMain().lblNumberCodes.text(), "3");
    EXPECT_EQ(s.t->frmMain().msGridReady.text(1, 0), "3");
    s.receive("V486B10412080000001");
    EXPECT_TRUE(s.t->Mode1Supported[0x21]);
    EXPECT_TRUE(s.t->Mode1Supported[0x40]);
    EXPECT_EQ(s.t->ExtendedPIDCount, 2);
}

}  // namespace
}  // namespace ketrel
