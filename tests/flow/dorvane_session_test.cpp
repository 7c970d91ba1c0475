// The text converter's session: the connect, the poll, the watchdog, the codes, and the states
// of the main window's entries over a whole session of the program.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>

#include "core/application.h"
#include "core/scan_cycle.h"
#include "core/startup.h"
#include "flow/car_rig.h"
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
    EXPECT_TRUE(app.Connected && !app.Connecting && app.Mode1ListRead && app.Mode2ListRead);
    EXPECT_FALSE(app.frmConnecting().loaded());
    EXPECT_TRUE(app.frmMain().MSComm->portOpen());
    EXPECT_EQ(app.frmMain().panel(1).text(), "CONNECTION STATUS:  CONNECTED");
    EXPECT_EQ(app.frmMain().panel(3).text(), "COM PORT:  1");
    r.run(3000);
    const auto& cmds = r.frames();
    ASSERT_GE(cmds.size(), 4u);
    EXPECT_EQ(Strings(cmds.begin(), cmds.begin() + 2), (Strings{"010009", "02000A"}));
    int pid1c = indexOf(cmds, "011C06"), firmware = indexOf(cmds, "900504");
    ASSERT_GE(pid1c, 0);
    EXPECT_EQ(firmware, pid1c + 1);  // PID 1C first, then the firmware, then the poll
    EXPECT_EQ(app.ConverterVersion, "1.23");
    EXPECT_TRUE(r.t.dialogs.shown().empty());
    EXPECT_TRUE(r.logged({"TYPE INTERFACE USED:  DORVANE PROTOCOL CONVERTER",
                          "TIMEOUT SET TO 15 SECONDS", "SET PORT:  1", "SET BAUD RATE:  19200",
                          "OPEN PORT", "SYNC DETECTED", "SENDING:  010009", "V DETECTED",
                          "SENDING:  02000A", "REQUESTING FIRMWARE VERSION"}))
        << r.log();
    // This converter has no vehicle-information request.
    app.frmMain().cmdRequestInfo.click();
    r.run(2000);
    for (const std::string& c : r.frames())
        EXPECT_NE(c.substr(0, 2), "09") << c;
}

TEST(DorvaneSession, AVehicleWithoutAFreezeFrameListConnectsAfterFifteenSeconds) {
    DorvaneRig r;
    r.vehicle.ecus[0].mode2.clear();
    r.connect();
    EXPECT_TRUE(r.app().Connected && r.app().Mode1ListRead);
    EXPECT_FALSE(r.app().Mode2ListRead);
    EXPECT_GE(r.t.loop.nowMs(), 15000);
    EXPECT_LT(r.t.loop.nowMs(), 16000);
    EXPECT_TRUE(r.t.dialogs.shown().empty());
}

TEST(DorvaneSession, NoSyncEndsInNoCommunicationAfterFifteenSecondsAndOnlyTheFirstRetrySends) {
    DorvaneRig r;
    r.dorvane->setSilent(true);
    std::vector<std::size_t> bytesAtBox;
    std::int64_t firstBoxAt = 0;
    r.t.dialogs.onShow = [&](const MessageBox&) {
        if (bytesAtBox.empty()) firstBoxAt = r.t.loop.nowMs();
        bytesAtBox.push_back(r.wire->deviceReceived().size());
    };
    for (int i = 0; i < 3; ++i)
        r.t.dialogs.answerNext(MsgAnswer::Retry);
    r.connect(MsgAnswer::Cancel);
    ASSERT_EQ(bytesAtBox.size(), 4u);
    EXPECT_EQ(r.t.dialogs.shown()[0].title, "No Communication");
    EXPECT_EQ(r.t.dialogs.shown()[0].buttons, MsgButtons::RetryCancel);
    EXPECT_GE(firstBoxAt, 15000);
    EXPECT_EQ(bytesAtBox[0], 0u);  // nothing asked before the first box
    EXPECT_TRUE(r.frames().empty());
    // After the first box: the 13-byte frame and "F0646A"; after the second and third: nothing.
    std::string retry(kDorvaneRetryFrame, sizeof kDorvaneRetryFrame);
    EXPECT_EQ(r.wire->deviceReceived().substr(bytesAtBox[0], 19), retry + "F0646A");
    EXPECT_EQ(bytesAtBox[3], bytesAtBox[1]);
    EXPECT_FALSE(r.app().Connected);
    EXPECT_FALSE(r.app().frmConnecting().loaded());
    EXPECT_EQ(r.app().frmMain().panel(1).text(), "CONNECTION STATUS:  DISCONNECTED");
}

