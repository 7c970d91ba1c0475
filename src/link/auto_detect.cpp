#include "link/auto_detect.h"

#include <exception>
#include <string>

#include "link/serial_timing.h"
#include "platform/dialogs.h"
#include "screens/frm_auto_detect.h"
#include "state/app.h"

namespace ketrel {

namespace {

const char* const kWaitText = "Please Wait Detection In Progress...";
const char* const kLastPort = "4";
const char* const kFirmwareCommand = "900504";

// The support line under the text of the "too many attempts" message.
const char* const kSupportLine = "Ketrel Support Desk: support@ketrel.example";

FrmAutoDetect& screenOf(App& app) {
    return *AutoDetectScreen(app);
}

void closeIfOpen(SerialPort& port) {
    try {
        if (port.portOpen()) port.setPortOpen(false);
    } catch (const std::exception&) {
    }
}

// Opens a probe port on `number`; a port that can't be opened is passed over in silence and
// the sweep's timers run out on it.
void openQuietly(SerialPort& port, int number) {
    try {
        if (port.portOpen()) port.setPortOpen(false);
        port.setCommPort(number);
        port.setPortOpen(true);
    } catch (const std::exception&) {
    }
}

void sendQuietly(SerialPort& port, const std::string& bytes) {
    try {
        if (port.portOpen()) port.output(bytes);
    } catch (const std::exception&) {
    }
}

int portNumberOf(const std::string& connectPort) {
    try {
        return std::stoi(connectPort);
    } catch (const std::exception&) {
        return 0;
    }
}

// The menus and the toolbar of the main window are held off while the screen is up.
void setMainControls(App& app, bool on) {
    FrmMain& m = app.frmMain();
    m.Toolbar1.setEnabled(on);
    for (MenuItem* menu : {&m.mnuFile, &m.mnuEdit, &m.mnuOption, &m.mnuHelp, &m.mnuView})
        menu->setEnabled(on);
}

void blink(FrmAutoDetect& d) {
    d.Image1.setPicture(d.Image1.picture() == kImgDetectOn ? kImgDetectOff : kImgDetectOn);
}

// What both finds share: the sweep stops, the converter is named and saved, Connect shows.
void converterFound(App& app, const char* hardware) {
    FrmAutoDetect& d = screenOf(app);
    d.DetectRunning = false;
    d.TimeOut.stop();
    app.OBDIIHardware = hardware;
    d.Label1[0].setText(std::string(hardware) + " FOUND");
    d.txtBuffer.setText("");
    d.Timer1.stop();
    d.cmdConnectAD.setVisible(true);
    app.SaveSetting("ConnectPort", app.ConnectPort);
    app.SaveSetting("OBDIIHardware", app.OBDIIHardware);
}

void retrySweep(App& app) {
    FrmAutoDetect& d = screenOf(app);
    closeIfOpen(*d.BR3AutoDetect);
    d.txtBuffer.setText("");
    app.ConnectPort = "1";
    d.MSComm2->setRThreshold(1);
    openQuietly(*d.MSComm2, 1);
    d.DetectAttempts++;
    d.DetectRunning = true;
    d.TimeOut.start();
    d.Label1[0].setText("Reinitializing Please Wait...");
    BlockingSleep(app.loop(), 5000);
    if (d.DetectRunning) DORVANEDetection(app);
}

// The end of a sweep that found nothing: Retry starts again from port 1, Cancel closes.
void detectionFailed(App& app) {
    FrmAutoDetect& d = screenOf(app);
    closeIfOpen(*d.BR3AutoDetect);
    d.TimeOut.stop();
    app.DetectTicks = 0;
    d.Label1[0].setText("Detection Failed");
    MessageBox box;
    box.buttons = MsgButtons::RetryCancel;
    if (d.DetectAttempts >= 3) {
        box.title = "Too Many Unsuccessful Attempts!";
        box.icon = MsgIcon::Exclamation;
        box.text = std::string(
                       "If Hardware Device Is Plugged In To Your Computer, OBD II PCM "
                       "Connecter, And You Are Unable To Detect The Device, Then Please "
                       "Report This Problem To Ketrel By Emailing Us.\n") +
                   kSupportLine;
    } else {
        box.title = "No Communication Or Interface Device Found";
        box.icon = MsgIcon::Stop;
        box.text =
            "Unable To Establish Communication, Check The Following Below.\n\n"
            "* Make Sure Hardware Is Connected To Serial Port\n"
            "* Make Sure OBD II Connector Is Connected To Vehicle\n"
            "* Tampered/Incorrect Settings\n"
            "* Changed/Incorrect Hardware Device\n"
            "* Make Sure Ignition Key Is On";
    }
    if (app.dialogs().show(box) == MsgAnswer::Retry) {
        retrySweep(app);
        return;
    }
    d.DetectRunning = false;
    d.unload();
}

void loadScreen(App& app) {
    FrmAutoDetect& d = screenOf(app);
    d.DetectRunning = true;
    d.Timer1.start();
    app.DetectTicks = 0;
    setMainControls(app, false);
}

// Activation starts the sweep, with no converter chosen until one is found.
void activateScreen(App& app) {
    FrmAutoDetect& d = screenOf(app);
    app.OBDIIHardware.clear();
    app.ConnectPort.clear();
    app.SaveSetting("ConnectPort", app.ConnectPort);
    app.SaveSetting("OBDIIHardware", app.OBDIIHardware);
    if (app.DetectPanelEnabled) d.txtBuffer.setVisible(true);
    closeIfOpen(*d.MSComm2);
    app.ConnectPort = "1";
    d.ProgrammerStatus.setText("1.1");
    openQuietly(*d.MSComm2, 1);
    app.DetectTicks = 0;
    d.TimeOut.start();
    DORVANEDetection(app);
}

// Closing while a sweep runs asks first; the time-out count rests while the question shows.
void queryUnload(App& app, bool& cancel) {
    FrmAutoDetect& d = screenOf(app);
    if (!d.DetectRunning) return;
    d.TimeOut.stop();
    MsgAnswer answer =
        app.dialogs().message("Are You Sure You Want To Abort Detection?",
                              "Detection Still In Progress!", MsgIcon::Question, MsgButtons::YesNo);
    if (answer != MsgAnswer::Yes) {
        cancel = true;
        d.TimeOut.start();
    }
}

void unloadScreen(App& app) {
    FrmAutoDetect& d = screenOf(app);
    d.DetectRunning = false;
    d.Timer1.stop();
    d.TimeOut.stop();
    closeIfOpen(*d.MSComm2);
    // An unloaded screen's ports are closed, as a fresh screen's would be; the count-byte
    // probe may be open between two of its reads.
    closeIfOpen(*d.BR3AutoDetect);
    setMainControls(app, true);
}

void connectClicked(App& app) {
    FrmAutoDetect& d = screenOf(app);
    if (!d.unload()) return;
    if (app.hooks.Connect) app.hooks.Connect();
}

}  // namespace

FrmAutoDetect* AutoDetectScreen(App& app) {
    return dynamic_cast<FrmAutoDetect*>(app.screenByName("frmAutoDetect"));
}

void DORVANEDetection(App& app) {
    FrmAutoDetect& d = screenOf(app);
    const int generation = ++d.sweepGeneration;
    SerialPort& port = *d.MSComm2;
    while (true) {
        sendQuietly(port, kFirmwareCommand);
        d.ProgrammerStatus.setText("1." + app.ConnectPort);
        d.Label1[0].setText(kWaitText);
        PumpedWait(app.loop(), [&] {
            return !d.DetectRunning || d.sweepGeneration != generation || app.DetectTicks == 2 ||
                   app.DetectTicks > 3;
        });
        // A find or an abort ended the sweep, or a sync started it afresh and that newer
        // sweep has carried on from here.
        if (!d.DetectRunning || d.sweepGeneration != generation) return;
        if (app.DetectTicks > 3 || app.ConnectPort == kLastPort) break;
        closeIfOpen(port);
        app.ConnectPort = std::to_string(portNumberOf(app.ConnectPort) + 1);
        d.ProgrammerStatus.setText("1." + app.ConnectPort);
        d.txtBuffer.setText("");
        openQuietly(port, portNumberOf(app.ConnectPort));
        app.DetectTicks = 0;
    }
    closeIfOpen(port);
    app.ConnectPort = "0";
    BR3Detection(app);
}

void BR3Detection(App& app) {
    FrmAutoDetect& d = screenOf(app);
    SerialPort& port = *d.BR3AutoDetect;
    port.setRThreshold(0);
    d.Label1[0].setText(kWaitText);
    if (app.ConnectPort == kLastPort) {
        detectionFailed(app);
        return;
    }
    closeIfOpen(port);
    app.ConnectPort = std::to_string(portNumberOf(app.ConnectPort) + 1);
    d.ProgrammerStatus.setText("2." + app.ConnectPort);
    openQuietly(port, portNumberOf(app.ConnectPort));
    BlockingSleep(app.loop(), 100);
    app.FrameOut = std::string(1, '\x20');
    for (int i = 0; i < 4; ++i) {
        if (i > 0) BlockingSleep(app.loop(), 20);
        sendQuietly(port, app.FrameOut);
    }
    d.DetectBR3Delay.start();
}

void AutoDetectReceive(App& app) {
    FrmAutoDetect& d = screenOf(app);
    SerialPort& port = *d.MSComm2;
    try {
        if (port.commEvent() != kCommEventReceive || !d.DetectRunning) return;
        std::string chunk = port.input();
        if (chunk.empty()) return;
        switch (chunk[0]) {
            case 'S':
                DORVANEDetection(app);
                return;
            case 'P':
            case 'I':
            case 'T':
                return;
            default:
                break;
        }
        d.txtBuffer.setText(d.txtBuffer.text() + chunk);
        const std::string& buffer = d.txtBuffer.text();
        if (buffer.size() < 4 || buffer[0] != 'V') return;
        app.DetectTicks = 0;
        closeIfOpen(port);
        converterFound(app, kDorvane);
    } catch (const std::exception&) {
    }
}

void DetectBR3DelayElapsed(App& app) {
    FrmAutoDetect& d = screenOf(app);
    SerialPort& port = *d.BR3AutoDetect;
    try {
        d.DetectBR3Delay.stop();
        // A port that could not be opened has nothing to read: it is passed over.
        app.PortInput = port.portOpen() ? port.input() : std::string();
        for (char byte : app.PortInput) {
            app.RawFrame = ByteToHex(static_cast<unsigned char>(byte));
            d.txtBuffer.setText(d.txtBuffer.text() + app.RawFrame + " ");
            app.loop().pump();
        }
        // The screen may have been closed while the bytes were shown.
        if (!d.DetectRunning || !d.loaded()) return;
        if (!app.PortInput.empty() && app.RawFrame == "FF") {
            closeIfOpen(port);
            converterFound(app, kBr3);
            return;
        }
        BR3Detection(app);
    } catch (const std::exception&) {
        // A failing read ends the sweep where it stands.
    }
}

void InstallAutoDetect(App& app) {
    FrmAutoDetect* screen = AutoDetectScreen(app);
    if (!screen) return;
    FrmAutoDetect& d = *screen;
    d.onLoad = [&app] { loadScreen(app); };
    d.onActivate = [&app] { activateScreen(app); };
    d.onQueryUnload = [&app](bool& cancel) { queryUnload(app, cancel); };
    d.onUnload = [&app] { unloadScreen(app); };
    d.TimeOut.setHandler([&app] { app.DetectTicks++; });
    d.Timer1.setHandler([&d] { blink(d); });
    d.DetectBR3Delay.setHandler([&app] { DetectBR3DelayElapsed(app); });
    d.MSComm2->setOnComm([&app] { AutoDetectReceive(app); });
    d.cmdConnectAD.onClick = [&app] { connectClicked(app); };
}

}  // namespace ketrel
