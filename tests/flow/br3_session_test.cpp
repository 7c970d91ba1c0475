#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "core/session.h"
#include "link/br3_frames.h"
#include "link/conn_log.h"
#include "sim/br3_converter.h"
#include "sim/sim_serial_port.h"
#include "sim/sim_wire.h"
#include "sim/vehicle_file.h"
#include "support/test_app.h"

namespace ketrel::test {
namespace {

sim::SimVehicle Car(const std::string& name) {
    if (name == "default") return sim::SimVehicle::Default();
    return sim::LoadVehicleFile(std::string(KETREL_DATA_DIR) + "/sim/" + name + ".vehicle").vehicle;
}

// The application joined to a simulated count-byte converter on port 1, on virtual time, with
// the session logic installed and the settings of a user who chose that converter.
struct Br3Rig {
    explicit Br3Rig(const std::string& car = "vpw", int start = 1) : t(&ports), vehicle(Car(car)) {
        ports.plug(1, wire);
        App& app = *t;
        t.settings.save(kAppName, kSection, "OBDIIHardware", kBr3);
        t.settings.save(kAppName, kSection, "ConnectPort", "1");
        app.TimeOut = 10000;
        app.frmMain().TimeOutConnect.setInterval(10000);
        app.SaveInfo = true;
        app.ConnectLogEnabled = true;
        app.BR3Start = start;
        app.BR3SetDelay = true;
        app.BR3Delay = "180";
        app.Temp = "F";
        std::filesystem::create_directories(t.dir.path() / "Log");
        InstallSession(app);
        app.frmMain().load();
        app.hooks.FrameDecoded = [this] { decoded.push_back(t->RawFrame); };
    }
    App& app() { return *t; }
    const std::vector<std::string>& commands() const { return converter.commands(); }
    void connect() {
        t.loop.setLimitMs(t.loop.nowMs() + 200000);  // a hang fails instead of spinning
        ConnectSession(app());
    }
    void run(int ms) { t.loop.runFor(ms); }
    // Runs fn once, `ms` from now, inside whatever wait is going on.
    void at(int ms, std::function<void()> fn) {
        timers.push_back(std::make_unique<Timer>(t.loop.scheduler(), ms));
        Timer& timer = *timers.back();
        timer.setHandler([&timer, fn] {
            timer.stop();
            fn();
        });
        timer.start();
    }
    // Runs fn once, when the connecting screen's answer field first satisfies `holds`.
    void onInput(std::function<bool(const std::string&)> holds, std::function<void()> fn) {
        Field& field = app().frmConnecting().txtConnectingInput;
        field.onChange = [this, holds, fn, done = false]() mutable {
            if (done || !holds(app().frmConnecting().txtConnectingInput.text())) return;
            done = true;
            fn();
        };
    }
    // The connecting log's records without their stamps.
    std::vector<std::string> logTexts() const {
        std::vector<std::string> out;
        for (std::string line : Lines(ReadFile(ConnectLog::pathFor(t.dir.path())))) {
            while (!line.empty() && (line.back() == '\r' || line.back() == '"'))
                line.pop_back();
            if (!line.empty() && line.front() == '"') line.erase(0, 1);
            auto close = line.find(")     ");
            out.push_back(close == std::string::npos ? line : line.substr(close + 6));
        }
        return out;
    }
    std::vector<std::string> titles() const { return t.dialogs.titles(); }

