#include "link/dorvane_link.h"

#include <algorithm>
#include <array>

#include "link/conn_log.h"
#include "link/dorvane_receive.h"
#include "link/frame_dispatch.h"
#include "link/port_number.h"
#include "link/request_walk.h"
#include "link/serial_timing.h"
#include "obd/bit_operations.h"
#include "platform/serial_port.h"
#include "state/app.h"

namespace ketrel {

const char kDorvaneRetryFrame[13] = {0x01, 0x06, 0x64, 0x10, char(0xF1), 0x22, 0x16,
                                     0x67, 0x00, 0x00, 0x00, 0x00,       0x00};

namespace {

// Poll position -> command; positions 2 and 28 send nothing.
constexpr std::array<const char*, 32> kPollTable{
    nullptr,  "010109", nullptr,  "010306", "010406", "010506", "010606", "010706",
    "010806", "010906", "010A06", "010B06", "010C07", "010D06", "010E06", "010F06",
    "011007", "011106", "011206", "011306", "011407", "011507", "011607", "011707",
    "011807", "011907", "011A07", "011B07", nullptr,  "011D06", "011E06", "011F07"};

// Freeze-frame sweep position -> command; 0 to 2 have no row; 17 is never reached.
constexpr std::array<const char*, 18> kFreezeTable{
    nullptr,  nullptr,  nullptr,  "020307", "020407", "020507", "020607", "020707", "020807",
    "020907", "020A07", "020B07", "020C08", "020D07", "020E07", "020F07", "021008", "021106"};

void send(App& app, SerialPort& port, const std::string& text) {
    port.output(text);
    LogLine(app, "SENDING:  " + text);
}

void linkUpAfterLists(App& app) {
    if (app.Mode1Supported[0x1C]) {
        app.RequestPid1C = true;
        LogLine(app, "REQUESTING MODE 01 PID 28");
    }
    LogLine(app, "REQUESTING FIRMWARE VERSION");
    app.RequestFirmware = true;
    app.frmConnecting().ConnectDone = true;
    if (app.hooks.LinkUp) app.hooks.LinkUp();
}

}  // namespace

std::string DorvanePollText(int position) {
    if (position < 0 || position >= int(kPollTable.size()) || !kPollTable[std::size_t(position)]) {
        return "";
    }
    return kPollTable[std::size_t(position)];
}

std::string DorvaneFreezeText(int position) {
    if (position < 0 || position >= int(kFreezeTable.size()) ||
        !kFreezeTable[std::size_t(position)]) {
        return "";
    }
    return kFreezeTable[std::size_t(position)];
}

void DORVANEOpenConnect(App& app) {
    FrmConnecting& c = app.frmConnecting();
    LogLine(app, "TYPE INTERFACE USED:  " + app.OBDIIHardware);
    app.PidDiscoveryDone = true;
    app.Mode1ListRead = false;
    app.Mode2ListRead = false;
    app.RequestPid1C = false;
    c.DORVANEConnectingTimeOut.setInterval(15000);
    LogLine(app, "TIMEOUT SET TO 15 SECONDS");
    if (app.SecondFrameConnect) app.SendFirstCommand = true;

    SerialPort& port = *c.ConnectingMscomm;
    if (port.portOpen()) port.setPortOpen(false);
    port.setCommPort(PortNumber(app.ConnectPort));
    LogLine(app, "SET PORT:  " + app.ConnectPort);
    port.setSettings("19200,n,8,1");
    LogLine(app, "SET BAUD RATE:  19200");
    if (!port.portOpen()) port.setPortOpen(true);
    LogLine(app, "OPEN PORT");
    c.txtConnectingInput.setText("");
    c.DORVANEConnectingTimeOut.start();
    LogLine(app, "TIMEOUT ENABLED");
    c.lblControlStatus[1].setText("Connecting With DORVANE...");
}

void DORVANEConnectingReceive(App& app) {
    FrmConnecting& c = app.frmConnecting();
    SerialPort& port = *c.ConnectingMscomm;
    if (port.commEvent() != kCommEventReceive) return;
    if (c.ConnectDone) {
        if (port.portOpen()) port.setPortOpen(false);
        return;
    }
    std::string in = port.input();
    LogLine(app, "RECEIVED EVENT ON");
    if (in.empty()) return;
    char first = in[0];
    if (first == 'S') {
        LogLine(app, "SYNC DETECTED");
        DORVANEConnectStep(app);
        return;
    }
    if (first == 'P' || first == 'I' || first == 'T') {
        LogLine(app, std::string(1, first) + " DETECTED");
        return;
    }
    if (first != 'V') {
        LogLine(app, "NO V DETECTED:  " + in);
        c.txtConnectingInput.setText(GatherDorvaneFrame(c.txtConnectingInput.text(), in));
        LogLine(app, "EXIT SUB");
        return;
    }
    FrmMain& m = app.frmMain();
    SetDorvaneFrame(app, c.txtConnectingInput.text());
    m.Text2.setText(m.Text2.text() + app.RawFrame);
    LogLine(app, "RECEIVED ALL DATA:  " + app.RawFrame);
    if (app.RxMode == "01" && app.RxPID == "00")
        m.lblECMAddress.setText(std::string(FrameSlice(app.RawFrame, 6)));
    LogLine(app, "LOOKUP DATA IN PROCESS:");
    DORVANERECEIVE(app);
    c.txtConnectingInput.setText(GatherDorvaneFrame("", in));
    LogLine(app, "V DETECTED");
    if (app.Mode1ListRead && app.Mode2ListRead) linkUpAfterLists(app);
}

void DORVANEConnectStep(App& app) {
    SerialPort& port = *app.frmConnecting().ConnectingMscomm;
    if (!port.portOpen()) return;
    if (app.SendFirstCommand) {
        app.SendFirstCommand = false;
        send(app, port, "800204");
        LogLine(app, "DELAY 150 mS");
        BusyWait(app.TimerObject(), 0.15);
        return;
    }
    if (app.SyncCount == 0 && !app.Mode1ListRead) send(app, port, "010009");
    if (app.SyncCount == 1 && !app.Mode2ListRead) send(app, port, "02000A");
    app.SyncCount++;
    if (app.SyncCount >= 2) app.SyncCount = 0;
}

void DORVANEConnectingTimeOutElapsed(App& app) {
    FrmConnecting& c = app.frmConnecting();
    app.RetryCount++;
    if (app.RetryCount >= 3) app.RetryCount = 0;
    app.frmMain().TimeOutConnect.stop();
    c.DORVANEConnectingTimeOut.stop();
    if (app.Mode1ListRead) {
        if (app.Mode1Supported[0x1C]) app.RequestPid1C = true;
        LogLine(app, "REQUESTING FIRMWARE VERSION");
        app.RequestFirmware = true;
        c.ConnectDone = true;
        if (app.hooks.LinkUp) app.hooks.LinkUp();
        return;
    }
    LogLine(app, "UNSUCCESSFUL CONNECTING");
    MsgAnswer answer = app.dialogs().show(NoCommunicationBox());
    if (answer != MsgAnswer::Retry) {
        if (app.hooks.CancelConnect) app.hooks.CancelConnect();
        return;
    }
    if (app.RetryCount == 1) {
        SerialPort& port = *c.ConnectingMscomm;
        LogLine(app, "RETRY COMMAND");
        LogLine(app, "SENDING:  01 64 10 F1 22 16 67 00 00 00 00 00");
        if (port.portOpen())
            port.output(std::string(kDorvaneRetryFrame, sizeof kDorvaneRetryFrame));
        LogLine(app, "SENDING:  F0646A");
        if (port.portOpen()) port.output("F0646A");
    }
    app.SendFirstCommand = true;
    c.unload();
    c.showModal();
}

void DORVANERequest(App& app) {
    FrmMain& m = app.frmMain();
    SerialPort& port = *m.MSComm;
    if (!port.portOpen() || !app.Connected) return;
    std::string text;
    bool oneShot = true;
    if (app.RequestClearCodes) {
        app.RequestClearCodes = false;
        text = "040004";
    } else if (app.RequestPid1C) {
        app.RequestPid1C = false;
        text = "011C06";
    } else if (app.RequestFirmware) {
        app.RequestFirmware = false;
        text = "900504";
    } else if (app.RequestFFData) {
        if (app.FFPidsKnown) {
            DORVANEFreezeStep(app);
            return;
        }
        text = "02000A";
    } else if (app.RequestFFCode) {
        app.RequestFFCode = false;
        app.FFCodeAnswered = false;
        text = "020208";
    } else if (app.RequestTroubleCodes) {
        app.RequestTroubleCodes = false;
        app.TroubleAnswered = false;
        text = "03000A";
    } else if (app.RequestPendingCodes) {
        app.RequestPendingCodes = false;
        app.PendingAnswered = false;
        text = "07000A";
    } else {
        oneShot = false;
    }
    if (!oneShot) {
        // The search pumps, so a nested sync or a flag set by the user can run meanwhile.
        // A search that outlives its session (the watchdog ended it meanwhile) gives up
        // rather than spin for ever.
        while (!app.PidWanted[std::size_t(app.PollPosition)]) {
            app.loop().pump();
            if (!app.Connected || !port.portOpen()) return;
            if (++app.PollPosition >= 32) app.PollPosition = 1;
        }
        while (!app.Mode1Supported[std::size_t(app.PollPosition)]) {
            app.loop().pump();
            if (!app.Connected || !port.portOpen()) return;
            if (++app.PollPosition >= 32) app.PollPosition = 1;
        }
        int pos = app.PollPosition;
        for (int item : IndicatorItems(pos))
            m.Image1[item].setPicture(kImgGreen);
        text = DorvanePollText(pos);
    }
    if (!text.empty()) {
        try {
            if (!port.portOpen()) return;
            port.output(text);
        } catch (const SerialError&) {
            return;  // a failed write ends the call in silence
        }
    }
    app.PollPosition++;
    app.loop().pump();
    if (app.PollPosition >= 32) app.PollPosition = 1;
}

void DORVANEFreezeStep(App& app) {
    SerialPort& port = *app.frmMain().MSComm;
    std::size_t pos = std::size_t(std::clamp(app.FFPosition, 0, 96));
    if (app.Mode2Supported[pos]) {
        std::string text = DorvaneFreezeText(app.FFPosition);
        if (!text.empty() && port.portOpen()) {
            try {
                port.output(text);
            } catch (const SerialError&) {
            }
        }
    }
    app.FFPosition++;
    app.loop().pump();
    if (app.FFPosition >= 17) {
        app.RequestFFData = false;
        app.FFPosition = 3;
    }
}

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
    CapLogData(app);
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
    DORVANERECEIVE(app);
    NoteReceivedFrame(app, app.RawFrame);
    if (app.hooks.FrameDecoded) app.hooks.FrameDecoded();
    m.txtInputDORVANE.setText(GatherDorvaneFrame("", chunk));
    m.panel(1).setText("CONNECTION STATUS:  CONNECTED");
}

void DorvaneScanReceive(App& app) {
    SerialPort& port = *app.frmMain().MSComm;
    if (port.commEvent() != kCommEventReceive) return;
    if (!app.Connected) {
        if (port.portOpen()) port.setPortOpen(false);
        return;
    }
    HandleDorvaneChunk(app, port.input());
}

void DorvaneConnectEnded(App& app) {
    SerialPort& port = *app.frmMain().MSComm;
    // Scanning starts here: the main port takes the number the user chose.
    if (app.Mode1ListRead && !port.portOpen()) {
        port.setCommPort(PortNumber(app.ConnectPort));
        port.setPortOpen(true);
    }
}

void InstallDorvane(App& app) {
    FrmConnecting& c = app.frmConnecting();
    c.DORVANEConnectingTimeOut.setHandler([&app] { DORVANEConnectingTimeOutElapsed(app); });
    c.ConnectingMscomm->setOnComm([&app] { DORVANEConnectingReceive(app); });
    app.frmMain().MSComm->setOnComm([&app] { DorvaneScanReceive(app); });
}

}  // namespace ketrel
