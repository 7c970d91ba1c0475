#include "core/scan_cycle.h"

#include "core/session.h"
#include "link/dorvane_link.h"
#include "link/dorvane_receive.h"
#include "obd/monitor_status.h"
#include "obd/trouble_codes.h"
#include "state/app.h"

namespace ketrel {

namespace {

constexpr int kLogDataCap = 701;
constexpr int kRecordListCap = 200;

void recordFrame(App& app, const std::string& frame) {
    FrmMain& m = app.frmMain();
    if (m.lstRecordData.count() >= kRecordListCap) {
        m.lstRecordData.clear();
        app.RecordIndex = 0;
    }
    m.lstRecordData.addItem(frame);
    if (app.hooks.RecordFrame && app.RecordIndex < m.lstRecordData.count()) {
        app.hooks.RecordFrame(m.lstRecordData.item(app.RecordIndex));
    }
    app.RecordIndex++;
    app.RecordCount++;
}

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

void HandleDorvaneChunk(App& app, const std::string& chunk) {
    FrmMain& m = app.frmMain();
    if (!chunk.empty() && chunk[0] == 'S') {
        DORVANERequest(app);
        return;
    }
    if (chunk.empty() || chunk[0] == 'P') {
        m.panel(1).setText("CONNECTION STATUS:  RECONNECTING...");
        if (!m.TimeOutConnect.enabled()) m.TimeOutConnect.start();
        return;
    }
    if (m.LogData.count() >= kLogDataCap) {
        m.LogData.clear();
        m.Text2.setText("");
    }
    char first = chunk[0];
    if (first == 'F' || first == 'I' || first == 'T') return;
    if (first == 'V' && chunk.size() >= 3 && chunk[2] == '.') {
        app.ConverterVersion = chunk.substr(1, 4);
    }
    if (first != 'V') {
        m.txtInputDORVANE.setText(GatherDorvaneFrame(m.txtInputDORVANE.text(), chunk));
        return;
    }
    SetDorvaneFrame(app, m.txtInputDORVANE.text());
    m.LogData.addItem(app.RawFrame);
    DORVANERECEIVE(app);
    if (app.Recording) recordFrame(app, app.RawFrame);
    if (app.hooks.FrameDecoded) app.hooks.FrameDecoded();
    m.txtInputDORVANE.setText(GatherDorvaneFrame("", chunk));
    m.panel(1).setText("CONNECTION STATUS:  CONNECTED");
}

void MainPortReceive(App& app) {
    SerialPort& port = *app.frmMain().MSComm;
    if (port.commEvent() != kCommEventReceive) return;
    if (!app.Connected) {
        if (port.portOpen()) port.setPortOpen(false);
        return;
    }
    HandleDorvaneChunk(app, port.input());
}

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
    m.MSComm->setOnComm([&app] { MainPortReceive(app); });
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
