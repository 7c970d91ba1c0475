#include "link/br3_connect.h"

#include <array>
#include <string>

#include "link/br3_frames.h"
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

constexpr Br3Header kVpwHeader{0x68, 0x6A, 0xF1};
constexpr Br3Header kPwmHeader{0x61, 0x6A, 0xF1};
constexpr Br3Header kIsoHeader{0x68, 0x6A, 0xF1};
constexpr Br3Header kKwpHeader{0xC2, 0x33, 0xF1};
constexpr Br3Header kKwpHeader3{0xC3, 0x33, 0xF1};

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
    {"01", "Trying VPW...", std::string("\x41\x00", 2), "SENDING:  41 00 (VPW)", kVpwHeader, false,
     ReadyTest::Vpw, "1", 175, "DELAY 175 mS", 2, "VPW TIMEOUT", &Br3ConnectState::VpwProbeDone},
    {"02", "Trying PWM...", "\x41\x01", "SENDING:  41 01 (PWM)", kPwmHeader, false, ReadyTest::Pwm,
     "2", 175, "DELAY 175 mS", 2, "PWM TIMEOUT", &Br3ConnectState::PwmProbeDone},
    {"03", "Trying ISO-9141...", "\x42\x02\x33", "SENDING:  42 02 33 (ISO - 9141)", kIsoHeader,
     false, ReadyTest::SlowInit, "3", 3000, "DELAY 3000 mS", 4, "ISO - 9141 TIMEOUT",
     &Br3ConnectState::IsoProbeDone},
    {"04SLOW", "Trying ISO-14230 (SLOW)...", "\x42\x02\x33", "SENDING:  42 02 33 (KWP2000 (SLOW))",
     kKwpHeader, true, ReadyTest::SlowInit, "4", 3000, "DELAY 3000 mS", 4, "KWP2000 (SLOW) TIMEOUT",
     &Br3ConnectState::KwpSlowProbeDone},
    {"04", "Trying ISO-14230 (FAST)...", "\x46\x03\xC1\x33\xF1\x81\x66",
     "SENDING:  46 03 C1 33 F1 81 66 (KWP2000 (FAST))", kKwpHeader, true, ReadyTest::FastInit, "4",
     300, "DELAY 300 mS", 3, nullptr, &Br3ConnectState::KwpFastProbeDone},
}};
constexpr std::size_t kKwpFast = 4;

// BR3Start -> first and last probe.
struct StartRow {
    std::size_t first, last;
};
constexpr std::array<StartRow, 5> kStartRows{{{0, 4}, {0, 0}, {1, 1}, {2, 3}, {4, 4}}};

// One support-list or PID request of the connect, per protocol: the bytes and the log line.
struct ListRequest {
    std::string frame;
    std::string log;  // the trailing byte's two digits follow on J1850
};

bool isJ1850(const App& app) {
    return app.ProtocolCode == "01" || app.ProtocolCode == "02";
}

std::string twoDigits(int n) {
    return (n < 10 ? "0" : "") + std::to_string(n);
}

FrmConnecting& screen(App& app) {
    return app.frmConnecting();
}

SerialPort& port(App& app) {
    return *app.frmConnecting().BR3Connecting;
}

std::string input(App& app) {
    return app.frmConnecting().txtConnectingInput.text();
}

// Sends FrameOut. A port that fails mid-connect loses the bytes; the time limits then end
// the connect.
void sendFrameOut(App& app) {
    try {
        if (port(app).portOpen()) port(app).output(app.FrameOut);
    } catch (const SerialError&) {
    }
}

void clearBuffer(App& app) {
    try {
        if (port(app).portOpen()) port(app).clearInput();
    } catch (const SerialError&) {
    }
}

void pumpUntil(App& app, const std::function<bool()>& done) {
    PumpedWait(app.loop(), done);
}

ListRequest mode1Request(const App& app, int trailing) {
    const std::string& p = app.ProtocolCode;
    if (p == "01")
        return {Br3Frame(Br3Family::J1850, kVpwHeader, {0x01, 0x00}, std::uint8_t(trailing)),
                "SENDING:  07 68 6A F1 01 00 17 " + twoDigits(trailing)};
    if (p == "02")
        return {Br3Frame(Br3Family::J1850, kPwmHeader, {0x01, 0x00}, std::uint8_t(trailing)),
                "SENDING:  07 61 6A F1 01 00 16 " + twoDigits(trailing)};
    if (p == "03")
        return {Br3Frame(Br3Family::IsoKwp, kIsoHeader, {0x01, 0x00}),
                "SENDING:  06 68 6A F1 01 00 C4"};
    return {Br3Frame(Br3Family::IsoKwp, kKwpHeader, {0x01, 0x00}),
            "SENDING:  06 C2 33 F1 01 00 E7"};
}

