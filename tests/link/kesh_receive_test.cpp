#include "link/kesh_receive.h"

#include <gtest/gtest.h>

#include "link/br3_test_port.h"
#include "link/kesh_request.h"

namespace ketrel {
namespace {

// An application polling a K-line vehicle on `protocolCode`, its KeshMSComm scripted.
struct KeshSession : test::Br3Session {
    explicit KeshSession(const char* protocolCode)
        : Br3Session(protocolCode, kKesh, "KeshMSComm") {}
    // Puts hex text in the port's buffer and lets KeshDelay tick.
    void receive(const std::string& hex) {
        scan->putHex(hex);
        KeshDelayTick(*t);
    }
    std::string lastSent() const { return scan->sent.empty() ? "" : BytesToHex(scan->sent.back()); }
};

TEST(KeshReceive, EchoStripKeepsWhatFollowsTheEndOfTheRequest) {
    const std::string req = "686AF10100C4", answer = "486B104100BE1FB810A9";
    struct Case {
        std::string raw, tail;
    } cases[] = {
        {"", ""},
        {req, ""},                   // silent after the echo
        {req + answer, answer},      // echo and answer
        {"00C4" + answer, answer},   // start of the echo read before
        {answer, answer.substr(1)},  // no echo: "4" is taken for the end of C4
        {req + answer + "486B184100BE1F", answer + "486B184100BE1F"},  // two answers in one read
        {"6A", "6A"},                                                  // rubbish
    };
    for (const Case& c : cases)
        EXPECT_EQ(KeshStripEcho(c.raw, req), c.tail) << c.raw;
}

TEST(KeshReceive, AnswerAfterTheEchoIsDecodedAndTheNextRequestGoesOut) {
    struct Case {
        const char* protocol;
        const char* raw;
        bool secondFrame;
        const char* key;
        int value1;
    } cases[] = {
        {"03", "686AF1010CD0486B10410C1AF8C5", false, "01/0C", 0x1A},
        {"04",
         "C233F1010CF3"
         "83F11041"
         "0C1AF8C5",
         false, "01/0C", 0x1A},
        {"03", "0CD0486B10410C1AF8000011486B18410C2B11000022", true, "01/0C", 0x2B},
    };
    for (const Case& c : cases) {
        KeshSession s(c.protocol);
        App& app = *s.t;
        app.SecondFrameConnect = c.secondFrame;
        app.LastRequestHex = c.protocol == std::string("03") ? "686AF1010CD0" : "C233F1010CF3";
        app.PidWanted[0x0D] = app.Mode1Supported[0x0D] = true;
        s.receive(c.raw);
        EXPECT_EQ(app.RxMode + "/" + app.RxPID, c.key) << c.raw;
        EXPECT_EQ(app.ByteValue[1].value_or(-1), c.value1) << c.raw;
        EXPECT_EQ(s.lastSent(), c.protocol == std::string("03") ? "686AF1010DD1" : "C233F1010DF4");
        EXPECT_EQ(app.LastRequestHex, s.lastSent());
        EXPECT_TRUE(app.frmMain().KeshDelay.enabled());
    }
}

TEST(KeshRequest, FirstRaisedFlagWinsInTheOrderOfItsLine) {
    struct Case {
        const char* protocol;
        bool App::*flags[3];
        const char* sent;
    } cases[] = {
        {"03",
         {&App::KeshRequestMode2List, &App::KeshRequestPid1C, &App::RequestPid20},
         "686AF10120E4"},
        {"04",
         {&App::KeshRequestMode2List, &App::KeshRequestPid1C, &App::RequestPid20},
         "C233F1011C03"},
        {"03", {&App::KeshRequestMode2List, &App::RequestTroubleCodes, nullptr}, "686AF10200 00C5"},
        {"04", {&App::RequestPendingCodes, &App::KeshRequestMode2List, nullptr}, "C333F1020000E9"},
        {"04", {&App::RequestPendingCodes, &App::RequestClearCodes, nullptr}, "C133F104E9"},
    };
    for (const Case& c : cases) {
        KeshSession s(c.protocol);
        App& app = *s.t;
        for (bool App::*f : c.flags)
            if (f) app.*f = true;
        KeshRequestNext(app);
        std::string want = c.sent;
        std::erase(want, ' ');
        EXPECT_EQ(s.lastSent(), want) << c.protocol;
    }
    // KWP has no place for PID 20: the flag stays up, unserved, and the cycle goes on.
    KeshSession s("04");
    App& app = *s.t;
    app.RequestPid20 = true;
    app.PidWanted[0x0D] = app.Mode1Supported[0x0D] = true;
    KeshRequestNext(app);
    EXPECT_TRUE(app.RequestPid20);
    EXPECT_EQ(s.lastSent(), "C233F1010DF4");
}

}  // namespace
}  // namespace ketrel
