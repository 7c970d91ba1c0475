#include "link/dorvane_receive.h"

#include <gtest/gtest.h>

#include "obd/bit_operations.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

// An application in a session; receive() sets the frame as the chunk handler does.
struct Session {
    Session() {
        t->Connected = true;
        t->Temp = "F";
    }
    void receive(const std::string& frame) {
        SetDorvaneFrame(*t, frame);
        DORVANERECEIVE(*t);
    }
    test::TestApp t;
};

TEST(DorvaneReceive, ModeAndPidAreCutFromTheFrame) {
    // Frame, then RxMode and RxPID: the tens digit of the mode byte is not looked at.
    for (auto [frame, mode, pid] : {std::array<const char*, 3>{"v486b10410c1af8", "01", "0C"},
                                    {"V486B10510C", "01", "0C"},
                                    {"V486B10410", "01", "0"},
                                    {"V486B104", "", ""}}) {
        test::TestApp t;
        SetDorvaneFrame(*t, frame);
        EXPECT_EQ(t->RxMode + "/" + t->RxPID, std::string(mode) + "/" + pid) << frame;
    }
}

TEST(DorvaneReceive, BytesAreCutFromTheColumnsOfTheirMode) {
    struct Case {
        const char* frame;
        std::array<int, 4> values;
        std::array<const char*, 6> hex;
        std::size_t bitCells;
    } cases[] = {
        {"V486B1044", {0x44, 0, 0, 0}, {"44", "", "", "", "", ""}, 4},  // the mode byte itself
        {"V486B10430133000000000", {0x01, 0x33, 0, 0}, {"01", "33", "00", "00", "00", "00"}, 6},
        {"V486B104301330000005", {0x01, 0x33, 0, 0}, {"01", "33", "00", "00", "00", "05"}, 6},
        {"V486B10420000BE1FA813", {0xBE, 0x1F, 0xA8, 0x13}, {"", "", "", "", "", ""}, 4},
        {"V486B104202000133", {0x01, 0x33, 0x33, 0}, {"01", "33", "", "", "", ""}, 4},
        {"V486B104205006412", {0x64, 0x12, 0x12, 0}, {"", "", "", "", "", ""}, 4},
        {"V486B10410C1AF8", {0x1A, 0xF8, 0, 0}, {"", "", "", "", "", ""}, 4},
    };
    for (const Case& c : cases) {
        Session s;
        App& app = *s.t;
        app.ByteValue[5] = 9;
        for (std::size_t n = 1; n <= 18; ++n)
            app.ByteBits[n] = app.ByteHex[n] = "stale";
        s.receive(c.frame);
        for (std::size_t n = 1; n <= 18; ++n) {
            if (n <= 4) {
                EXPECT_EQ(app.ByteValue[n], c.values[n - 1]) << c.frame << " " << n;
            }
            EXPECT_EQ(app.ByteHex[n], n <= 6 ? c.hex[n - 1] : "") << c.frame << " " << n;
            EXPECT_EQ(app.ByteBits[n].size(), n <= c.bitCells ? 8u : 0u) << c.frame << " " << n;
        }
        EXPECT_EQ(app.ByteBits[2], SliceByte(ByteToHexText(c.values[1])).bits);
        EXPECT_EQ(app.ByteValue[5], 9);  // another path's cell
    }
}

TEST(DorvaneReceive, FramesReachTheirDecoders) {
    Session s;
    App& app = *s.t;
    FrmMain& m = app.frmMain();
    s.receive("V486B10410C1AF8");
    EXPECT_EQ(m.lblRPM.text(), "1726");
    s.receive("V486B10420C001AF8");
    EXPECT_EQ(m.lblFFRPM.text(), "1726");
    s.receive("V486B10411A8090");
    EXPECT_EQ(m.LBLSTO2B2S3.text(), "12.50");
    s.receive("V486B104101830700");
    EXPECT_EQ(m.lblNumberCodes.text(), "3");
    s.receive("V486B10412080000001");
    EXPECT_EQ(app.ExtendedPIDCount, 2);
    app.frmNewPids().lblBaro.setText("old");
    s.receive("V486B104133650000");  // not served on this converter
    EXPECT_EQ(app.frmNewPids().lblBaro.text(), "old");
    // A frame of nine characters reads as zeroes.
    app.RawFrame = "V486B1041";
    app.RxPID = "05";
    DORVANERECEIVE(app);
    EXPECT_EQ(m.lblCoolant.text(), "-40");
}

TEST(DorvaneReceive, TheSupportListsAreReadOncePerConnection) {
    Session s;
    App& app = *s.t;
    s.receive("V486B104100BE1FA813");
    EXPECT_TRUE(app.Mode1ListRead && app.PidDiscoveryDone);
    EXPECT_FALSE(app.Mode2ListRead);
    s.receive("V486B1041004000000");
    EXPECT_TRUE(app.Mode1Supported[1]);
    EXPECT_FALSE(app.Mode1Supported[2]);
    EXPECT_EQ(app.SupportedCount, 17);
    s.receive("V486B10420000180000000");
    EXPECT_TRUE(app.Mode2ListRead && app.FFPidsKnown && app.Mode2Supported[4]);
    s.receive("V486B10420000FF0000000");
    EXPECT_FALSE(app.Mode2Supported[1]);
}

TEST(DorvaneReceive, WithoutASessionOnlyTheWatchdogIsRestarted) {
    test::TestApp t;
    Timer& watchdog = t->frmMain().TimeOutConnect;
    int fired = 0;
    watchdog.setHandler([&] { ++fired; });
    t->frmMain().lblRPM.setText("old");
    t->ByteValue[1] = 5;
    SetDorvaneFrame(*t, "V486B10410C1AF8");
    DORVANERECEIVE(*t);
    EXPECT_TRUE(watchdog.enabled());
    EXPECT_EQ(t->frmMain().lblRPM.text(), "old");
    EXPECT_EQ(t->ByteValue[1], 5);  // not even cleared
    t->Connected = true;            // in a session every frame starts a full interval
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
        t->Connecting = !playing;
        t->PlayingLog = playing;
        t->Temp = "C";
        SetDorvaneFrame(*t, "V486B104105A0");
        DORVANERECEIVE(*t);
        EXPECT_FALSE(t->frmMain().TimeOutConnect.enabled());
        EXPECT_EQ(t->frmMain().lblCoolant.text(), "120");
    }
}

}  // namespace
}  // namespace ketrel
