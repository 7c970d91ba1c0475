#include "core/session.h"

#include <gtest/gtest.h>

#include "core_fixture.h"

namespace ketrel {
namespace {

// The end of a session takes down the screens that live on it and wipes the codes and values
// it showed; the main screen stays, ready for the next connect.
TEST(EndSession, TakesTheSessionsScreensDownAndWipesWhatItShowed) {
    test::StartedApp t;
    t.start();
    FrmMain& m = t->frmMain();
    t->Connected = true;
    const char* screens[] = {"frmAlertMIL", "frmRealDisplay", "frmScope", "frmTroubleCode"};
    for (const char* name : screens)
        t->screenByName(name)->load();
    m.gridTroubleCode.setText(2, 1, "P0171");
    m.gridPending.setText(1, 1, "P0300");
    m.lblRPM.setText("760");
    EndSession(*t);
    EXPECT_FALSE(t->Connected);
    for (const char* name : screens)
        EXPECT_FALSE(t->screenByName(name)->loaded()) << name;
    EXPECT_EQ(m.gridTroubleCode.text(2, 1) + m.gridPending.text(1, 1), "");
    EXPECT_EQ(m.gridTroubleCode.text(0, 1), "DTC");
    EXPECT_EQ(m.lblRPM.text(), "N/A");
    EXPECT_TRUE(m.loaded());
    EXPECT_TRUE(m.mnuVehicleConnect.enabled());
}

}  // namespace
}  // namespace ketrel
