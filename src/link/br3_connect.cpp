#include "link/br3_connect.h"

#include <array>
#include <string>

#include "link/br3_connect_io.h"
#include "link/br3_receive.h"
#include "link/br3_request.h"
#include "link/conn_log.h"
#include "link/port_number.h"
#include "link/serial_timing.h"
#include "obd/bit_operations.h"
#include "obd/pid_catalogue.h"
#include "obd/value_decoders.h"
#include "platform/serial_port.h"
#include "state/app.h"

namespace ketrel {
namespace {

// How a probe knows that the converter has started the protocol.
enum class ReadyTest {
    Vpw,       // "0200"
    Pwm,       // "0201"
    SlowInit,  // "02" and two key bytes; "82" is a failed wake-up
    FastInit,  // any answer
};

// One protocol the connect tries, in the order they are tried.
struct Probe {
    const char* protocolCode;
    const char* status;
    std::string command;  // the converter's start command, sent as it stands
    const char* sendingLog;
    Br3Header header;
    bool kwp;  // FrameHeader3 is set as well
    ReadyTest ready;
    const char* whatProtocol;
    int delayMs;
    const char* delayLog;
    long limitSeconds;
    const char* giveUpLog;  // null: none
    bool Br3ConnectState::*done;
};

const std::array<Probe, 5> kProbes{{
    {"01", "Trying VPW...", std::string("\x41\x00", 2), "SENDING:  41 00 (VPW)", kBr3VpwHeader,
     false, ReadyTest::Vpw, "1", 175, "DELAY 175 mS", 2, "VPW TIMEOUT",
     &Br3ConnectState::VpwProbeDone},
    {"02", "Trying PWM...", "\x41\x01", "SENDING:  41 01 (PWM)", kBr3PwmHeader, false,
     ReadyTest::Pwm, "2", 175, "DELAY 175 mS", 2, "PWM TIMEOUT", &Br3ConnectState::PwmProbeDone},
    {"03", "Trying ISO-9141...", "\x42\x02\x33", "SENDING:  42 02 33 (ISO - 9141)", kBr3IsoHeader,
     false, ReadyTest::SlowInit, "3", 3000, "DELAY 3000 mS", 4, "ISO - 9141 TIMEOUT",
     &Br3ConnectState::IsoProbeDone},
    {"04SLOW", "Trying ISO-14230 (SLOW)...", "\x42\x02\x33", "SENDING:  42 02 33 (KWP2000 (SLOW))",
     kBr3KwpHeader, true, ReadyTest::SlowInit, "4", 3000, "DELAY 3000 mS", 4,
     "KWP2000 (SLOW) TIMEOUT", &Br3ConnectState::KwpSlowProbeDone},
    {"04", "Trying ISO-14230 (FAST)...", "\x46\x03\xC1\x33\xF1\x81\x66",
     "SENDING:  46 03 C1 33 F1 81 66 (KWP2000 (FAST))", kBr3KwpHeader, true, ReadyTest::FastInit,
     "4", 300, "DELAY 300 mS", 3, nullptr, &Br3ConnectState::KwpFastProbeDone},
}};
constexpr std::size_t kKwpFast = 4;

// BR3Start -> first and last probe.
struct StartRow {
    std::size_t first, last;
};
constexpr std::array<StartRow, 5> kStartRows{{{0, 4}, {0, 0}, {1, 1}, {2, 3}, {4, 4}}};

// The converter or every probe failed: "No Response", and Retry or Cancel.
ConnectOutcome noResponse(App& app, bool converterSilent) {
    FrmConnecting& c = app.frmConnecting();
    c.ConnectTimeOut.stop();
    c.Timer1.stop();
    if (!converterSilent) LogLine(app, "CONNECTING TIMEOUT");
    LogLine(app, "UNSUCCESSFUL CONNECTING");
    MsgAnswer answer = app.dialogs().show(
        MessageBox{"No Response",
                   "Device/PCM Is Not Responding. Possible Causes Could Be One Of The Following "
                   "Below.\n\n"
                   " * Make Sure The Device Is Connected To Your Serial Port\n"
                   " * Make Sure OBD II Connector Is Connected To The Vehicle\n"
                   " * Check Pin 16(Power) And Pin 4,5(Ground)\n"
                   " * Turn Ignition Key On",
                   MsgButtons::RetryCancel, MsgIcon::Stop, false});
    if (answer == MsgAnswer::Retry) {
        LogLine(app, "RETRY COMMAND");
        app.ConnectSeconds = 0;
        if (converterSilent) LogLine(app, "RESET TIMEOUT");
        return ConnectOutcome::Retry;
    }
    LogLine(app, "USER CANCELED");
    if (app.hooks.EndSession) app.hooks.EndSession();
    c.ConnectTimeOut.stop();
    c.unload();
    return ConnectOutcome::Done;
}

// Sends the space that wakes the converter.
void sendSync(App& app) {
    app.frmConnecting().txtConnectingInput.setText("");
    Br3ClearBuffer(app);
    app.FrameOut = " ";
    LogLine(app, "SENDING:  20");
    Br3SendFrameOut(app);
    app.frmConnecting().BR3ConnectDelay.start();
}

enum class SyncResult { Awake, Silent, Cancelled };

SyncResult synchronise(App& app) {
    sendSync(app);
    SyncResult result = SyncResult::Silent;
    Br3PumpUntil(app, [&] {
        if (app.ConnectCancelled) {
            result = SyncResult::Cancelled;
            return true;
        }
        const std::string text = Br3ConnectInput(app);
        if (text.size() >= 2 && text.compare(text.size() - 2, 2, "FF") == 0) {
            result = SyncResult::Awake;
            return true;
        }
        if (app.ConnectSeconds == 5) {
            // One more space at the fifth second.
            app.ConnectSeconds = 6;
            sendSync(app);
        }
        return app.ConnectSeconds >= 10;
    });
    return result;
}

void takeKeyBytes(App& app, std::size_t from) {
    const std::string text = Br3ConnectInput(app);
    app.KeywordHex = text.size() > from ? text.substr(from) : "";
    FrmMain& m = app.frmMain();
    m.lblKeyword1.setText(app.KeywordHex.substr(0, 2));
    m.lblKeyword2.setText(app.KeywordHex.size() >= 2
                              ? app.KeywordHex.substr(app.KeywordHex.size() - 2)
                              : app.KeywordHex);
}

bool readyTestPasses(const Probe& p, const std::string& text) {
    switch (p.ready) {
        case ReadyTest::Vpw:
            return text.compare(0, 4, "0200") == 0;
        case ReadyTest::Pwm:
            return text.compare(0, 4, "0201") == 0;
        case ReadyTest::SlowInit:
            return text.compare(0, 2, "02") == 0;
        case ReadyTest::FastInit:
            return text.size() >= 2;
    }
    return false;
}

void startProbe(App& app, const Probe& p) {
    FrmConnecting& c = app.frmConnecting();
    if (app.SecondFrameConnect) app.Br3Connect.SecondFrameExpected = true;
    app.ProtocolCode = p.protocolCode;
    c.lblControlStatus[1].setText(p.status);
    c.txtConnectingInput.setText("");
    LogLine(app, "CLEAR BUFFER");
    LogLine(app, p.sendingLog);
    Br3ClearBuffer(app);
    app.FrameOut = p.command;
    app.FrameHeader = HeaderText(p.header);
    if (p.kwp) app.FrameHeader3 = HeaderText(kBr3KwpHeader3);
    Br3SendFrameOut(app);
    c.BR3ConnectDelay.setInterval(p.delayMs);
    c.BR3ConnectDelay.start();
    LogLine(app, p.delayLog);
}

enum class ProbeResult { Failed, Linked, Cancelled };

// After the list requests of a probe: its flag says the list went unanswered, ConnectEnded that
// the connect is over.
ProbeResult awaitListOutcome(App& app, const Probe& p) {
    ProbeResult result = ProbeResult::Failed;
    Br3PumpUntil(app, [&] {
        if (app.Br3Connect.*p.done) return true;
        if (app.Br3Connect.ConnectEnded) {
            result = ProbeResult::Linked;
            return true;
        }
        if (app.ConnectCancelled) {
            result = ProbeResult::Cancelled;
            return true;
        }
        return false;
    });
    return result;
}

// One probe of VPW, PWM, ISO 9141 or KWP slow.
ProbeResult runProbe(App& app, const Probe& p) {
    startProbe(app, p);
    enum class Wait { Cancelled, Limit, Failed, Ready } wait = Wait::Limit;
    Br3PumpUntil(app, [&] {
        if (app.ConnectCancelled) {
            wait = Wait::Cancelled;
            return true;
        }
        if (app.ConnectSeconds >= p.limitSeconds) {
            wait = Wait::Limit;
            return true;
        }
        const std::string text = Br3ConnectInput(app);
        if (p.ready == ReadyTest::SlowInit && text.compare(0, 2, "82") == 0) {
            wait = Wait::Failed;
            return true;
        }
        if (readyTestPasses(p, text)) {
            wait = Wait::Ready;
            return true;
        }
        return false;
    });
    switch (wait) {
        case Wait::Cancelled:
            return ProbeResult::Cancelled;
        case Wait::Limit:
            if (p.giveUpLog) LogLine(app, p.giveUpLog);
            app.ConnectSeconds = 0;
            LogLine(app, "RESET TIMEOUT");
            return ProbeResult::Failed;
        case Wait::Failed:
            app.ConnectSeconds = 0;
            return ProbeResult::Failed;
        case Wait::Ready:
            break;
    }
    if (p.ready == ReadyTest::SlowInit) takeKeyBytes(app, 2);
    app.frmMain().lblWhatProtocol.setText(p.whatProtocol);
    BR3ConnectMode1List(app);
    ProbeResult result = awaitListOutcome(app, p);
    if (result != ProbeResult::Failed) return result;
    app.ConnectSeconds = 0;
    if (p.ready == ReadyTest::Vpw || p.ready == ReadyTest::Pwm) LogLine(app, "RESET TIMEOUT");
    return ProbeResult::Failed;
}

// KWP fast: any answer starts the list; a failed list is asked again while answers come, and
// the probe ends when three seconds pass without one.
ProbeResult runFastProbe(App& app, const Probe& p) {
    startProbe(app, p);
    for (;;) {
        bool limit = false;
        Br3PumpUntil(app, [&] {
            if (app.ConnectCancelled) return true;
            if (app.ConnectSeconds >= p.limitSeconds) {
                limit = true;
                return true;
            }
            return readyTestPasses(p, Br3ConnectInput(app));
        });
        if (app.ConnectCancelled) return ProbeResult::Cancelled;
        if (limit) return ProbeResult::Failed;
        takeKeyBytes(app, 8);
        app.frmMain().lblWhatProtocol.setText(p.whatProtocol);
        BR3ConnectMode1List(app);
        if (app.ConnectCancelled) return ProbeResult::Cancelled;
        if (app.Br3Connect.ConnectEnded) return ProbeResult::Linked;
    }
}

}  // namespace

void BR3ConnectDelayTick(App& app) {
    FrmConnecting& c = app.frmConnecting();
    c.BR3ConnectDelay.stop();
    if (app.ConnectCancelled) return;
    c.txtConnectingInput.setText("");
    std::string in;
    try {
        if (Br3ConnectingPort(app).portOpen()) in = Br3ConnectingPort(app).input();
    } catch (const SerialError&) {
        in.clear();  // a port that failed reads as silence
    }
    for (char ch : in) {
        c.txtConnectingInput.setText(c.txtConnectingInput.text() +
                                     ByteToHex(static_cast<unsigned char>(ch)));
        app.loop().pump();
    }
    LogLine(app, "RECEIVED:  " + c.txtConnectingInput.text());
}

ConnectOutcome BR3Connect(App& app) {
    FrmConnecting& c = app.frmConnecting();
    app.RequestPid20 = false;
    app.RequestPid40 = false;
    app.Br3Connect = Br3ConnectState{};
    LogLine(app, "TYPE INTERFACE USED:  " + app.OBDIIHardware);
    c.BR3ConnectDelay.setInterval(175);
    c.lblControlStatus[1].setText("Connecting With BR3...");

    SerialPort& p = Br3ConnectingPort(app);
    if (p.portOpen()) p.setPortOpen(false);
    p.setCommPort(PortNumber(app.ConnectPort));
    p.setSettings("19200,n,8,1");
    LogLine(app, "SET BAUDRATE:  19200");
    LogLine(app, "SET PORT:  " + app.ConnectPort);
    p.setPortOpen(true);  // SerialError 8002 / 8005 go to the session's trap
    LogLine(app, "OPEN PORT");
    BlockingSleep(app.loop(), 100);
    c.ConnectTimeOut.start();

    switch (synchronise(app)) {
        case SyncResult::Cancelled:
            return ConnectOutcome::Done;
        case SyncResult::Silent:
            return noResponse(app, true);
        case SyncResult::Awake:
            break;
    }
    app.ConnectSeconds = 0;
    const int start = app.BR3Start >= 1 && app.BR3Start <= 5 ? app.BR3Start : 1;
    const StartRow row = kStartRows[std::size_t(start - 1)];
    for (std::size_t i = row.first; i <= row.last; ++i) {
        const Probe& probe = kProbes[i];
        ProbeResult r = i == kKwpFast ? runFastProbe(app, probe) : runProbe(app, probe);
        if (r != ProbeResult::Failed) return ConnectOutcome::Done;
    }
    return noResponse(app, false);
}

void InstallBr3(App& app) {
    app.frmConnecting().BR3ConnectDelay.setHandler([&app] { BR3ConnectDelayTick(app); });
    app.frmMain().BR3Delay.setHandler([&app] { BR3DelayTick(app); });
}

const char* Br3LogType(const App& app) {
    return app.ProtocolCode == "03" || app.ProtocolCode == "04" ? "BR3ISO" : "BR3";
}

}  // namespace ketrel
