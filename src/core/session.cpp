#include "core/session.h"

#include <exception>
#include <string>

#include "core/scan_cycle.h"
#include "platform/text_convert.h"
#include "link/conn_log.h"
#include "link/converters.h"
#include "obd/monitor_status.h"
#include "obd/trouble_codes.h"
#include "obd/unit_captions.h"
#include "platform/serial_port.h"
#include "state/app.h"

namespace ketrel {

namespace {

const char* const kMainTitle = "Ketrel (OBD II Generic) Version 0.77 - ";

void setPanel(App& app, int number, const std::string& text) {
    app.frmMain().panel(number).setText(UpperCase(text));
}

void closeIfOpen(SerialPort& port) {
    if (port.portOpen()) port.setPortOpen(false);
}

// The code fields wiped at connect and at the end of a session.
void wipeCodeDisplay(App& app) {
    FrmMain& m = app.frmMain();
    m.gridPending.clear();
    m.gridTroubleCode.clear();
    FormatCodeGrids(app);
}

void blink(App& app) {
    FrmConnecting& c = app.frmConnecting();
    bool phase = c.Image1[0].visible();
    c.Image1[0].setVisible(!phase);
    c.Image1[3].setVisible(!phase);
    c.Image1[1].setVisible(phase);
    c.Image1[2].setVisible(phase);
}

// The start-of-connect state: flags, status, buttons and menus, and a new header block in the
// connecting log.
void beginConnect(App& app) {
    FrmConnecting& c = app.frmConnecting();
    FrmMain& m = app.frmMain();
    if (app.DetectPanelEnabled) c.txtConnectingInput.setVisible(true);
    app.ProtocolCode.clear();
    app.Connecting = true;
    app.ConnectCancelled = false;
    app.Mode2ListMissing = false;
    c.ConnectDone = false;
    app.ConnectSeconds = 0;
    if (app.TimeOut == 0) app.TimeOut = 10000;
    setPanel(app, 1, "CONNECTION STATUS:  CONNECTING...");
    c.Timer1.start();
    m.TimeOutConnect.stop();
    m.button(3).setEnabled(true);
    m.button(2).setEnabled(false);
    m.mnuVehicleConnect.setEnabled(false);
    m.mnuVehicleDisconnect.setEnabled(true);
    m.mnuFileOpen.setEnabled(false);
    m.mnuOptionSettings.setEnabled(false);
    ConnectLogBegin(app);
}

// The StartTimer of frmConnecting: the start-of-connect state, then the device's branch, again
// from the start for as long as the device's connect asks for a retry.
void startConnect(App& app) {
    FrmConnecting& c = app.frmConnecting();
    try {
        c.StartTimer.stop();
        const ConverterDriver* driver = FindConverter(app.OBDIIHardware);
        for (;;) {
            beginConnect(app);
            if (!driver || !driver->connect) {
                app.dialogs().show(MessageBox{
                    "Configuration Error",
                    "The " + app.OBDIIHardware + " is not available in this version of Ketrel.",
                    MsgButtons::Ok, MsgIcon::Stop, false});
                c.unload();
                EndSession(app);
                return;
            }
            if (driver->connect(app) != ConnectOutcome::Retry) return;
        }
    } catch (const SerialError& e) {
        if (e.code() == kErrInvalidPort) {
            app.dialogs().show(MessageBox{"Error",
                                          "Please Recheck Your Settings Or Run Auto Detect.",
                                          MsgButtons::Ok, MsgIcon::Stop, false});
            c.unload();
        } else if (e.code() == kErrPortOpen) {
            app.dialogs().show(MessageBox{
                "Error",
                std::string(e.what()) + " or Check To See If Other Application Is Using The Port",
                MsgButtons::Ok, MsgIcon::Exclamation, false});
            c.unload();
        }
        EndSession(app);
    } catch (const std::exception&) {
        EndSession(app);
    }
}

void connectingUnloaded(App& app) {
    FrmConnecting& c = app.frmConnecting();
    FrmMain& m = app.frmMain();
    c.ConnectStopped = true;
    c.Timer1.stop();
    c.ConnectTimeOut.stop();
    c.DORVANEConnectingTimeOut.stop();
    try {
        if (app.ConnectCancelled) {
            closeIfOpen(*c.ConnectingMscomm);
            closeIfOpen(*c.BR3Connecting);
            m.button(3).setEnabled(false);
            m.button(2).setEnabled(true);
            m.mnuVehicleConnect.setEnabled(true);
            m.mnuFileOpen.setEnabled(true);
            m.mnuOptionSettings.setEnabled(true);
            m.mnuVehicleDisconnect.setEnabled(false);
            m.button(5).setEnabled(false);
            m.button(12).setEnabled(false);
            m.mnuOptionList.setEnabled(false);
            m.mnuEditRecord.setEnabled(false);
            m.cmdClearCodes.setEnabled(false);
            EndSession(app);
        } else if (const ConverterDriver* driver = FindConverter(app.OBDIIHardware);
                   driver && driver->connectEnded) {
            driver->connectEnded(app);
        }
    } catch (const std::exception& e) {
        app.dialogs().message(e.what());
    }
    ConnectLogEnd(app);
}

}  // namespace

void ClearVehicleInformation(App& app) {
    FrmMain& m = app.frmMain();
    const std::string vin = m.txtVin.text();
    if (vin == "VIEWTRACE") m.Command1.setVisible(true);
    if (vin == "VIEWPIDLIST") app.Mode6ListVisible = true;
    if (vin == "VIEWPROBES") app.DetectPanelEnabled = true;
    m.setCaption(kMainTitle);
    m.cmbYear.setText("-SELECT-");
    m.cmbMake.clear();
    m.cmbModel.clear();
    m.cmbAC.setText("-SELECT-");
    m.txtVin.setText("");
    m.txtPlate.setText("");
    m.txtMileage.setText("");
    m.cmbEngine.clear();
    m.cmbTransmission.setText("-SELECT-");
    m.cmbEngine.setText("-SELECT-");
}

void ConnectSession(App& app) {
    FrmMain& m = app.frmMain();
    try {
        app.ConnectCount = app.ConnectCount >= 1000 ? 1 : app.ConnectCount + 1;
        app.unloadScreens({"frmRecorder", "frmSettings"});
        ClearDisplay(app);
        wipeCodeDisplay(app);  // the grids emptied and formatted
        m.lstCodes.clear();
        m.lstFreezeCodes.clear();
        m.lstPendingCodes.clear();
        SetMainUnitCaptions(app);
        if (!app.SaveInfo) ClearVehicleInformation(app);
        app.ConnectPort = app.GetSetting("ConnectPort");
        app.OBDIIHardware = app.GetSetting("OBDIIHardware");
        if (app.OBDIIHardware.empty()) {
            app.dialogs().show(MessageBox{"Hardware Not Found",
                                          "OBD II Hardware Has Not Been Detected or Configured.  "
                                          "Please Recheck Your Settings.",
                                          MsgButtons::Ok, MsgIcon::Stop, false});
            app.frmSettings().SSTab1.setTab(1);
            app.frmSettings().show();
            return;
        }
        if (app.ConnectPort.empty()) {
            app.dialogs().show(
                MessageBox{"Configuration Needed",
                           "Comm Port has not been configured.  Recheck your settings!",
                           MsgButtons::Ok, MsgIcon::Stop, false});
            return;
        }
        m.mnuVehicleConnect.setEnabled(false);
        m.button(2).setEnabled(false);
        m.mnuFileOpen.setEnabled(false);
        m.mnuVehicleDisconnect.setEnabled(true);
        m.button(3).setEnabled(true);
        app.Connected = true;
        if (FindConverter(app.OBDIIHardware)) {
            app.frmConnecting().showModal();
        } else {
            EndSession(app);
            app.dialogs().show(MessageBox{"Configuration Error",
                                          "Please Recheck Your Settings Or Run Auto Detect.",
                                          MsgButtons::Ok, MsgIcon::Stop, false});
        }
    } catch (const std::exception& e) {
        EndSession(app);
        app.dialogs().show(MessageBox{"Unable To Continue",
                                      std::string("There was an error\nDescription: ") + e.what(),
                                      MsgButtons::Ok, MsgIcon::Stop, false});
    }
}

void CancelConnect(App& app) {
    FrmConnecting& c = app.frmConnecting();
    app.ConnectCancelled = true;
    LogLine(app, "USER CANCELED");
    app.Connecting = false;
    closeIfOpen(*c.ConnectingMscomm);
    c.ConnectDone = true;
    c.ConnectTimeOut.stop();
    EndSession(app);
    c.BR3Unload.start();
}

void LinkUp(App& app) {
    FrmMain& m = app.frmMain();
    FrmConnecting& c = app.frmConnecting();
    m.TimeOutConnect.start();
    closeIfOpen(*c.ConnectingMscomm);
    closeIfOpen(*c.BR3Connecting);
    c.ConnectTimeOut.stop();
    m.cmdClearCodes.setEnabled(true);
    m.button(5).setEnabled(true);
    m.button(12).setEnabled(true);
    m.mnuOptionList.setEnabled(true);
    m.mnuEditRecord.setEnabled(true);
    setPanel(app, 1, "CONNECTION STATUS:  CONNECTED");
    m.panel(2).setPicture(kImgConnected);
    setPanel(app, 3, "COM PORT:  " + app.ConnectPort);
    c.Timer2.start();
    for (Control* ctl : std::initializer_list<Control*>{
             &m.mnuViewMode6, &m.mnuViewMode5, &m.button(14), &m.button(15), &m.cmdRequestFF,
             &m.cmdRequestPending, &m.cmdRequestTC, &m.mnuVehicleRequestFF,
             &m.mnuVehicleRequestPending, &m.mnuVehicleRequestTC, &m.mnuVehicleClear,
             &m.mnuVehicleInfo, &m.cmdRequestInfo}) {
        ctl->setEnabled(true);
    }
    app.Connecting = false;
    m.mnuAboutHardware.setEnabled(true);
    if (app.OBDIIHardware == kBr3) {
        m.mnuViewMode6.setEnabled(true);
        m.mnuViewMode5.setEnabled(true);
    }
    const ConverterDriver* driver = FindConverter(app.OBDIIHardware);
    setPanel(app, 9, "BAUD: " + std::to_string(driver ? driver->baud : 19200));
}

void EndSession(App& app) {
    FrmMain& m = app.frmMain();
    app.Connected = false;
    for (SerialPort* port : {m.MSComm.get(), m.BR3MSComm.get(), m.KeshMSComm.get()}) {
        try {
            closeIfOpen(*port);
        } catch (const std::exception&) {
        }
    }
    m.panel(9).setText("");
    setPanel(app, 1, "CONNECTION STATUS:  DISCONNECTED");
    m.panel(2).setPicture(kImgNotConnected);
    setPanel(app, 3, "COM PORT:  N/A");
    m.mnuViewMode6.setEnabled(false);
    m.mnuViewMode5.setEnabled(false);
    m.button(3).setEnabled(false);
    m.button(2).setEnabled(true);
    m.mnuVehicleConnect.setEnabled(true);
    m.mnuFileOpen.setEnabled(true);
    m.mnuOptionSettings.setEnabled(true);
    for (Control* ctl : std::initializer_list<Control*>{
             &m.button(5), &m.button(12), &m.mnuOptionList, &m.mnuEditRecord, &m.cmdClearCodes,
             &m.mnuFilePrintFF, &m.cmdPrintFFData, &m.button(14), &m.button(15)}) {
        ctl->setEnabled(false);
    }
    m.imgMIL.setPicture(kImgNotConnected);
    for (int pid = 0; pid <= 79; ++pid) {
        app.Mode1Supported[std::size_t(pid)] = false;
        app.Mode2Supported[std::size_t(pid)] = false;
        app.PidWanted[std::size_t(pid)] = false;
        if (pid <= kLastIndicator) m.Image1[pid].setPicture(kImgRed);
    }
    for (Control* ctl : std::initializer_list<Control*>{
             &m.mnuViewCoolant,      &m.mnuViewFuelPressure, &m.mnuViewMAP,
             &m.mnuViewRPM,          &m.mnuViewSpeed,        &m.mnuViewIntakeAir,
             &m.mnuViewMAF,          &m.mnuViewTPS,          &m.mnuViewO2B1S1,
             &m.mnuViewO2B1S2,       &m.mnuViewO2B1S3,       &m.mnuViewO2B1S4,
             &m.mnuViewO2B2S1,       &m.mnuViewO2B2S2,       &m.mnuViewO2B2S3,
             &m.mnuViewO2B2S4,       &m.mnuViewMode6,        &m.mnuViewMode5,
             &m.cmdRequestFF,        &m.cmdRequestPending,   &m.cmdRequestTC,
             &m.mnuViewMPG,          &m.mnuVehicleRequestFF, &m.mnuVehicleRequestPending,
             &m.mnuVehicleRequestTC, &m.mnuVehicleClear,     &m.mnuVehicleInfo,
             &m.cmdRequestInfo,      &m.mnuAboutHardware,    &m.mnuViewResetMPG}) {
        ctl->setEnabled(false);
    }
    m.RequestTimer.stop();
    app.AppClosing = false;
    app.CustomListActive = false;
    app.ExtendedPIDCount = 0;
    app.FFPidsKnown = false;
    m.TimeOutConnect.stop();
    m.BR3Delay.stop();
    if (app.Recording) app.hideScreen("frmRecorder");
    if (app.SaveNameOpen) app.RecordUnsaved = false;
    app.unloadScreens({"frmRealDisplay", "frmCustomData", "frmRecorder", "frmAlertMIL", "frmTerms",
                       "frmTroubleCode", "frmGuage", "frmMultGuage", "frmAbout", "frmAboutHardware",
                       "frmScope", "frmMPG"});
    wipeCodeDisplay(app);
    ClearDisplay(app);
    m.activate();
}

void InstallSession(App& app) {
    FrmMain& m = app.frmMain();
    FrmConnecting& c = app.frmConnecting();
    app.hooks.LinkUp = [&app] { LinkUp(app); };
    app.hooks.EndSession = [&app] { EndSession(app); };
    app.hooks.CancelConnect = [&app] { CancelConnect(app); };

    c.onLoad = [&app] {
        app.PidDiscoveryDone = false;
        app.Mode1ListRead = false;
        app.Mode2ListRead = false;
        app.RequestPid1C = false;
        app.frmConnecting().StartTimer.start();
    };
    c.onUnload = [&app] { connectingUnloaded(app); };
    c.StartTimer.setHandler([&app] { startConnect(app); });
    c.Timer1.setHandler([&app] { blink(app); });
    c.Timer2.setHandler([&c] {
        c.Timer2.stop();
        c.unload();
    });
    c.BR3Unload.setHandler([&c] {
        c.BR3Unload.stop();
        c.unload();
    });
    c.ConnectTimeOut.setHandler([&app] { app.ConnectSeconds++; });
    c.cmdConnectingCancel.onClick = [&app] { CancelConnect(app); };
    // Closing the window during a connect is the same as pressing Cancel.
    c.onUserClose = [&app] {
        if (!app.ConnectCancelled) CancelConnect(app);
    };

    m.mnuVehicleConnect.onClick = [&app] { ConnectSession(app); };
    m.mnuVehicleDisconnect.onClick = [&app] { EndSession(app); };
    m.tbConnect.onClick = [&app] { ConnectSession(app); };
    m.tbDisconnect.onClick = [&app] {
        EndSession(app);
        app.Connected = false;
    };
    m.cmdClearVehicle.onClick = [&app] { ClearVehicleInformation(app); };
    m.mnuVehicleClearInfo.onClick = [&app] { ClearVehicleInformation(app); };
    InstallScanCycle(app);
    InstallConverters(app);
}

}  // namespace ketrel
