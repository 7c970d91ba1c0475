// Bad input from the text converter ends in the program's own messages, never a crash or a
// hang. A flood of random bytes is LinkFaults' and a pull during a session PortPulled's.
#include <gtest/gtest.h>

#include <functional>

#include "flow/car_rig.h"
#include "link/dorvane_receive.h"

namespace ketrel::test {
namespace {

// Bytes of any value but "V", "S" and "P", so that none starts a frame, asks for a request or
// says the converter is searching.
std::string Inert(Noise& noise, std::size_t n) {
    std::string s;
    while (s.size() < n)
        if (char c = char(noise.byte()); c != 'V' && c != 'S' && c != 'P') s += c;
    return s;
}

// Sends bytes from the converter's end of the wire `ms` after now, as the device would.
void SendAt(DorvaneRig& r, int ms, std::string bytes) {
    r.wire->after(std::int64_t(ms) * 1000, [&r, b = std::move(bytes)] { r.wire->send(b); });
}

const char* const kWatchdogTitle = "Communication Not Found";
const char* const kConnectTitle = "No Communication";

// A session that is up and scanning, with a limit on virtual time that a hang would hit.
void ConnectAndScan(DorvaneRig& r) {
    r.connect();
    ASSERT_TRUE(r.app().Connected);
    r.run(1000);
    r.t.loop.setLimitMs(r.t.loop.nowMs() + 120000);
}

TEST(BadConverterInput, RubbishInASessionEndsInTheWatchdogsMessageWithTheBufferBounded) {
    struct Case {
        const char* name;
        // Bursts to send, each at its time in ms after the converter fell silent.
        std::vector<std::pair<int, std::string>> bursts;
    };
    Noise noise{7};
    Case cases[2] = {{"rubbish without a frame start, one character at a time", {}},
                     {"rubbish without a frame start, 9 kB in big bursts", {}}};
    for (int ms = 0; ms < 5000; ms += 1)
        cases[0].bursts.emplace_back(ms, Inert(noise, 1));
    for (int ms = 0; ms < 5000; ms += 500)
        cases[1].bursts.emplace_back(ms, Inert(noise, 900));
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        DorvaneRig r;
        ConnectAndScan(r);
        BufferWatch w(r.app());
        r.dorvane->setSilent(true);
        for (const auto& [ms, bytes] : c.bursts)
            SendAt(r, ms, bytes);
        r.run(30000);
        EXPECT_FALSE(r.app().Connected);
        EXPECT_EQ(r.t.dialogs.titles(), std::vector<std::string>{kWatchdogTitle});
        EXPECT_LE(w.longestInput, kDorvaneFrameCap);
        EXPECT_LE(w.longestFrame, kDorvaneFrameCap);
        EXPECT_FALSE(r.app().frmMain().MSComm->portOpen());
    }
}

TEST(BadConverterInput, AnswersInOneCharacterChunksKeepTheSessionGoing) {
    DorvaneRig r;
    std::vector<std::size_t> everyCharacter;
    for (std::size_t i = 1; i < 64; ++i)
        everyCharacter.push_back(i);
    r.dorvane->setSplitPoints(everyCharacter);
    r.vehicle.ecus[0].fixed[0x0C] = {0x1A, 0x28};  // no "F" digit, which a piece would lose
    ConnectAndScan(r);
    App& app = r.app();
    BufferWatch w(app);
    for (auto& wanted : app.PidWanted)
        wanted = false;
    app.PidWanted[0x0C] = true;
    r.run(5000);
    EXPECT_TRUE(app.Connected);
    EXPECT_GT(w.frames, 20);
    EXPECT_EQ(app.frmMain().lblRPM.text(), "1674");
    EXPECT_TRUE(r.t.dialogs.shown().empty());
}

TEST(BadConverterInput, AFrameOfTenKilobytesIsCutAndTheScanGoesOn) {
    struct Case {
        const char* name;
        std::string chunk;
    };
    const std::string hex(10000, 'A');
    const Case cases[] = {
        {"a frame that starts it", "V486B10410C" + hex},
        {"a piece that continues the frame before it", "12" + hex},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        DorvaneRig r;
        r.vehicle.ecus[0].fixed[0x0C] = {0x1A, 0xF8};
        ConnectAndScan(r);
        App& app = r.app();
        BufferWatch w(app);
        for (auto& wanted : app.PidWanted)
            wanted = false;
        app.PidWanted[0x0C] = true;
        r.dorvane->setSilent(true);
        SendAt(r, 50, c.chunk);  // about 5.2 s on the line
        r.run(6000);
        r.dorvane->setSilent(false);
        r.run(3000);
        EXPECT_TRUE(app.Connected);
        EXPECT_TRUE(r.t.dialogs.shown().empty());
        EXPECT_LE(w.longestInput, kDorvaneFrameCap);
        EXPECT_LE(w.longestFrame, kDorvaneFrameCap);
        EXPECT_EQ(app.frmMain().lblRPM.text(), "1726");  // real frames decode as before
    }
}

TEST(BadConverterInput, AConverterThatFailsEndsTheSessionOrTheConnectCleanly) {
    struct Case {
        const char* name;
        bool duringConnect;
        std::function<void(DorvaneRig&)> fault;  // before the connect, or once scanning
        std::vector<MsgAnswer> answers;
        std::vector<std::string> titles;
        std::function<void(DorvaneRig&, const BufferWatch&)> check;
    };
    auto nothing = [](DorvaneRig&, const BufferWatch&) {};
    auto pullAfter100 = [](DorvaneRig& r) { r.wire->after(100'000, [&r] { r.wire->vanish(); }); };
    const Case cases[] = {
        {"random bytes during a connect",
         true,
         [](DorvaneRig& r) {
             r.dorvane->setSilent(true);
             Noise noise{11};
             for (int ms = 250; ms < 10000; ms += 7)
                 SendAt(r, ms, noise.bytes(1 + noise.byte() % 16));
         },
         {MsgAnswer::Cancel},
         {kConnectTitle},
         [](DorvaneRig&, const BufferWatch& w) {
             EXPECT_GT(w.longestInput, 0u);
             EXPECT_LE(w.longestInput, kDorvaneFrameCap);
         }},
        {"half of the first list answer, during the connect",
         true,
         [](DorvaneRig& r) {
             r.dorvane->setSilent(true);
             SendAt(r, 300, "S");
             SendAt(r, 400, "V486B104100BE");
         },
         {MsgAnswer::Cancel},
         {kConnectTitle},
         [](DorvaneRig& r, const BufferWatch&) { EXPECT_EQ(r.wire->deviceReceived(), "010009"); }},
        {"half of a value, during a session",
         false,
         [](DorvaneRig& r) {
             r.dorvane->setSilent(true);
             SendAt(r, 100, "V486B10410C1A");
         },
         {},
         {kWatchdogTitle},
         nothing},
        {"pulled out during a connect, then Cancel",
         true,
         pullAfter100,
         {MsgAnswer::Cancel},
         {kConnectTitle},
         nothing},
        {"pulled out during a connect, then Retry finds no port",
         true,
         pullAfter100,
         {MsgAnswer::Retry},
         {kConnectTitle, "Error"},
         [](DorvaneRig& r, const BufferWatch&) {
             EXPECT_EQ(r.t.dialogs.shown().back().text,
                       "Please Recheck Your Settings Or Run Auto Detect.");
         }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        DorvaneRig r;
        BufferWatch w(r.app());
        for (MsgAnswer a : c.answers)
            r.t.dialogs.answerNext(a);
        if (c.duringConnect) {
            c.fault(r);
            r.t.loop.setLimitMs(120000);
            r.connect();
        } else {
            ConnectAndScan(r);
            c.fault(r);
            r.run(15000);
        }
        EXPECT_EQ(r.t.dialogs.titles(), c.titles);
        c.check(r, w);
        EXPECT_FALSE(r.app().Connected);
        EXPECT_FALSE(r.app().frmConnecting().loaded());
        EXPECT_FALSE(r.app().frmMain().MSComm->portOpen());
        EXPECT_EQ(r.app().frmMain().panel(1).text(), "CONNECTION STATUS:  DISCONNECTED");
    }
}

}  // namespace
}  // namespace ketrel::test