TEST(DorvaneSession, CancelDuringAConnectEndsTheSessionAndTheScreenGoesHalfASecondLater) {
    DorvaneRig r;
    r.dorvane->setSilent(true);
    r.at(3000, [&] { r.app().frmConnecting().cmdConnectingCancel.click(); });
    r.connect();
    EXPECT_FALSE(r.app().Connected);
    EXPECT_TRUE(r.app().ConnectCancelled);
    EXPECT_GE(r.t.loop.nowMs(), 3500);
    EXPECT_TRUE(r.app().frmMain().mnuVehicleConnect.enabled());
    EXPECT_FALSE(r.app().frmMain().mnuVehicleDisconnect.enabled());
    EXPECT_TRUE(r.t.dialogs.shown().empty());
    EXPECT_TRUE(r.logged({"USER CANCELED"}));
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
    auto next = [](const std::string& a) {
        return a == "010506" ? "010C07" : a == "010C07" ? "010D06" : "010506";
    };
    r.run(1500);
    std::size_t mark = r.frames().size();
    r.run(1500);
    ASSERT_GE(r.frames().size(), mark + 6);
    for (std::size_t i = mark; i + 1 < r.frames().size(); ++i)
        EXPECT_EQ(r.frames()[i + 1], next(r.frames()[i])) << "after " << r.frames()[i];
    // A one-shot: the PID whose turn it was is skipped this round.
    app.RequestTroubleCodes = true;
    r.run(800);
    std::size_t at = std::size_t(indexOf(r.frames(), "03000A", mark));
    ASSERT_LT(at, r.frames().size() - 1);
    EXPECT_NE(r.frames()[at + 1], next(r.frames()[at - 1]));
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
    r.dorvane->setVehicleResponding(false);  // the converter reports "P" while it searches
    r.run(3000);
    EXPECT_EQ(app.frmMain().panel(1).text(), "CONNECTION STATUS:  RECONNECTING...");
    EXPECT_TRUE(app.frmMain().TimeOutConnect.enabled());
    r.dorvane->setVehicleResponding(true);
    r.run(3000);
    EXPECT_EQ(app.frmMain().panel(1).text(), "CONNECTION STATUS:  CONNECTED");
    EXPECT_TRUE(app.Connected);
    EXPECT_TRUE(r.t.dialogs.shown().empty());
}

// The watchdog ends the session; ending it once more changes nothing and asks nothing.
TEST(DorvaneSession, TheWatchdogEndsASessionThatHearsNothingWithItsMessage) {
    for (bool silentConverter : {true, false}) {
        SCOPED_TRACE(silentConverter ? "silent converter" : "no PID wanted: the builder spins");
        DorvaneRig r;
        r.connect();
        r.run(2000);
        if (silentConverter) r.dorvane->setSilent(true);
        for (auto& w : r.app().PidWanted)
            w = w && silentConverter;
        r.t.loop.setLimitMs(r.t.loop.nowMs() + 60000);  // a search that never returns throws
        r.run(9000);
        if (silentConverter) {
            EXPECT_TRUE(r.app().Connected);  // 10 s from the last frame
        }
        r.run(2000);
        App& app = r.app();
        EXPECT_FALSE(app.Connected);
        ASSERT_EQ(r.t.dialogs.shown().size(), 1u);
        EXPECT_EQ(r.t.dialogs.shown()[0].title, "Communication Not Found");
        EXPECT_EQ(r.t.dialogs.shown()[0].text,
                  "Unable To Establish Communication.  Please Check "
                  "Your Connection Then Retry Again.");
        EndSession(app);
        EXPECT_FALSE(app.frmMain().MSComm->portOpen());
        EXPECT_FALSE(app.frmMain().TimeOutConnect.enabled());
        EXPECT_TRUE(std::none_of(app.PidWanted.begin(), app.PidWanted.begin() + 80,
                                 [](bool b) { return b; }));
        EXPECT_EQ(app.frmMain().Image1[12].picture(), kImgRed);
        EXPECT_FALSE(app.frmMain().cmdRequestTC.enabled());
        EXPECT_EQ(app.frmMain().panel(3).text(), "COM PORT:  N/A");
        std::size_t sent = r.frames().size();
        r.run(3000);
        EXPECT_EQ(r.frames().size(), sent);  // no requests after the end
        EXPECT_EQ(r.t.dialogs.shown().size(), 1u);
    }
}