ListRequest mode2Request(const App& app, int trailing) {
    const std::string& p = app.ProtocolCode;
    if (p == "01")
        return {Br3Frame(Br3Family::J1850, kVpwHeader, {0x02, 0x00}, std::uint8_t(trailing)),
                "SENDING:  07 68 6A F1 02 00 C3 " + twoDigits(trailing)};
    if (p == "02")
        return {Br3Frame(Br3Family::J1850, kPwmHeader, {0x02, 0x00}, std::uint8_t(trailing)),
                "SENDING:  07 61 6A F1 02 00 DE " + twoDigits(trailing)};
    if (p == "03")
        return {Br3Frame(Br3Family::IsoKwp, kIsoHeader, {0x02, 0x00, 0x00}),
                "SENDING:  07 68 6A F1 02 00 00 C5"};
    // The KWP list request keeps the two-byte format byte C2.
    return {Br3Frame(Br3Family::IsoKwp, kKwpHeader, {0x02, 0x00, 0x00}),
            "SENDING:  07 C2 33 F1 02 00 00 E8"};
}

ListRequest pid1CRequest(const App& app) {
    const std::string& p = app.ProtocolCode;
    if (p == "01")
        return {Br3Frame(Br3Family::J1850, kVpwHeader, {0x01, 0x1C}),
                "SENDING:  07 68 6A F1 01 28 46 01"};
    if (p == "02")
        return {Br3Frame(Br3Family::J1850, kPwmHeader, {0x01, 0x1C}),
                "SENDING:  07 61 6A F1 01 28 5Bh 01"};
    if (p == "03")
        return {Br3Frame(Br3Family::IsoKwp, kIsoHeader, {0x01, 0x1C}),
                "SENDING:  06 68 6A F1 01 28 E0"};
    return {Br3Frame(Br3Family::IsoKwp, kKwpHeader, {0x01, 0x1C}),
            "SENDING:  06 C2 33 F1 01 28 03"};
}

void sendListRequest(App& app, const ListRequest& r) {
    app.FrameOut = r.frame;
    sendFrameOut(app);
    LogLine(app, r.log);
}

// Clears the answer field and the port, and starts counting seconds from 0.
void beginListWait(App& app) {
    screen(app).txtConnectingInput.setText("");
    clearBuffer(app);
    screen(app).ConnectTimeOut.start();
    app.ConnectSeconds = 0;
}

// Bit texts of the four support bytes at these columns into ByteBits(1..4).
void cutSupportBits(App& app, const std::array<int, 4>& columns) {
    for (std::size_t n = 1; n <= 4; ++n)
        app.ByteBits[n] = SliceByte(FrameSlice(app.RawFrame, columns[n - 1])).bits;
}

bool& probeFlagFor(App& app, const std::string& protocolCode) {
    for (const Probe& p : kProbes)
        if (protocolCode == p.protocolCode) return app.Br3Connect.*p.done;
    return app.Br3Connect.KwpFastProbeDone;
}

// frmMain.BR3MSComm takes over the converter for the scan.
void openScanPort(App& app, bool writeSettings) {
    SerialPort& scan = *app.frmMain().BR3MSComm;
    if (scan.portOpen()) scan.setPortOpen(false);
    if (writeSettings) scan.setSettings("19200,n,8,1");
    scan.setCommPort(PortNumber(app.ConnectPort));
    scan.setPortOpen(true);
}

void linkUp(App& app) {
    screen(app).ConnectDone = true;
    if (app.hooks.LinkUp) app.hooks.LinkUp();
}

// The converter or every probe failed: "No Response", and Retry or Cancel.
ConnectOutcome noResponse(App& app, bool converterSilent) {
    FrmConnecting& c = screen(app);
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
    screen(app).txtConnectingInput.setText("");
    clearBuffer(app);
    app.FrameOut = " ";
    LogLine(app, "SENDING:  20");
    sendFrameOut(app);
    screen(app).BR3ConnectDelay.start();
}

enum class SyncResult { Awake, Silent, Cancelled };