    sim::SimSerialPortFactory ports;
    TestApp t;
    sim::SimVehicle vehicle;
    sim::Br3Converter converter{vehicle};
    sim::SimWire wire{t.loop.scheduler(), converter};
    std::vector<std::unique_ptr<Timer>> timers;
    std::vector<std::string> decoded;
};

// True when `want` appear in `have` in this order, others between them allowed.
bool InOrder(const std::vector<std::string>& have, const std::vector<std::string>& want) {
    auto it = have.begin();
    for (const std::string& w : want) {
        it = std::find(it, have.end(), w);
        if (it == have.end()) return false;
        ++it;
    }
    return true;
}

// A value field that a decoded answer has written.
bool Shown(const Field& f) {
    return !f.text().empty() && f.text() != "N/A";
}

bool Has(const std::vector<std::string>& have, const std::string& s) {
    return std::find(have.begin(), have.end(), s) != have.end();
}

TEST(Br3Session, ConnectsOnEachProtocolAndScans) {
    struct Case {
        const char* car;
        int start;
        const char* protocol;
        std::vector<std::string> log;
    } cases[] = {
        {"vpw",
         1,
         "01",
         {"TYPE INTERFACE USED:  BR3 PROTOCOL CONVERTER", "SET BAUDRATE:  19200", "SET PORT:  1",
          "OPEN PORT", "SENDING:  20", "RECEIVED:  01FF", "CLEAR BUFFER", "SENDING:  41 00 (VPW)",
          "DELAY 175 mS", "SENDING:  07 68 6A F1 01 00 17 01", "DELAY 275 mS",
          "MODE 01 PID 00 LOOKUP IN PROCESS", "CALL MODE 02 PID 00 PROCEDURE",
          "SENDING:  07 68 6A F1 02 00 C3 01", "MODE 02 PID 00 LOOKUP IN PROCESS",
          "CALL MODE 01 PID 28 PROCEDURE", "SENDING:  07 68 6A F1 01 28 46 01",
          "MODE 01 PID 28 LOOKUP IN PROCESS",
          "************************END OF CONNECTING************************"}},
        {"pwm",
         1,
         "02",
         {"VPW TIMEOUT", "RESET TIMEOUT", "SENDING:  41 01 (PWM)",
          "SENDING:  07 61 6A F1 01 00 16 01", "SENDING:  07 61 6A F1 02 00 DE 01",
          "SENDING:  07 61 6A F1 01 28 5Bh 01"}},
        {"iso9141",
         1,
         "03",
         {"PWM TIMEOUT", "SENDING:  42 02 33 (ISO - 9141)", "DELAY 3000 mS",
          "SENDING:  06 68 6A F1 01 00 C4", "SENDING:  07 68 6A F1 02 00 00 C5",
          "SENDING:  06 68 6A F1 01 28 E0"}},
        {"iso14230",
         5,
         "04",
         {"SENDING:  46 03 C1 33 F1 81 66 (KWP2000 (FAST))", "DELAY 300 mS",
          "SENDING:  06 C2 33 F1 01 00 E7", "SENDING:  07 C2 33 F1 02 00 00 E8",
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
        EXPECT_TRUE(app.frmMain().BR3MSComm->portOpen());
        EXPECT_TRUE(InOrder(r.logTexts(), c.log));
        r.run(3000);
        EXPECT_GE(r.decoded.size(), j1850 ? 15u : 10u);
        EXPECT_TRUE(Shown(app.frmMain().lblRPM)) << app.frmMain().lblRPM.text();
        EXPECT_TRUE(r.t.dialogs.shown().empty());
    }
}

TEST(Br3Session, NoResponseComesAfterTheTriedProbesAndRetryStartsAgain) {
    struct Case {
        const char* name;
        const char* car;
        int start;
        bool converterSilent, vehicleOff;
        int fromMs, toMs;  // time of the message
        std::vector<std::string> log;
    } cases[] = {
        // The retry at the fifth second skips a count: ten seconds are nine.
        {"converter silent",
         "vpw",
         1,
         true,
         false,
         9000,
         9300,
         {"SENDING:  20", "SENDING:  20", "UNSUCCESSFUL CONNECTING"}},
        {"ignition off, all five",
         "vpw",
         1,
         false,
         true,
         9000,
         14000,
         {"VPW TIMEOUT", "PWM TIMEOUT", "SENDING:  42 02 33 (ISO - 9141)",
          "SENDING:  42 02 33 (KWP2000 (SLOW))", "SENDING:  46 03 C1 33 F1 81 66 (KWP2000 (FAST))",
          "CONNECTING TIMEOUT", "UNSUCCESSFUL CONNECTING"}},
        {"VPW only on a PWM car",
         "pwm",
         2,
         false,
         false,
         1000,
         2400,
         {"SENDING:  41 00 (VPW)", "VPW TIMEOUT", "CONNECTING TIMEOUT"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Br3Rig r(c.car, c.start);
        r.converter.setSilent(c.converterSilent);
        r.converter.setVehicleResponding(!c.vehicleOff);
        std::int64_t shownAt = 0;
        r.t.dialogs.onShow = [&](const MessageBox&) { shownAt = r.t.loop.nowMs(); };
        r.t.dialogs.answerNext(MsgAnswer::Cancel);
        r.connect();
        ASSERT_EQ(r.titles(), std::vector<std::string>{"No Response"});
        EXPECT_EQ(r.t.dialogs.shown()[0].buttons, MsgButtons::RetryCancel);
        EXPECT_GE(shownAt, c.fromMs);
        EXPECT_LE(shownAt, c.toMs);
        EXPECT_TRUE(InOrder(r.logTexts(), c.log));
        EXPECT_EQ(Has(r.logTexts(), "CONNECTING TIMEOUT"), !c.converterSilent);
        EXPECT_TRUE(Has(r.logTexts(), "USER CANCELED"));
        EXPECT_FALSE(r.app().Connected);
        EXPECT_FALSE(r.app().frmConnecting().loaded());
    }
    Br3Rig r("vpw");
    r.converter.setSilent(true);
    r.t.dialogs.onShow = [&](const MessageBox&) { r.converter.setSilent(false); };
    r.t.dialogs.answerNext(MsgAnswer::Retry);
    r.connect();
    EXPECT_TRUE(r.app().Connected);
    EXPECT_TRUE(InOrder(r.logTexts(), {"UNSUCCESSFUL CONNECTING", "RETRY COMMAND", "RESET TIMEOUT",
                                       "TYPE INTERFACE USED:  BR3 PROTOCOL CONVERTER",
                                       "MODE 01 PID 28 LOOKUP IN PROCESS"}));
}

TEST(Br3Session, EachStartRowProbesItsOwnProtocols) {
    struct Case {
        int start;
        const char* car;
        const char* probe;     // the one start command the converter took
        const char* protocol;  // "" when the connect fails
    } cases[] = {
        {2, "vpw", "41 00", "01"},
        {3, "pwm", "41 01", "02"},
        {3, "vpw", "41 01", ""},
        {4, "iso9141", "42 02 33", "03"},
        {4, "iso14230", "42 02 33", "03"},  // its key bytes pass the ISO 9141 test
        {5, "iso14230", "46 03 C1 33 F1 81 66", "04"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::to_string(c.start) + " " + c.car);
        Br3Rig r(c.car, c.start);
        r.t.dialogs.answerNext(MsgAnswer::Cancel);
        r.connect();
        std::vector<std::string> probes;
        for (const std::string& cmd : r.commands())
            if (cmd.rfind("4", 0) == 0) probes.push_back(cmd);
        EXPECT_EQ(probes, std::vector<std::string>{c.probe});
        EXPECT_EQ(r.app().Connected ? r.app().ProtocolCode : "", c.protocol);
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
        InOrder(r.logTexts(),
                {"MODE 01 PID 00 LOOKUP IN PROCESS", "PROCESSING 2ND FRAME OF MODE 01 PID 00 ",
                 "SENDING:  07 68 6A F1 01 00 17 02", "MODE 01 PID 00 NOT RECEIVED",
                 "RESET TIMEOUT", "SENDING:  41 01 (PWM)"}));
    EXPECT_EQ(r.titles(), std::vector<std::string>{"No Response"});
}

TEST(Br3Session, Pid1CTimeOutLinksUpAndPollsJ1850WithThePwmRoutine) {
    Br3Rig r("vpw");
    // The Mode 02 list's answer is in: the next answer, PID 1C's, comes cut short.
    r.onInput([](const std::string& in) { return in.rfind("0B486B1042", 0) == 0; },
              [&] { r.converter.cutNextAnswers(1); });
    r.connect();
    ASSERT_TRUE(r.app().Connected);
    EXPECT_TRUE(InOrder(r.logTexts(), {"SENDING:  07 68 6A F1 01 28 46 01", "DELAY 275 mS",
                                       "MODE 01 PID 28 NOT RECEIVED"}));
    EXPECT_FALSE(Has(r.logTexts(), "MODE 01 PID 28 LOOKUP IN PROCESS"));
    r.run(1000);
    // The frame after PID 1C: on the VPW header with the PWM routine's check.
    auto it = std::find_if(r.commands().begin(), r.commands().end(), [](const std::string& c) {
        return c.rfind("07 68 6A F1 01 1C", 0) == 0;
    });
    ASSERT_NE(it + 1, r.commands().end());
    const std::string next = *(it + 1);
    ASSERT_EQ(next.rfind("07 68 6A F1 01 ", 0), 0u) << next;
    std::uint8_t pid = std::uint8_t(std::stoi(next.substr(15, 2), nullptr, 16));
    const std::uint8_t pwm[] = {0x61, 0x6A, 0xF1, 0x01, pid};
    EXPECT_EQ(std::stoi(next.substr(18, 2), nullptr, 16), J1850Crc(pwm)) << next;
}

TEST(Br3Session, CancelWhileSynchronisingOrProbingEndsTheConnectAtOnce) {
    for (auto [silent, cancelAtMs] : {std::pair{true, 2000}, std::pair{false, 2600}}) {
        SCOPED_TRACE(cancelAtMs);
        Br3Rig r("pwm");  // at 2.6 s the PWM probe waits
        r.converter.setSilent(silent);
        std::size_t commandsAtCancel = 0;
        r.at(cancelAtMs, [&] {
            commandsAtCancel = r.commands().size();
            r.app().frmConnecting().cmdConnectingCancel.onClick();
        });
        r.connect();
        EXPECT_LT(r.t.loop.nowMs(), cancelAtMs + 1000);
        r.run(5000);
        EXPECT_FALSE(r.app().Connected);
        EXPECT_FALSE(r.app().frmConnecting().loaded());
        EXPECT_FALSE(r.app().frmConnecting().BR3Connecting->portOpen());
        EXPECT_EQ(r.commands().size(), commandsAtCancel);
        EXPECT_TRUE(r.t.dialogs.shown().empty());
        EXPECT_TRUE(Has(r.logTexts(), "USER CANCELED"));
    }
}

TEST(Br3Session, ScanChainReadsAfterTheDelayAndSurvivesATooShortDelay) {
    for (int delay : {150, 20}) {
        SCOPED_TRACE(delay);
        Br3Rig r("vpw");
        r.connect();
        App& app = r.app();
        ASSERT_TRUE(app.Connected);
        app.frmMain().BR3Delay.setInterval(delay);
        r.decoded.clear();
        std::size_t sent = r.commands().size();
        r.run(4000);
        EXPECT_TRUE(app.Connected);
        // One read for each request (the first read is of the connect's request).
        const std::size_t requests = r.commands().size() - sent;
        EXPECT_LE(r.decoded.size(), requests + 1);
        EXPECT_GE(r.decoded.size(), requests);
        std::size_t empty = std::count(r.decoded.begin(), r.decoded.end(), std::string());
        if (delay == 150) {
            EXPECT_EQ(empty, 0u);
            EXPECT_NEAR(double(requests), 4000.0 / 150, 3);
        } else {
            EXPECT_GT(empty, 0u);  // the answer came after the read
        }
        EXPECT_TRUE(Shown(app.frmMain().lblRPM));
        EXPECT_TRUE(r.t.dialogs.shown().empty());
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

TEST(Br3Session, AConverterThatFailsEndsInItsMessageWithoutAHang) {
    const std::string kWatchdog = "Communication Not Found", kNoResponse = "No Response";
    struct Case {
        const char* name;
        bool duringConnect;
        std::function<void(Br3Rig&)> fault;
        std::string title;  // "": the session may go on
    } cases[] = {
        {"silent", false, [](Br3Rig& r) { r.converter.setSilent(true); }, kWatchdog},
        {"rubbish", false, [](Br3Rig& r) { r.converter.garbleNextAnswers(1 << 30); }, ""},
        {"half frames", false, [](Br3Rig& r) { r.converter.cutNextAnswers(1 << 30); }, ""},
        {"pulled out", false, [](Br3Rig& r) { r.wire.vanish(); }, kWatchdog},
        {"pulled out while probing", true, [](Br3Rig& r) { r.at(300, [&r] { r.wire.vanish(); }); },
         kNoResponse},
        {"rubbish while connecting", true,
         [](Br3Rig& r) { r.converter.garbleNextAnswers(1 << 30); }, kNoResponse},
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
        EXPECT_EQ(r.titles(), std::vector<std::string>{c.title.empty() ? kWatchdog : c.title});
        EXPECT_FALSE(r.app().Connected);
        EXPECT_FALSE(r.app().frmMain().BR3MSComm->portOpen());
        EXPECT_FALSE(r.app().frmConnecting().loaded());
    }
}

}  // namespace
}  // namespace ketrel::test