TEST(DorvaneSession, WithNoWantedPidTheBuilderSpinsUntilAFlagTurnsItOut) {
    DorvaneRig r;
    r.connect();
    r.run(1000);
    App& app = r.app();
    for (auto& w : app.PidWanted)
        w = false;
    std::size_t atClear = r.frames().size(), atRaise = 0;
    // The builder spins inside its handler, pumping: the raise below runs nested in it.
    r.after(3000, [&] {
        atRaise = r.frames().size();
        app.PidWanted[0x0D] = true;
    });
    r.run(4000);
    EXPECT_LE(atRaise, atClear + 1);  // at most the request already on its way
    ASSERT_GT(r.frames().size(), atRaise);
    EXPECT_EQ(r.frames()[atRaise], "010D06");
    EXPECT_TRUE(app.Connected);
}

// A connected session with a vehicle holding several stored codes (more than one reply
// frame's worth), a pending code and a freeze frame stored by the first code.
struct CodesRig : DorvaneRig {
    CodesRig() {
        auto& ecu = vehicle.ecus[0];
        ecu.stored.clear();
        for (const char* c : {"P0301", "P0420", "P0133", "P1641", "P0171"})
            ecu.stored.push_back(*sim::ParseTroubleCode(c));
        ecu.pending = {*sim::ParseTroubleCode("P0300")};
        ecu.freezeCode = ecu.stored.front();
        app().AlertOnMIL = true;
        connect();
        run(2000);
    }
    FrmMain& m() { return app().frmMain(); }
};

TEST(DorvaneCodes, StoredPendingAndFreezeCodesFillTheGridsWithTheirTexts) {
    CodesRig r;
    FrmMain& m = r.m();
    m.mnuVehicleRequestTC.click();  // F4
    r.run(1500);
    ASSERT_GE(m.lstCodes.count(), 5);
    EXPECT_EQ(m.lstCodes.item(0), "P0301");
    EXPECT_EQ(m.gridTroubleCode.text(2, 1), "P0301");
    EXPECT_EQ(m.gridTroubleCode.text(2, 2), "TC");
    EXPECT_EQ(m.gridTroubleCode.text(2, 3), "Cylinder 1 Misfire Detected");
    EXPECT_EQ(m.gridTroubleCode.text(5, 1), "P1641");
    EXPECT_EQ(m.gridTroubleCode.text(5, 3), "");  // no text for codes other than "P0"
    EXPECT_TRUE(r.app().frmAlertMIL().visible());
    EXPECT_TRUE(m.cmdPrintFFData.enabled());

    m.cmdRequestPending.click();  // F5 does the same through its menu entry
    r.run(1500);
    ASSERT_GE(m.lstPendingCodes.count(), 1);
    EXPECT_EQ(m.gridPending.text(1, 1), "P0300");
    EXPECT_EQ(m.gridPending.text(1, 2), "Random/Multiple Cylinder Misfire Detected");

    m.mnuVehicleRequestFF.click();  // F3
    r.run(3000);
    EXPECT_EQ(m.gridTroubleCode.text(1, 1), "P0301");
    EXPECT_EQ(m.gridTroubleCode.text(1, 2), "FF");
    EXPECT_EQ(m.gridTroubleCode.text(2, 1), "P0301");  // stored codes stay from row 2
    // The freeze code starts the freeze-frame sweep: its values arrive.
    r.run(4000);
    EXPECT_TRUE(Shown(m.lblFFRPM));
    EXPECT_FALSE(r.app().RequestFFData);
    // A tab change away from the codes tab wipes the code data, unless a log plays.
    r.app().PlayFormOpen = true;
    m.SSTab1.setTab(0);
    EXPECT_GT(m.lstCodes.count(), 0);
    r.app().PlayFormOpen = false;
    m.SSTab1.setTab(3);
    EXPECT_EQ(m.lstCodes.count(), 0);
    EXPECT_EQ(m.gridTroubleCode.text(2, 1), "");
    EXPECT_EQ(m.gridTroubleCode.text(0, 3), "DESCRIPTION");
    EXPECT_FALSE(m.cmdPrintFFData.enabled());
}

