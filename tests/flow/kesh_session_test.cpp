#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>

#include "flow/car_rig.h"

namespace ketrel::test {
namespace {

// A K-line cable's rig: the ECU refuses a wake-up whose timing is off; a question during the
// connect is answered Cancel unless told.
struct KeshRig : CarRig {
    KeshRig(const std::string& car, int keshStart) : CarRig(kKesh, car, keshStart) {}
    void connect(MsgAnswer answer = MsgAnswer::Cancel) { CarRig::connect(answer); }
};

// How many 5-baud addresses the ECU took.
std::size_t AddressesTaken(const sim::KlineEcu& ecu) {
    return std::size_t(std::count(ecu.received().begin(), ecu.received().end(), "address 33"));
}

using RigSetup = std::function<void(KeshRig&)>;

TEST(KeshSession, EachWakeUpPathConnectsAndScans) {
    // Silent through the 5-baud attempt, awake for the fast initialisation after its time-out.
    const RigSetup sleepsThroughFiveBaud = [](KeshRig& r) {
        r.ecu->setSilent(true);
        r.at(11000, [&r] { r.ecu->setSilent(false); });
    };
    struct Case {
        const char* path;
        const char* car;
        int keshStart;
        const char* protocol;
        Strings log;
        RigSetup setup = nullptr;
    } cases[] = {
        {"5-baud to ISO 9141",
         "iso9141",
         1,
         "03",
         {"TYPE INTERFACE USED:  KESH PROTOCOL CONVERTER", "SENDING:  START BIT",
          "SENDING:  STOP BIT", "RECEIVED SYNC AND KEYWORD:  550808", "SENDING INVERTED:  F7",
          "RECEIVED ECU INVERTED:  CC", "TRYING ISO - 9141", "SENDING:  68 6A F1 01 00 C4"}},
        {"5-baud to KWP slow",
         "iso14230",
         2,
         "04",
         {"SENDING:  68 6A F1 01 00 C4", "TRYING KWP 2000 (SLOW)", "SENDING:  C2 33 F1 01 00 E7"}},
        {"fast only",
         "iso14230",
         3,
         "04",
         {"Trying ISO - 14230 (FAST)", "SETBAUD 200", "INITIALIZING ECU:  F0", "SETBAUD 10400",
          "START COMMUNICATION REQUEST:  C1 33 F1 81 66", "RECEIVED KEYWORD:  EF 8F",
          "REQUESTING MODE 01 PID 00:  C2 33 F1 01 00 E7"}},
        {"5-baud unanswered, then fast",
         "iso14230",
         1,
         "04",
         {"SENDING:  STOP BIT", "CONNECTING UNSUCCESSFUL (TIMEOUT)", "Trying ISO - 14230 (FAST)",
          "RECEIVED KEYWORD:  EF 8F"},
         sleepsThroughFiveBaud},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.path);
        KeshRig r(c.car, c.keshStart);
        if (c.setup) c.setup(r);
        r.connect();
        App& app = r.app();
        EXPECT_TRUE(app.Connected);
        EXPECT_EQ(app.ProtocolCode, c.protocol);
        EXPECT_EQ(app.frmMain().lblWhatProtocol.text(), c.protocol + 1);
        EXPECT_TRUE(r.logged(c.log)) << r.log();
        EXPECT_TRUE(r.t.dialogs.shown().empty());
        r.run(5000);
        EXPECT_GT(r.distinctDecoded(), 5u);
        EXPECT_TRUE(app.Connected);
    }
}

TEST(KeshSession, FailedWakeUpsEndInNoCommunication) {
    struct Case {
        const char* path;
        const char* car;
        int keshStart;
        int shownBeforeMs;
        RigSetup setup;
    } cases[] = {
        {"5-baud only, no answer", "iso9141", 2, 13000, [](KeshRig& r) { r.ecu->setSilent(true); }},
        {"key byte 0x00", "iso9141", 2, 13000,
         [](KeshRig& r) {
             r.vehicle.keyBytes = {0x08, 0x00};
         }},
        {"rubbish to both requests", "iso14230", 2, 13000,
         [](KeshRig& r) { r.ecu->garbleNextAnswers(2); }},
        {"all wake-ups, no answer", "iso14230", 1, 23000,
         [](KeshRig& r) { r.ecu->setSilent(true); }},
        // Without the echo the strip takes the answer's first digit for the end of the request
        // (48 after ...C4), so the ISO answer is not recognised.
        {"no echo", "iso9141", 2, 13000, [](KeshRig& r) { r.ecu->setEcho(false); }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.path);
        KeshRig r(c.car, c.keshStart);
        c.setup(r);
        std::int64_t shownAt = 0;
        r.t.dialogs.onShow = [&](const MessageBox&) { shownAt = r.t.loop.nowMs(); };
        r.connect();
        ASSERT_EQ(r.t.dialogs.titles(), Strings{"No Communication"});
        EXPECT_EQ(r.t.dialogs.shown()[0].buttons, MsgButtons::RetryCancel);
        EXPECT_GE(shownAt, 11900);
        EXPECT_LE(shownAt, c.shownBeforeMs);
        EXPECT_FALSE(r.app().Connected);
        EXPECT_TRUE(r.logged({"CONNECTING UNSUCCESSFUL (TIMEOUT)", "USER CANCELED"}));
        r.run(3000);
        EXPECT_FALSE(r.app().frmMain().KeshMSComm->portOpen());
    }
}

TEST(KeshSession, RetryCancelAndAVehicleThatMisbehavesMidSession) {
    KeshRig retry("iso9141", 2);
    retry.ecu->setSilent(true);
    retry.t.dialogs.onShow = [&](const MessageBox&) { retry.ecu->setSilent(false); };
    retry.connect(MsgAnswer::Retry);
    EXPECT_TRUE(retry.app().Connected);
    EXPECT_EQ(AddressesTaken(*retry.ecu), 1u);  // the first wake-up went unanswered
    EXPECT_TRUE(retry.logged({"RETRY COMMAND", "OPEN PORT", "RECEIVED ECU INVERTED:  CC"}));

    // Cancel in the idle wait: the countdown stops and nothing reaches the line.
    KeshRig cancel("iso9141", 1);
    std::string status;
    cancel.at(1950, [&] { status = cancel.app().frmConnecting().lblControlStatus[1].text(); });
    cancel.at(2500, [&] { cancel.app().frmConnecting().cmdConnectingCancel.onClick(); });
    cancel.connect();
    EXPECT_LE(cancel.t.loop.nowMs(), 3000);
    EXPECT_EQ(status, "Initializing In Progress...2");
    cancel.run(15000);
    EXPECT_FALSE(cancel.app().Connected);
    EXPECT_TRUE(cancel.t.dialogs.shown().empty());
    EXPECT_EQ(cancel.log().find("START BIT"), std::string::npos);
    EXPECT_TRUE(cancel.wire->deviceReceived().empty());

    // Answers sent twice in one read and rubbish keep the scan going; a vehicle that falls
    // silent is left to the watchdog.
    KeshRig bad("iso14230", 2);
    bad.connect();
    ASSERT_TRUE(bad.app().Connected);
    bad.ecu->doubleNextAnswers(5);
    bad.ecu->garbleNextAnswers(5);
    bad.run(3000);
    EXPECT_TRUE(bad.app().Connected);
    bad.ecu->setSilent(true);
    bad.run(30000);
    EXPECT_FALSE(bad.app().Connected);
}

}  // namespace
}  // namespace ketrel::test