SyncResult synchronise(App& app) {
    sendSync(app);
    SyncResult result = SyncResult::Silent;
    pumpUntil(app, [&] {
        if (app.ConnectCancelled) {
            result = SyncResult::Cancelled;
            return true;
        }
        const std::string text = input(app);
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
    const std::string text = input(app);
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
    FrmConnecting& c = screen(app);
    if (app.SecondFrameConnect) app.Br3Connect.SecondFrameExpected = true;
    app.ProtocolCode = p.protocolCode;
    c.lblControlStatus[1].setText(p.status);
    c.txtConnectingInput.setText("");
    LogLine(app, "CLEAR BUFFER");
    LogLine(app, p.sendingLog);
    clearBuffer(app);
    app.FrameOut = p.command;
    app.FrameHeader = HeaderText(p.header);
    if (p.kwp) app.FrameHeader3 = HeaderText(kKwpHeader3);
    sendFrameOut(app);
    c.BR3ConnectDelay.setInterval(p.delayMs);
    c.BR3ConnectDelay.start();
    LogLine(app, p.delayLog);
}

enum class ProbeResult { Failed, Linked, Cancelled };

// After the list requests of a probe: its flag says the list went unanswered, ConnectEnded that
// the connect is over.
ProbeResult awaitListOutcome(App& app, const Probe& p) {
    ProbeResult result = ProbeResult::Failed;
    pumpUntil(app, [&] {
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
    pumpUntil(app, [&] {
        if (app.ConnectCancelled) {
            wait = Wait::Cancelled;
            return true;
        }
        if (app.ConnectSeconds >= p.limitSeconds) {
            wait = Wait::Limit;
            return true;
        }
        const std::string text = input(app);
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
            LogLine(app, p.giveUpLog);
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
        pumpUntil(app, [&] {
            if (app.ConnectCancelled) return true;
            if (app.ConnectSeconds >= p.limitSeconds) {
                limit = true;
                return true;
            }
            return readyTestPasses(p, input(app));
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

void runCycleFor(App& app, const std::string& protocolCode) {
    BR3Request(app, Br3LineFor(protocolCode));
}

}  // namespace

void BR3ConnectDelayTick(App& app) {
    FrmConnecting& c = screen(app);
    c.BR3ConnectDelay.stop();
    if (app.ConnectCancelled) return;
    c.txtConnectingInput.setText("");
    std::string in;
    try {
        if (port(app).portOpen()) in = port(app).input();
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

void BR3ConnectMode1List(App& app) {
    FrmConnecting& c = screen(app);
    FrmMain& m = app.frmMain();
    Br3ConnectState& s = app.Br3Connect;
    int trailing = 1;
    std::array<int, 4> columns{11, 13, 15, 17};
    for (;;) {
        beginListWait(app);
        if (app.BR3SetDelay) {
            const bool j = isJ1850(app);
            m.BR3Delay.setInterval(j ? 150 : 225);
            app.BR3Delay = j ? "150" : "225";
        }
        sendListRequest(app, mode1Request(app, trailing));
        c.BR3ConnectDelay.setInterval(275);
        c.BR3ConnectDelay.start();
        LogLine(app, "DELAY 275 mS");
        bool answered = false;
        pumpUntil(app, [&] {
            if (app.ConnectCancelled) return true;
            if (input(app).size() >= 10) {
                answered = true;
                return true;
            }
            return app.ConnectSeconds >= 2;
        });
        if (app.ConnectCancelled) return;
        if (!answered) {
            LogLine(app, "MODE 01 PID 00 NOT RECEIVED");
            app.ConnectSeconds = 0;
            probeFlagFor(app, app.ProtocolCode) = true;
            return;
        }
        if (app.ProtocolCode == "04SLOW") app.ProtocolCode = "04";
        const bool j1850 = isJ1850(app);
        const std::string text = input(app);
        if (!j1850 && app.SecondFrameConnect) {
            if (text.size() < 30) {
                LogLine(app, "2ND FRAME DATA NOT DETECTED");
                s.SecondFrameExpected = false;
            } else {
                s.SecondFrameExpected = true;
            }
        }
        c.BR3ConnectDelay.stop();
        c.ConnectTimeOut.stop();
        s.ConnectEnded = true;
        app.Connected = true;
        app.RawFrame = text;
        if (j1850) {
            m.lblECMAddress.setText(std::string(FrameSlice(text, 7)));
        } else {
            m.lblECMAddress.setText(std::string(FrameSlice(text, 5)));
            if (text.size() >= 30) m.lblECMAddress2.setText(std::string(FrameSlice(text, 25)));
        }
        for (;;) {
            app.RxMode = "01";
            app.RxPID = "00";
            cutSupportBits(app, j1850 ? std::array<int, 4>{13, 15, 17, 19} : columns);
            LogLine(app, "MODE 01 PID 00 LOOKUP IN PROCESS");
            DecodeSupportPID00(app);
            if (j1850 || !s.SecondFrameExpected) break;
            // The second module's answer is already in the field.
            s.SecondFrameExpected = false;
            columns = {31, 33, 35, 37};
            LogLine(app, "PROCESSING 2ND FRAME OF MODE 01 PID 00 ");
        }
        if (j1850 && s.SecondFrameExpected) {
            // The trailing byte asks the converter for the second module's answer.
            s.SecondFrameExpected = false;
            trailing = 2;
            LogLine(app, "PROCESSING 2ND FRAME OF MODE 01 PID 00 ");
            continue;
        }
        LogLine(app, "CALL MODE 02 PID 00 PROCEDURE");
        if (app.SecondFrameConnect) s.SecondFrameExpected = true;
        BR3ConnectMode2List(app);
        return;
    }
}

void BR3ConnectMode2List(App& app) {
    FrmConnecting& c = screen(app);
    Br3ConnectState& s = app.Br3Connect;
    int trailing = 1;
    for (;;) {
        beginListWait(app);
        sendListRequest(app, mode2Request(app, trailing));
        c.BR3ConnectDelay.start();
        LogLine(app, "DELAY 275 mS");
        bool answered = false;
        pumpUntil(app, [&] {
            if (app.ConnectCancelled) return true;
            if (input(app).size() >= 10) {
                answered = true;
                return true;
            }
            return app.ConnectSeconds >= 2;
        });
        if (app.ConnectCancelled) return;
        if (!answered) {
            LogLine(app, "MODE 02 PID 00 NOT RECEIVED");
            c.ConnectTimeOut.stop();
            app.Mode2ListMissing = true;
            BR3ConnectPid1C(app);
            return;
        }
        const bool j1850 = isJ1850(app);
        const std::string text = input(app);
        if (!j1850 && app.SecondFrameConnect) {
            if (text.size() < 32) {
                LogLine(app, "2ND FRAME DATA NOT DETECTED");
                s.SecondFrameExpected = false;
            } else {
                s.SecondFrameExpected = true;
            }
        }
        c.BR3ConnectDelay.stop();
        c.ConnectTimeOut.stop();
        app.RawFrame = text;
        const std::array<int, 4> columns =
            j1850 ? std::array<int, 4>{15, 17, 19, 21} : std::array<int, 4>{13, 15, 17, 19};
        for (;;) {
            app.RxMode = "02";
            app.RxPID = "00";
            cutSupportBits(app, columns);
            LogLine(app, "MODE 02 PID 00 LOOKUP IN PROCESS");
            DecodeSupportPID00(app);
            if (j1850 || !s.SecondFrameExpected) break;
            // The columns stay: the second pass reads the same bytes again.
            s.SecondFrameExpected = false;
            LogLine(app, "PROCESSING 2ND FRAME OF MODE 02 PID 00 ");
        }
        if (j1850 && s.SecondFrameExpected) {
            s.SecondFrameExpected = false;
            trailing = 2;
            LogLine(app, "PROCESSING 2ND FRAME OF MODE 02 PID 00 ");
            continue;
        }
        LogLine(app, "CALL MODE 01 PID 28 PROCEDURE");
        BR3ConnectPid1C(app);
        return;
    }
}

void BR3ConnectPid1C(App& app) {
    FrmConnecting& c = screen(app);
    beginListWait(app);
    sendListRequest(app, pid1CRequest(app));
    c.BR3ConnectDelay.start();
    LogLine(app, "DELAY 275 mS");
    bool answered = false;
    pumpUntil(app, [&] {
        if (app.ConnectCancelled) return true;
        // A vehicle that doesn't offer the PID isn't waited for.
        if (input(app).size() >= 13 || !app.Mode1Supported[0x1C]) {
            answered = true;
            return true;
        }
        return app.ConnectSeconds >= 1;
    });
    if (app.ConnectCancelled) return;
    if (!answered) {
        LogLine(app, "MODE 01 PID 28 NOT RECEIVED");
        c.ConnectTimeOut.stop();
        linkUp(app);
        openScanPort(app, false);
        // This path polls J1850 links with the PWM routine, VPW included.
        runCycleFor(app, isJ1850(app) ? "02" : app.ProtocolCode);
        return;
    }
    c.BR3ConnectDelay.stop();
    c.ConnectTimeOut.stop();
    app.RawFrame = input(app);
    app.RxMode = "01";
    app.RxPID = "1C";
    bool bad = false;
    std::string_view slice = FrameSlice(app.RawFrame, isJ1850(app) ? 13 : 11);
    std::uint8_t value = HexTextToByte(slice, bad);
    if (bad) {
        app.ByteValue[1].reset();
    } else {
        app.ByteValue[1] = value;
    }
    LogLine(app, "MODE 01 PID 28 LOOKUP IN PROCESS");
    if (PidDecoder decode = MainValueDecoder(0x1C)) decode(app);
    linkUp(app);
    openScanPort(app, true);
    runCycleFor(app, app.ProtocolCode);
}

ConnectOutcome BR3Connect(App& app) {
    FrmConnecting& c = screen(app);
    app.RequestPid20 = false;
    app.RequestPid40 = false;
    app.Br3Connect = Br3ConnectState{};
    LogLine(app, "TYPE INTERFACE USED:  " + app.OBDIIHardware);
    c.BR3ConnectDelay.setInterval(175);
    c.lblControlStatus[1].setText("Connecting With BR3...");

    SerialPort& p = port(app);
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