TEST(DorvaneCodes, ClearingWithYesWipesEveryCodeFieldAndTheVehicleForgetsItsCodes) {
    CodesRig r;
    FrmMain& m = r.m();
    m.mnuVehicleRequestTC.click();
    m.mnuVehicleRequestFF.click();
    r.t.dialogs.answerNext(MsgAnswer::No);  // No asks nothing of the vehicle
    m.cmdClearCodes.click();
    EXPECT_FALSE(r.app().RequestClearCodes);
    EXPECT_FALSE(m.ClearCodeTimer.enabled());
    r.run(9000);  // unsupported sweep positions each wait for the converter's idle sync
    for (const std::string& c : r.frames())
        ASSERT_NE(c, "040004");
    ASSERT_GT(m.lstCodes.count(), 0);
    ASSERT_NE(m.lblFFRPM.text(), "N/A");
    r.t.dialogs.answerNext(MsgAnswer::Yes);
    m.mnuVehicleClear.click();  // F2
    EXPECT_EQ(r.t.dialogs.shown().back().text, "Are You Sure You Want To Clear Code?");
    EXPECT_FALSE(r.app().frmAlertMIL().loaded());
    r.run(2500);
    EXPECT_EQ(m.lstCodes.count(), 0);
    EXPECT_EQ(m.lstPendingCodes.count(), 0);
    EXPECT_EQ(m.lstFreezeCodes.count(), 0);
    EXPECT_EQ(m.gridTroubleCode.text(2, 1), "");
    EXPECT_EQ(m.gridTroubleCode.text(0, 1), "DTC");
    EXPECT_EQ(m.lblFFRPM.text(), "N/A");  // every freeze-frame field: see the ClearReply table
    EXPECT_FALSE(m.ClearCodeTimer.enabled());
    EXPECT_EQ(r.t.dialogs.shown().size(), 2u);  // the two questions, no failure message
    // Asked again, the vehicle has nothing stored.
    m.mnuVehicleRequestTC.click();
    r.run(1500);
    EXPECT_TRUE(m.lstCodes.count() == 0 || m.lstCodes.item(0) == "P0000");
}

TEST(DorvaneCodes, ALateClearAnswerStillWipesAfterTheFailureMessage) {
    CodesRig r;
    FrmMain& m = r.m();
    m.mnuVehicleRequestTC.click();
    r.run(1500);
    ASSERT_GT(m.lstCodes.count(), 0);
    // The clear's answer comes garbled, so the 2 s timer fires first.
    r.dorvane->garbleNextAnswers(1);
    r.t.dialogs.answerNext(MsgAnswer::Yes);
    m.cmdClearCodes.click();
    r.run(2500);
    ASSERT_EQ(r.t.dialogs.shown().size(), 2u);
    EXPECT_EQ(r.t.dialogs.shown()[1].title, "Code Clear Unsuccessfull");
    EXPECT_GT(m.lstCodes.count(), 0);
    EXPECT_FALSE(r.app().RequestClearCodes);  // taken, and not raised again
    // The answer that comes late still wipes the codes.
    HandleDorvaneChunk(r.app(), "V486B1044");
    HandleDorvaneChunk(r.app(), "V");
    EXPECT_EQ(m.lstCodes.count(), 0);
    EXPECT_EQ(m.lblFFRPM.text(), "N/A");
}

