#include <gtest/gtest.h>

#include "core/scan_cycle.h"
#include "flow/dorvane_rig.h"
#include "link/dorvane_link.h"
#include "sim/sim_vehicle.h"

namespace ketrel::test {
namespace {

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
    EXPECT_NE(m.lblFFRPM.text(), "");
    EXPECT_NE(m.lblFFRPM.text(), "N/A");
    EXPECT_FALSE(r.app().RequestFFData);
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
    for (const std::string& c : r.commands())
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
    r.converter.garbleNextAnswers(1);
    r.t.dialogs.answerNext(MsgAnswer::Yes);
    m.cmdClearCodes.click();
    r.run(2500);
    ASSERT_EQ(r.t.dialogs.shown().size(), 2u);
    EXPECT_EQ(r.t.dialogs.shown()[1].title, "Code Clear Unsuccessfull");
    EXPECT_EQ(r.t.dialogs.shown()[1].text, "No Response Please Try Again.");
    EXPECT_GT(m.lstCodes.count(), 0);
    EXPECT_FALSE(r.app().RequestClearCodes);  // taken, and not raised again
    // The answer that comes late still wipes the codes.
    HandleDorvaneChunk(r.app(), "V486B1044");
    HandleDorvaneChunk(r.app(), "V");
    EXPECT_EQ(m.lstCodes.count(), 0);
    EXPECT_EQ(m.lblFFRPM.text(), "N/A");
}

TEST(DorvaneCodes, ATabChangeAwayFromTheCodesTabWipesTheCodeData) {
    CodesRig r;
    FrmMain& m = r.m();
    m.SSTab1.setTab(2);
    m.mnuVehicleRequestTC.click();
    r.run(1500);
    ASSERT_GT(m.lstCodes.count(), 0);
    m.SSTab1.setTab(3);
    EXPECT_EQ(m.lstCodes.count(), 0);
    EXPECT_EQ(m.gridTroubleCode.text(2, 1), "");
    EXPECT_EQ(m.gridTroubleCode.text(0, 3), "DESCRIPTION");
    EXPECT_FALSE(m.cmdPrintFFData.enabled());
    // While a log plays the tab change leaves them.
    m.SSTab1.setTab(2);
    m.mnuVehicleRequestTC.click();
    r.run(1500);
    r.app().PlayFormOpen = true;
    m.SSTab1.setTab(0);
    EXPECT_GT(m.lstCodes.count(), 0);
}

}  // namespace
}  // namespace ketrel::test
