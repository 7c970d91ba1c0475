#include <gtest/gtest.h>

#include <algorithm>

#include "core/scan_cycle.h"
#include "flow/dorvane_rig.h"
#include "link/dorvane_link.h"

namespace ketrel::test {
namespace {

int indexOf(const std::vector<std::string>& v, const std::string& s, std::size_t from = 0) {
    auto it = std::find(v.begin() + std::ptrdiff_t(std::min(from, v.size())), v.end(), s);
    return it == v.end() ? -1 : int(it - v.begin());
}

TEST(DorvaneSession, AFullConnectReadsBothListsComesUpAndAsksForPid1CAndFirmware) {
    DorvaneRig r;
    r.connect();
    App& app = r.app();
    EXPECT_TRUE(app.Connected);
    EXPECT_FALSE(app.Connecting);
    EXPECT_TRUE(app.Mode1ListRead);
    EXPECT_TRUE(app.Mode2ListRead);
    EXPECT_FALSE(app.frmConnecting().loaded());
    EXPECT_TRUE(app.frmMain().MSComm->portOpen());
    EXPECT_EQ(app.frmMain().panel(1).text(), "CONNECTION STATUS:  CONNECTED");
    EXPECT_EQ(app.frmMain().panel(3).text(), "COM PORT:  1");
    EXPECT_EQ(app.frmMain().panel(9).text(), "BAUD: 19200");
    EXPECT_TRUE(app.frmMain().cmdRequestTC.enabled());
    EXPECT_FALSE(app.frmMain().button(2).enabled());
    r.run(3000);
    const auto& cmds = r.commands();
    ASSERT_GE(cmds.size(), 4u);
    EXPECT_EQ(cmds[0], "010009");
    EXPECT_EQ(cmds[1], "02000A");
    int pid1c = indexOf(cmds, "011C06"), firmware = indexOf(cmds, "900504");
    ASSERT_GE(pid1c, 0);
    EXPECT_EQ(firmware, pid1c + 1);  // PID 1C first, then the firmware, then the poll
    EXPECT_EQ(app.ConverterVersion, "1.23");
    EXPECT_TRUE(r.t.dialogs.shown().empty());
    // The connecting log holds the whole connect, in order (its frame is ConnectLog's).
    std::string log = r.log();
    const char* expected[] = {"REQUEST DELAY:  180",
                              ")     TYPE INTERFACE USED:  DORVANE PROTOCOL CONVERTER",
                              ")     TIMEOUT SET TO 15 SECONDS",
                              ")     SET PORT:  1",
                              ")     SET BAUD RATE:  19200",
                              ")     OPEN PORT",
                              ")     TIMEOUT ENABLED",
                              ")     RECEIVED EVENT ON",
                              ")     SYNC DETECTED",
                              ")     SENDING:  010009",
                              ")     RECEIVED ALL DATA:  ",
                              ")     LOOKUP DATA IN PROCESS:",
                              ")     V DETECTED",
                              ")     SENDING:  02000A",
                              ")     REQUESTING FIRMWARE VERSION"};
    std::size_t at = 0;
    for (const char* line : expected) {
        std::size_t found = log.find(line, at);
        ASSERT_NE(found, std::string::npos) << "missing in order: " << line;
        at = found;
    }
    // This converter has no vehicle-information request.
    app.frmMain().cmdRequestInfo.click();
    r.run(2000);
    for (const std::string& c : r.commands())
        EXPECT_NE(c.substr(0, 2), "09") << c;
}

TEST(DorvaneSession, AVehicleWithoutAFreezeFrameListConnectsAfterFifteenSeconds) {
    DorvaneRig r;
    r.vehicle.ecus[0].mode2.clear();
    std::int64_t start = r.t.loop.nowMs();
    r.connect();
    EXPECT_TRUE(r.app().Connected);
    EXPECT_TRUE(r.app().Mode1ListRead);
    EXPECT_FALSE(r.app().Mode2ListRead);
    EXPECT_GE(r.t.loop.nowMs() - start, 15000);
    EXPECT_LT(r.t.loop.nowMs() - start, 16000);
    EXPECT_TRUE(r.t.dialogs.shown().empty());
}

TEST(DorvaneSession, NoSyncEndsInNoCommunicationAfterFifteenSecondsAndOnlyTheFirstRetrySends) {
    DorvaneRig r;
    r.converter.setSilent(true);
    int boxes = 0;
    std::vector<std::size_t> bytesAtBox;
    std::int64_t start = r.t.loop.nowMs(), firstBoxAt = 0;
    r.t.dialogs.onShow = [&](const MessageBox&) {
        if (boxes++ == 0) firstBoxAt = r.t.loop.nowMs();
        bytesAtBox.push_back(r.wire.deviceReceived().size());
    };
    for (int i = 0; i < 3; ++i)
        r.t.dialogs.answerNext(MsgAnswer::Retry);
    r.t.dialogs.answerNext(MsgAnswer::Cancel);
    r.connect();
    ASSERT_EQ(boxes, 4);
    EXPECT_EQ(r.t.dialogs.shown()[0].title, "No Communication");
    EXPECT_EQ(r.t.dialogs.shown()[0].buttons, MsgButtons::RetryCancel);
    EXPECT_GE(firstBoxAt - start, 15000);
    EXPECT_EQ(bytesAtBox[0], 0u);  // nothing asked before the first box
    EXPECT_TRUE(r.commands().empty());
    std::string wire = r.wire.deviceReceived();
    std::string retry(kDorvaneRetryFrame, sizeof kDorvaneRetryFrame);
    // After the first box: the 13-byte frame and "F0646A"; after the second and third: nothing.
    EXPECT_EQ(wire.substr(bytesAtBox[0], 19), retry + "F0646A");
    EXPECT_EQ(bytesAtBox[2], bytesAtBox[1]);
    EXPECT_EQ(bytesAtBox[3], bytesAtBox[2]);
    EXPECT_FALSE(r.app().Connected);
    EXPECT_FALSE(r.app().frmConnecting().loaded());
    EXPECT_EQ(r.app().frmMain().panel(1).text(), "CONNECTION STATUS:  DISCONNECTED");
}

TEST(DorvaneSession, CancelDuringAConnectEndsTheSessionAndTheScreenGoesHalfASecondLater) {
    DorvaneRig r;
    r.converter.setSilent(true);
    Timer press(r.t.loop.scheduler(), 3000);
    std::int64_t pressedAt = 0;
    press.setHandler([&] {
        press.stop();
        pressedAt = r.t.loop.nowMs();
        r.app().frmConnecting().cmdConnectingCancel.click();
    });
    press.start();
    r.connect();
    EXPECT_FALSE(r.app().Connected);
    EXPECT_TRUE(r.app().ConnectCancelled);
    EXPECT_GE(r.t.loop.nowMs() - pressedAt, 500);
    EXPECT_TRUE(r.app().frmMain().mnuVehicleConnect.enabled());
    EXPECT_FALSE(r.app().frmMain().mnuVehicleDisconnect.enabled());
    EXPECT_TRUE(r.t.dialogs.shown().empty());
    EXPECT_NE(r.log().find("USER CANCELED"), std::string::npos);
}

TEST(DorvaneSession, ThePollVisitsWantedAndSupportedPidsInOrderAndOneShotsCostAPosition) {
    DorvaneRig r;
    r.connect();
    r.run(4000);
    App& app = r.app();
    // Narrow the poll to three PIDs and watch a few rounds.
    for (auto& w : app.PidWanted)
        w = false;
    app.PidWanted[0x05] = app.PidWanted[0x0C] = app.PidWanted[0x0D] = true;
    r.run(1500);
    std::size_t mark = r.commands().size();
    r.run(1500);
    std::vector<std::string> polled(r.commands().begin() + std::ptrdiff_t(mark),
                                    r.commands().end());
    ASSERT_GE(polled.size(), 6u);
    for (std::size_t i = 0; i + 1 < polled.size(); ++i) {
        const std::string& a = polled[i];
        const std::string& b = polled[i + 1];
        std::string next = a == "010506" ? "010C07" : a == "010C07" ? "010D06" : "010506";
        EXPECT_EQ(b, next) << "after " << a;
    }
    // A one-shot: the PID whose turn it was is skipped this round.
    std::string last = r.commands().back();
    app.RequestTroubleCodes = true;
    r.run(800);
    std::size_t at = std::size_t(indexOf(r.commands(), "03000A", mark));
    ASSERT_LT(at, r.commands().size() - 1);
    std::string before = r.commands()[at - 1], after = r.commands()[at + 1];
    std::string skipped = before == "010506" ? "010C07" : before == "010C07" ? "010D06" : "010506";
    EXPECT_NE(after, skipped);
}

TEST(DorvaneSession, AFrameIsDecodedOnlyWhenTheNextOneBegins) {
    DorvaneRig r;
    r.vehicle.ecus[0].fixed[0x0C] = {0x1A, 0xF8};
    r.connect();
    App& app = r.app();
    for (auto& w : app.PidWanted)
        w = false;
    app.PidWanted[0x0C] = true;
    r.run(1500);
    EXPECT_EQ(app.frmMain().lblRPM.text(), "1726");
    // Fed by hand: the RPM frame stays pending until a new "V" arrives.
    HandleDorvaneChunk(app, "V486B10410C0FA0");
    EXPECT_EQ(app.frmMain().lblRPM.text(), "1726");
    HandleDorvaneChunk(app, "00");
    HandleDorvaneChunk(app, "V486B10410D");
    EXPECT_EQ(app.frmMain().lblRPM.text(), "1000");
}

TEST(DorvaneSession, APStatusSaysReconnectingAndFramesBringBackConnected) {
    DorvaneRig r;
    r.connect();
    r.run(1000);
    App& app = r.app();
    r.converter.setVehicleResponding(false);  // the converter reports "P" while it searches
    r.run(3000);
    EXPECT_EQ(app.frmMain().panel(1).text(), "CONNECTION STATUS:  RECONNECTING...");
    EXPECT_TRUE(app.frmMain().TimeOutConnect.enabled());
    r.converter.setVehicleResponding(true);
    r.run(3000);
    EXPECT_EQ(app.frmMain().panel(1).text(), "CONNECTION STATUS:  CONNECTED");
    EXPECT_TRUE(app.Connected);
    EXPECT_TRUE(r.t.dialogs.shown().empty());
}

TEST(DorvaneSession, TheWatchdogEndsASessionThatHearsNothingWithItsMessage) {
    for (bool silentConverter : {true, false}) {
        SCOPED_TRACE(silentConverter ? "silent converter" : "no PID wanted: the builder spins");
        DorvaneRig r;
        r.connect();
        r.run(2000);
        if (silentConverter) r.converter.setSilent(true);
        for (auto& w : r.app().PidWanted)
            w = w && silentConverter;
        r.t.loop.setLimitMs(r.t.loop.nowMs() + 60000);  // a search that never returns throws
        r.run(9000);
        if (silentConverter) {
            EXPECT_TRUE(r.app().Connected);  // 10 s from the last frame
        }
        r.run(2000);
        EXPECT_FALSE(r.app().Connected);
        ASSERT_EQ(r.t.dialogs.shown().size(), 1u);
        EXPECT_EQ(r.t.dialogs.shown()[0].title, "Communication Not Found");
        EXPECT_EQ(r.t.dialogs.shown()[0].text,
                  "Unable To Establish Communication.  Please Check "
                  "Your Connection Then Retry Again.");
        EXPECT_FALSE(r.app().frmMain().MSComm->portOpen());
    }
}

TEST(DorvaneSession, EndSessionTwiceIsHarmlessAndLeavesEverythingIdle) {
    DorvaneRig r;
    r.connect();
    r.run(1000);
    EndSession(r.app());
    EndSession(r.app());
    App& app = r.app();
    EXPECT_FALSE(app.Connected);
    EXPECT_FALSE(app.frmMain().MSComm->portOpen());
    EXPECT_FALSE(app.frmMain().TimeOutConnect.enabled());
    EXPECT_TRUE(
        std::none_of(app.PidWanted.begin(), app.PidWanted.begin() + 80, [](bool b) { return b; }));
    EXPECT_EQ(app.frmMain().Image1[12].picture(), kImgRed);
    EXPECT_FALSE(app.frmMain().cmdRequestTC.enabled());
    EXPECT_EQ(app.frmMain().panel(3).text(), "COM PORT:  N/A");
    std::size_t sent = r.commands().size();
    r.run(3000);
    EXPECT_EQ(r.commands().size(), sent);  // no requests after the end
    EXPECT_TRUE(r.t.dialogs.shown().empty());
}

TEST(DorvaneSession, WithNoWantedPidTheBuilderSpinsUntilAFlagTurnsItOut) {
    DorvaneRig r;
    r.connect();
    r.run(1000);
    App& app = r.app();
    for (auto& w : app.PidWanted)
        w = false;
    std::size_t atClear = r.commands().size();
    std::size_t atRaise = 0;
    // The builder spins inside its handler, pumping: the raise below runs nested in it.
    Timer raise(r.t.loop.scheduler(), 3000);
    raise.setHandler([&] {
        raise.stop();
        atRaise = r.commands().size();
        app.PidWanted[0x0D] = true;
    });
    raise.start();
    r.run(4000);
    EXPECT_LE(atRaise, atClear + 1);  // at most the request already on its way
    ASSERT_GT(r.commands().size(), atRaise);
    EXPECT_EQ(r.commands()[atRaise], "010D06");
    EXPECT_TRUE(app.Connected);
}

}  // namespace
}  // namespace ketrel::test