// The enabled state of the main window's entries and buttons over a whole session of the
// program: at start, while connecting, connected, and after a disconnect.
TEST(MainScreenStates, FollowTheSessionFromStartToDisconnect) {
    struct Row {
        const char* control;     // an entry, or a toolbar button by its key
        std::array<bool, 4> on;  // start, connecting, connected, after
    };
    const Row rows[] = {
        {"mnuVehicleConnect", {1, 0, 0, 1}},
        {"Connect", {1, 0, 0, 1}},
        // Ending a session leaves the entry on; pressing it again only ends the
        // ended session once more.
        {"mnuVehicleDisconnect", {0, 1, 1, 1}},
        {"Disconnect", {0, 1, 1, 0}},
        {"mnuOptionSettings", {1, 0, 0, 1}},
        {"mnuFileOpen", {1, 0, 0, 1}},
        {"cmdRequestTC", {0, 0, 1, 0}},
        {"cmdClearCodes", {0, 0, 1, 0}},
        {"mnuVehicleInfo", {0, 0, 1, 0}},
        {"mnuAboutHardware", {0, 0, 1, 0}},
        {"Mode6", {0, 0, 1, 0}},
        {"mnuEditPidsOver", {1, 1, 1, 1}},
        {"mnuOptionData", {1, 1, 1, 1}},
        // The log controller comes with the session.
        {"mnuEditRecord", {0, 0, 1, 0}},
        {"Controller", {0, 0, 1, 0}},
        {"DTC", {1, 1, 1, 1}},
        // The data displays are in: their entries follow the session.
        {"Custom Display", {0, 0, 1, 0}},
        {"mnuViewCoolant", {0, 0, 1, 0}},
        {"mnuViewMPG", {0, 0, 1, 0}},
        {"mnuViewResetMPG", {0, 0, 1, 0}},
        {"mnuOptionList", {0, 0, 1, 0}},
        {"Mode5", {0, 0, 1, 0}},
        {"mnuViewScope", {1, 1, 1, 1}},
    };
    // The whole program on virtual time with the simulated converter on port 1.
    sim::SimSerialPortFactory ports;
    TestApp t(&ports);
    sim::SimVehicle vehicle = sim::SimVehicle::Default();
    sim::DorvaneConverter converter{vehicle};
    sim::SimWire wire{t.loop.scheduler(), converter};
    ports.plug(1, wire);
    std::filesystem::create_directories(t.dir.path() / "Log");
    t.settings.save(kAppName, kSection, "OBDIIHardware", kDorvane);
    t.settings.save(kAppName, kSection, "ConnectPort", "1");
    InstallApplication(*t);
    StartApplication(*t);
    t.loop.runFor(2000);  // past the splash screen
    FrmMain& m = t->frmMain();

    std::vector<Control*> controls;
    for (const Row& r : rows) {
        Control* c = m.findControl(r.control);
        controls.push_back(c ? c : m.buttonByKey(r.control));
        ASSERT_NE(controls.back(), nullptr) << r.control;
    }
    std::vector<std::array<bool, 4>> seen(controls.size());
    auto read = [&](int phase) {
        for (std::size_t i = 0; i < controls.size(); ++i)
            seen[i][phase] = controls[i]->enabled();
    };
    read(0);
    bool taken = false;
    Timer watch(t.loop.scheduler(), 5);
    watch.setHandler([&] {
        if (taken || !t->Connecting) return;
        taken = true;
        read(1);
    });
    watch.start();
    m.mnuVehicleConnect.click();  // returns once the connecting screen has gone
    watch.stop();
    EXPECT_TRUE(taken);
    ASSERT_TRUE(t->Connected);
    t.loop.runFor(1000);
    read(2);
    m.mnuVehicleDisconnect.click();
    read(3);
    for (std::size_t i = 0; i < controls.size(); ++i)
        EXPECT_EQ(seen[i], rows[i].on) << rows[i].control;
}

}  // namespace
}  // namespace ketrel::test
