#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "flow/car_rig.h"
#include "link/br3_frames.h"

namespace ketrel::test {
namespace {

// The count-byte converter's rig: a VPW car unless told, started on the first row.
struct Br3Rig : CarRig {
    explicit Br3Rig(const std::string& car = "vpw", int start = 1) : CarRig(kBr3, car, start) {}
};

TEST(Br3Session, ConnectsOnEachProtocolAndScans) {
    struct Case {
        const char* car;
        int start;
        const char* protocol;
        Strings log;
    } cases[] = {
        {"vpw",
         1,
         "01",
         {"TYPE INTERFACE USED:  BR3 PROTOCOL CONVERTER", "SENDING:  20", "RECEIVED:  01FF",
          "SENDING:  41 00 (VPW)", "DELAY 175 mS", "SENDING:  07 68 6A F1 01 00 17 01",
          "DELAY 275 mS", "MODE 01 PID 00 LOOKUP IN PROCESS", "CALL MODE 02 PID 00 PROCEDURE",
          "MODE 02 PID 00 LOOKUP IN PROCESS", "CALL MODE 01 PID 28 PROCEDURE",
          "MODE 01 PID 28 LOOKUP IN PROCESS",
          "************************END OF CONNECTING************************"}},
        {"pwm",
         1,
         "02",
         {"VPW TIMEOUT", "RESET TIMEOUT", "SENDING:  41 01 (PWM)",
          "SENDING:  07 61 6A F1 01 28 5Bh 01"}},
        {"iso9141",
         1,
         "03",
         {"PWM TIMEOUT", "SENDING:  42 02 33 (ISO - 9141)", "DELAY 3000 mS",
          "SENDING:  06 68 6A F1 01 28 E0"}},
        {"iso14230",
         5,
         "04",
         {"SENDING:  46 03 C1 33 F1 81 66 (KWP2000 (FAST))", "DELAY 300 mS",
          "SENDING:  06 C2 33 F1 01 28 03"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.car);
        Br3Rig r(c.car, c.start);
        r.connect();
        App& app = r.app();
        const bool j1850 = c.protocol[1] <= '2';
        EXPECT_TRUE(app.Connected);
        EXPECT_FALSE(app.frmConnecting().loaded());
        EXPECT_EQ(app.ProtocolCode, c.protocol);
        EXPECT_EQ(app.frmMain().lblWhatProtocol.text(), std::string(1, c.protocol[1]));
        EXPECT_EQ(app.frmMain().BR3Delay.interval(), j1850 ? 150 : 225);
        EXPECT_TRUE(r.logged(c.log));
        // The scan: one read a BR3Delay after each request, each read finding its answer.
        const std::size_t sent = r.frames().size();
        r.run(3000);
        const std::size_t requests = r.frames().size() - sent;
        EXPECT_NEAR(double(requests), 3000.0 / app.frmMain().BR3Delay.interval(), 3);
        EXPECT_LE(r.decoded.size(), requests + 1);
        EXPECT_GE(r.decoded.size(), requests);
        EXPECT_EQ(std::count(r.decoded.begin(), r.decoded.end(), std::string()), 0);
        EXPECT_TRUE(Shown(app.frmMain().lblRPM)) << app.frmMain().lblRPM.text();
        EXPECT_TRUE(r.t.dialogs.shown().empty());
    }
}

TEST(Br3Session, NoResponseComesAfterTheTriedProbesAndRetryStartsAgain) {
    for (bool converterSilent : {true, false}) {
        SCOPED_TRACE(converterSilent);
        Br3Rig r;
        r.br3->setSilent(converterSilent);
        r.br3->setVehicleResponding(false);
        std::int64_t shownAt = 0;
        r.t.dialogs.onShow = [&](const MessageBox&) { shownAt = r.t.loop.nowMs(); };
        r.t.dialogs.answerNext(MsgAnswer::Cancel);
        r.connect();
        ASSERT_EQ(r.t.dialogs.titles(), Strings{"No Response"});
        EXPECT_EQ(r.t.dialogs.shown()[0].buttons, MsgButtons::RetryCancel);
        // A silent converter: ten seconds of which the retry at the fifth skips one. Else all
        // five probes.
        EXPECT_GE(shownAt, 9000);
        EXPECT_LE(shownAt, converterSilent ? 9300 : 14000);
        EXPECT_TRUE(
            r.logged(converterSilent
                         ? Strings{"SENDING:  20", "SENDING:  20", "UNSUCCESSFUL CONNECTING"}
                         : Strings{"VPW TIMEOUT", "PWM TIMEOUT", "SENDING:  42 02 33 (ISO - 9141)",
                                   "SENDING:  42 02 33 (KWP2000 (SLOW))",
                                   "SENDING:  46 03 C1 33 F1 81 66 (KWP2000 (FAST))",
                                   "CONNECTING TIMEOUT", "UNSUCCESSFUL CONNECTING"}));
        EXPECT_EQ(r.logged({"CONNECTING TIMEOUT"}), !converterSilent);
        EXPECT_TRUE(r.logged({"USER CANCELED"}));
        EXPECT_FALSE(r.app().Connected);
        EXPECT_FALSE(r.app().frmConnecting().loaded());
    }
    Br3Rig r;
    r.br3->setSilent(true);
    r.t.dialogs.onShow = [&](const MessageBox&) { r.br3->setSilent(false); };
    r.t.dialogs.answerNext(MsgAnswer::Retry);
    r.connect();
    EXPECT_TRUE(r.app().Connected);
    EXPECT_TRUE(r.logged({"UNSUCCESSFUL CONNECTING", "RETRY COMMAND", "RESET TIMEOUT",
                          "TYPE INTERFACE USED:  BR3 PROTOCOL CONVERTER",
                          "MODE 01 PID 28 LOOKUP IN PROCESS"}));
}

TEST(Br3Session, EachStartRowProbesItsOwnProtocols) {
    struct Case {
        int start;
        const char* car;
        Strings probes;        // the start commands the converter took
        const char* protocol;  // "" when the connect fails
    } cases[] = {
        {2, "vpw", {"41 00"}, "01"},
        {2, "pwm", {"41 00"}, ""},
        {3, "pwm", {"41 01"}, "02"},
        {3, "vpw", {"41 01"}, ""},
        {4, "iso9141", {"42 02 33"}, "03"},
        {4, "iso14230", {"42 02 33"}, "03"},  // its key bytes pass the ISO 9141 test
        {4, "vpw", {"42 02 33", "42 02 33"}, ""},
        {5, "iso14230", {"46 03 C1 33 F1 81 66"}, "04"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::to_string(c.start) + " " + c.car);
        Br3Rig r(c.car, c.start);
        r.t.dialogs.answerNext(MsgAnswer::Cancel);
        r.connect();
        Strings probes;
        std::copy_if(r.frames().begin(), r.frames().end(), std::back_inserter(probes),
                     [](const std::string& cmd) { return cmd[0] == '4'; });
        EXPECT_EQ(probes, c.probes);
        EXPECT_EQ(r.app().Connected ? r.app().ProtocolCode : "", c.protocol);
        EXPECT_EQ(r.t.dialogs.titles().size(), *c.protocol ? 0u : 1u);
    }
}

TEST(Br3Session, SecondFrameOnAOneModuleJ1850CarGoesOnToTheNextProbeStillConnected) {
    Br3Rig r("default");
    r.app().SecondFrameConnect = true;
    bool connectedAtMessage = false;
    r.t.dialogs.onShow = [&](const MessageBox&) { connectedAtMessage = r.app().Connected; };
    r.t.dialogs.answerNext(MsgAnswer::Cancel);
    r.connect();
    EXPECT_TRUE(connectedAtMessage);
    EXPECT_TRUE(
        r.logged({"MODE 01 PID 00 LOOKUP IN PROCESS", "PROCESSING 2ND FRAME OF MODE 01 PID 00 ",
                  "SENDING:  07 68 6A F1 01 00 17 02", "MODE 01 PID 00 NOT RECEIVED",
                  "RESET TIMEOUT", "SENDING:  41 01 (PWM)"}));
    EXPECT_EQ(r.t.dialogs.titles(), Strings{"No Response"});
}

TEST(Br3Session, Pid1CTimeOutLinksUpAndPollsJ1850WithThePwmRoutine) {
    Br3Rig r("vpw");
    // The Mode 02 list's answer is in: the next answer, PID 1C's, comes cut short.
    App& app = r.app();
    app.frmConnecting().txtConnectingInput.onChange = [&, done = false]() mutable {
        if (done || app.frmConnecting().txtConnectingInput.text().rfind("0B486B1042", 0)) return;
        done = true;
        r.br3->cutNextAnswers(1);
    };
    r.connect();
    ASSERT_TRUE(app.Connected);
    EXPECT_TRUE(r.logged(
        {"SENDING:  07 68 6A F1 01 28 46 01", "DELAY 275 mS", "MODE 01 PID 28 NOT RECEIVED"}));
    EXPECT_FALSE(r.logged({"MODE 01 PID 28 LOOKUP IN PROCESS"}));
    r.run(1000);
    // The frame after PID 1C: on the VPW header with the PWM routine's check.
    auto it = std::find(r.frames().begin(), r.frames().end(), "07 68 6A F1 01 1C 46 01");
    ASSERT_LT(it + 1, r.frames().end());
    const std::string next = *(it + 1);
    ASSERT_EQ(next.rfind("07 68 6A F1 01 ", 0), 0u) << next;
    const std::uint8_t pwm[] = {0x61, 0x6A, 0xF1, 0x01,
                                std::uint8_t(std::stoi(next.substr(15), 0, 16))};
    EXPECT_EQ(std::stoi(next.substr(18, 2), nullptr, 16), J1850Crc(pwm)) << next;
}

TEST(Br3Session, CancelInEachStateOfTheConnectEndsItAtOnce) {
    struct Case {
        const char* state;
        const char* car;
        int cancelAtMs;
        const char* asked;  // what the converter was last asked when the user cancelled
    } cases[] = {
        {"synchronising", "silent", 2000, ""},
        {"probing", "pwm", 1000, "41 00"},  // VPW, which this car does not answer
        {"Mode 01 list", "vpw", 600, "07 68 6A F1 01 00 17 01"},
        {"Mode 02 list", "vpw", 850, "07 68 6A F1 02 00 C3 01"},
        {"PID 1C", "vpw", 1100, "07 68 6A F1 01 1C 46 01"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.state);
        const bool silent = c.car == std::string("silent");
        Br3Rig r(silent ? "vpw" : c.car);
        r.br3->setSilent(silent);
        std::size_t askedAtCancel = 0;
        r.at(c.cancelAtMs, [&] {
            askedAtCancel = r.frames().size();
            EXPECT_EQ(askedAtCancel ? r.frames().back() : "", c.asked);
            r.app().frmConnecting().cmdConnectingCancel.onClick();
        });
        r.connect();
        EXPECT_LT(r.t.loop.nowMs(), c.cancelAtMs + 1000);
        r.run(5000);
        EXPECT_FALSE(r.app().Connected);
        EXPECT_FALSE(r.app().frmConnecting().loaded());
        EXPECT_FALSE(r.app().frmConnecting().BR3Connecting->portOpen());
        EXPECT_EQ(r.frames().size(), askedAtCancel);
        EXPECT_TRUE(r.t.dialogs.shown().empty());
        EXPECT_NE(r.log().find("USER CANCELED\"\r\n\"***"), std::string::npos);  // the last record
    }
}

TEST(Br3Session, VinCodesAndFreezeFrameOnBothFamilies) {
    for (auto [car, code] : {std::pair{"vpw", "P0300"}, std::pair{"iso9141", "P0130"}}) {
        SCOPED_TRACE(car);
        Br3Rig r(car);
        r.connect();
        App& app = r.app();
        ASSERT_TRUE(app.Connected);
        app.RequestInfo = true;
        r.run(3000);
        EXPECT_EQ(app.frmMain().txtVin.text(), r.vehicle.vin);
        app.RequestTroubleCodes = app.RequestPendingCodes = true;
        r.run(3000);
        ASSERT_GE(app.frmMain().lstCodes.count(), 1);
        EXPECT_EQ(app.frmMain().lstCodes.item(0).substr(0, 5), code);
        EXPECT_GE(app.frmMain().lstPendingCodes.count(), 1);
        // The freeze-frame code's answer asks for the freeze frame's values.
        app.RequestFFCode = true;
        r.run(6000);
        EXPECT_EQ(app.LastFreezeCode, code);
        EXPECT_FALSE(app.RequestFFData);
        EXPECT_TRUE(Shown(app.frmMain().lblFFCoolant));
        EXPECT_TRUE(app.Connected);
        EXPECT_TRUE(r.t.dialogs.shown().empty());
    }
}

// A flood of rubbish is LinkFaults' and a pull during a session PortPulled's.
TEST(Br3Session, AConverterThatFailsEndsInItsMessageWithoutAHang) {
    const std::string kWatchdog = "Communication Not Found", kNoResponse = "No Response";
    struct Case {
        const char* name;
        bool duringConnect;
        std::function<void(Br3Rig&)> fault;
        std::string title;  // "": the session may go on
    } cases[] = {
        {"silent", false, [](Br3Rig& r) { r.br3->setSilent(true); }, kWatchdog},
        {"half frames", false, [](Br3Rig& r) { r.br3->cutNextAnswers(1 << 30); }, ""},
        {"reads before the answers", false,
         [](Br3Rig& r) { r.app().frmMain().BR3Delay.setInterval(20); }, ""},
        {"pulled out while probing", true, [](Br3Rig& r) { r.at(300, [&r] { r.wire->vanish(); }); },
         kNoResponse},
        {"rubbish while connecting", true, [](Br3Rig& r) { r.br3->garbleNextAnswers(1 << 30); },
         kNoResponse},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Br3Rig r("vpw");
        r.t.dialogs.answerNext(MsgAnswer::Cancel);
        if (c.duringConnect) c.fault(r);
        r.connect();
        if (!c.duringConnect) {
            ASSERT_TRUE(r.app().Connected);
            r.run(500);
            c.fault(r);
            r.run(15000);
        }
        // What is garbled or cut may still read as a frame: the session goes on or the
        // watchdog ends it.
        if (c.title.empty() && r.app().Connected) continue;
        EXPECT_EQ(r.t.dialogs.titles(), Strings{c.title.empty() ? kWatchdog : c.title});
        EXPECT_FALSE(r.app().Connected);
        EXPECT_FALSE(r.app().frmMain().BR3MSComm->portOpen());
        EXPECT_FALSE(r.app().frmConnecting().loaded());
    }
}

}  // namespace
}  // namespace ketrel::test
