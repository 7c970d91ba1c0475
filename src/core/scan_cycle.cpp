#include "core/scan_cycle.h"

#include "core/session.h"
#include "link/dorvane_link.h"
#include "obd/monitor_status.h"
#include "obd/trouble_codes.h"
#include "state/app.h"

namespace ketrel {

namespace {

// Leaving or entering a tab other than the codes tab wipes the code data.
void tabChanged(App& app) {
    FrmMain& m = app.frmMain();
    if (m.SSTab1.tab() == 2 || app.PlayFormOpen) return;
    m.lstCodes.clear();
    m.lstFreezeCodes.clear();
    m.lstPendingCodes.clear();
    m.gridPending.clear();
    m.gridTroubleCode.clear();
    m.mnuFilePrintFF.setEnabled(false);
    m.cmdPrintFFData.setEnabled(false);
    ClearFreezeData(app);
    FormatCodeGrids(app);
}

void clearCodeTimerElapsed(App& app) {
    app.frmMain().ClearCodeTimer.stop();
    app.dialogs().show(MessageBox{"Code Clear Unsuccessfull", "No Response Please Try Again.",
                                  MsgButtons::Ok, MsgIcon::Exclamation, false});
}

}  // namespace

void WatchdogElapsed(App& app) {
    app.frmMain().TimeOutConnect.stop();
    if (!app.Connected) return;
    app.TimeOutCount = app.TimeOutCount >= 4 ? 1 : app.TimeOutCount + 1;
    EndSession(app);
    std::string text =
        "Unable To Establish Communication.  Please Check Your Connection Then Retry Again.";
    if (app.OBDIIHardware == kBr3 && app.TimeOutCount == 2) {
        text =
            "Unable To Establish Communication. You May Want To Adjust Your BR3 Delay To "
            "Recommended Specs If You Are Experiencing Disconnection.";
    }
    app.dialogs().show(
        MessageBox{"Communication Not Found", text, MsgButtons::Ok, MsgIcon::Exclamation, false});
}

void ClearCodesCommand(App& app) {
    if (app.Recording) app.hideScreen("frmRecorder");
    MsgAnswer a =
        app.dialogs().show(MessageBox{"Confirmation", "Are You Sure You Want To Clear Code?",
                                      MsgButtons::YesNo, MsgIcon::Question, false});
    if (a != MsgAnswer::Yes) {
        app.RequestClearCodes = false;
        return;
    }
    app.frmAlertMIL().unload();
    app.RequestClearCodes = true;
    app.frmMain().ClearCodeTimer.start();
}

void InstallScanCycle(App& app) {
    FrmMain& m = app.frmMain();
    m.TimeOutConnect.setHandler([&app] { WatchdogElapsed(app); });
    m.ClearCodeTimer.setHandler([&app] { clearCodeTimerElapsed(app); });
    m.RequestTimer.setHandler([&app] { RequestTimerElapsed(app); });
    m.SSTab1.onClick = [&app](int) { tabChanged(app); };

    m.cmdClearCodes.onClick = [&app] { ClearCodesCommand(app); };
    m.mnuVehicleClear.onClick = [&app] { ClearCodesCommand(app); };
    m.cmdRequestFF.onClick = [&app] { app.RequestFFCode = true; };
    m.mnuVehicleRequestFF.onClick = [&app] { app.RequestFFCode = true; };
    m.cmdRequestTC.onClick = [&app] { app.RequestTroubleCodes = true; };
    m.mnuVehicleRequestTC.onClick = [&app] { app.RequestTroubleCodes = true; };
    m.cmdRequestPending.onClick = [&app] { app.RequestPendingCodes = true; };
    m.mnuVehicleRequestPending.onClick = [&app] { app.RequestPendingCodes = true; };
    m.cmdRequestInfo.onClick = [&app] { app.RequestInfo = true; };
    m.mnuVehicleInfo.onClick = [&app] { app.RequestInfo = true; };
}

}  // namespace ketrel
