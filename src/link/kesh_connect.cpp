#include "link/kesh_connect.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <string>
#include <string_view>

#include "link/br3_receive.h"
#include "link/conn_log.h"
#include "link/kesh_receive.h"
#include "link/kesh_request.h"
#include "link/kline_timing.h"
#include "link/port_number.h"
#include "link/request_walk.h"
#include "link/serial_timing.h"
#include "obd/bit_operations.h"
#include "obd/pid_catalogue.h"
#include "platform/serial_port.h"
#include "state/app.h"

namespace ketrel {
namespace {

// Frames of the connect; they hold 0x00 bytes.
constexpr std::string_view kIsoPid00{"\x68\x6A\xF1\x01\x00\xC4", 6};
constexpr std::string_view kKwpPid00{"\xC2\x33\xF1\x01\x00\xE7", 6};
constexpr std::string_view kStartCommunication{"\xC1\x33\xF1\x81\x66", 5};

SerialPort& klinePort(App& app) {
    return *app.frmMain().KeshMSComm;
}

// The present instant of the wake-up's waits, in microseconds.
std::int64_t counterNow(App& app) {
    return EdgeTimer(app.loop()).nowMicros();
}

// The busy wait of the wake-up: nothing pumped until `seconds` after the instant `start`, on
// the real clock's counter at real-time priority where the system allows it. Returns the
// seconds from `start` when it ends. Every timed wait of the K-line goes through here.
double waitUntilEdge(App& app, std::int64_t start, double seconds) {
    const std::int64_t reached =
        WaitFromInstant(app.loop(), start, std::int64_t(std::llround(seconds * 1e6)));
    return double(reached - start) / 1e6;
}

// Seconds as the stopwatch gives them, to four decimals without trailing zeros ("0.2001").
std::string secondsText(double seconds) {
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.4f", seconds);
    std::string text = buf;
    while (text.back() == '0')
        text.pop_back();
    if (text.back() == '.') text.pop_back();
    return text;
}

std::string msText(double seconds) {
    return std::to_string(std::lround(seconds * 1000.0));
}

// A busy wait with its "DELAY:  " log line.
void loggedWait(App& app, double seconds) {
    LogLine(app, "DELAY:  " + msText(waitUntilEdge(app, counterNow(app), seconds)) + " mS");
}

// Port calls of the connect: a port that fails mid-connect loses the call, and the time-out
// ends the attempt.
template <class Fn>
void onPort(App& app, Fn fn) {
    try {
        SerialPort& p = klinePort(app);
        if (p.portOpen()) fn(p);
    } catch (const SerialError&) {
    }
}

void sendText(App& app, std::string_view bytes) {
    app.FrameOut = std::string(bytes);
    onPort(app, [&](SerialPort& p) { p.output(bytes); });
}

void setStatus(App& app, const std::string& text) {
    app.frmConnecting().lblControlStatus[1].setText(text);
}

// A value in hexadecimal without leading zeros ("F7", "0").
std::string plainHex(int value) {
    static const char* digits = "0123456789ABCDEF";
    std::string out;
    do {
        out.insert(out.begin(), digits[value % 16]);
        value /= 16;
    } while (value > 0);
    return out;
}

void showKeyBytes(App& app) {
    FrmMain& m = app.frmMain();
    const std::string& k = app.KeywordHex;
    m.lblKeyword1.setText(k.substr(0, 2));
    m.lblKeyword2.setText(k.size() >= 2 ? k.substr(k.size() - 2) : k);
}

// Idles the line 4 s showing the countdown; false when the user cancelled.
bool idleWithCountdown(App& app) {
    cTimeIt& t = app.TimerObject();
    const std::string base = "Initializing In Progress...";
    t.Start();
    for (;;) {
        if (app.ConnectCancelled) return false;
        t.StopNow();
        const double r = t.Result();
        if (r >= 4) break;
        for (int s = 0; s <= 4; ++s) {
            const double from = s == 0 ? 0.0 : s - 0.1;
            if (r >= from && r < s + (s == 0 ? 0.1 : 0.0))
                setStatus(app, base + std::to_string(4 - s));
        }
        app.loop().pump();
    }
    LogLine(app, "DELAY:  " + msText(t.Result()) + " mS");
    setStatus(app, base);
    return true;
}

// The address byte 0x33 at 5 baud: ten slots of 200 ms on the port's break, each edge timed
// from the first, the slot's log lines written after its edge. Nothing else runs.
void clockOutAddress(App& app) {
    try {
        ClockOutFiveBaud(
            app.loop(), klinePort(app), 0x33,
            [&](const FiveBaudSlot& slot) { LogLine(app, std::string("SENDING:  ") + slot.name); },
            [&](const FiveBaudSlot&, double seconds) {
                LogLine(app, "TIME ELAPSE:  " + secondsText(seconds));
            });
    } catch (const SerialError&) {
        // A port that fails under the byte: no answer comes, and the time-out ends the attempt.
    }
}

// The 5-baud wake-up up to the last bit; the handshake goes on from the port's events. False
// when the user cancelled during the idle wait.
bool startFiveBaud(App& app) {
    FrmConnecting& c = app.frmConnecting();
    onPort(app, [](SerialPort& p) { p.setInputLen(0); });
    app.ProtocolCode = "03";
    LogLine(app, "TYPE INTERFACE USED:  " + app.OBDIIHardware);
    c.KeshTimeOut.setInterval(12000);
    c.KeshTimeOut.start();
    setStatus(app, "Initializing In Progress...");
    LogLine(app, "INITIALIZING IN PROGRESS");
    if (!idleWithCountdown(app)) return false;
    onPort(app, [](SerialPort& p) {
        p.setRThreshold(1);
        p.setBaud(10400);
    });
    LogLine(app, "SET BAUD RATE:  10400");
    onPort(app, [](SerialPort& p) { p.clearInput(); });
    LogLine(app, "CLEAR BUFFER");
    app.KeshConnect.HandshakePriority =
        std::make_unique<RealtimeSection>(false, app.loop().realTime());
    clockOutAddress(app);
    if (app.BR3SetDelay) {
        LogLine(app, "SET AUTO DELAY");
        app.frmMain().KeshDelay.setInterval(225);
        app.BR3Delay = "225";
    } else {
        LogLine(app, "SET MANUAL DELAY:  " + app.BR3Delay);
    }
    return true;
}

// The vehicle's sync and key bytes stand in the field: the inverted second key byte answers.
void answerKeyBytes(App& app, const std::string& text) {
    setStatus(app, "Sync And Keyword Received...");
    LogLine(app, "RECEIVED SYNC AND KEYWORD:  " + text);
    loggedWait(app, 0.025);
    if (app.ConnectCancelled) return;
    app.KeywordHex = text.substr(2);
    showKeyBytes(app);
    bool bad = false;
    const int inverted = 255 - HexTextToByte(text.substr(text.size() - 2), bad);
    LogLine(app, "SENDING INVERTED:  " + plainHex(inverted));
    sendText(app, std::string(1, char(inverted)));
    app.KeshConnect.HandshakePriority.reset();
}

// The vehicle has acknowledged the address: the first request goes out on ISO 9141.
void tryIso(App& app, const std::string& text) {
    FrmMain& m = app.frmMain();
    LogLine(app, "RECEIVED ECU INVERTED:  " + text.substr(text.size() - 2));
    m.Text2.setText("");
    m.txtKesh.setText("");
    loggedWait(app, 0.25);
    try {
        SerialPort& p = klinePort(app);
        if (!p.portOpen()) p.setPortOpen(true);
        p.setRThreshold(0);
        p.setInputLen(0);
        p.setBaud(10400);
    } catch (const SerialError&) {
    }
    app.RawFrame.clear();
    setStatus(app, "TRYING ISO - 9141...");
    LogLine(app, "TRYING ISO - 9141");
    LogLine(app, "SENDING:  68 6A F1 01 00 C4");
    sendText(app, kIsoPid00);
    app.LastRequestHex = "686AF10100C4";
    loggedWait(app, 0.25);
    KeshCheckISO(app);
}

void tryKwpSlow(App& app) {
    FrmMain& m = app.frmMain();
    setStatus(app, "TRYING KWP 2000 (SLOW)...");
    onPort(app, [](SerialPort& p) { p.clearInput(); });
    m.Text2.setText("");
    m.txtKesh.setText("");
    onPort(app, [](SerialPort& p) {
        p.setRThreshold(0);
        p.setInputLen(0);
        p.setBaud(10400);
    });
    app.RawFrame.clear();
    LogLine(app, "TRYING KWP 2000 (SLOW)");
    LogLine(app, "SENDING:  C2 33 F1 01 00 E7");
    sendText(app, kKwpPid00);
    app.LastRequestHex = "C233F10100E7";
    loggedWait(app, 0.25);
    if (app.ConnectCancelled) return;
    KeshCheckKWP(app);
}

// Four support bytes from these columns of RawFrame into ByteValue and ByteBits.
void cutSupportBytes(App& app, int firstColumn) {
    for (std::size_t n = 1; n <= 4; ++n) {
        const std::string_view slice = FrameSlice(app.RawFrame, firstColumn + 2 * int(n - 1));
        bool bad = false;
        const std::uint8_t value = HexTextToByte(slice, bad);
        if (bad) continue;
        app.ByteValue[n] = value;
        app.ByteBits[n] = SliceByte(slice).bits;
    }
}

// The link is up: the connecting screen closes and the scan starts on the line's routine.
void linkUp(App& app, KeshLine line) {
    app.frmConnecting().KeshTimeOut.stop();
    app.frmConnecting().ConnectDone = true;
    app.KeshConnect.Finished = true;
    if (app.hooks.LinkUp) app.hooks.LinkUp();
    app.KeshRequestMode2List = true;
    app.KeshRequestPid1C = true;
    KeshRequest(app, line);
}

// KeshCheckISO and KeshCheckKWP: the answer to Mode 01 PID 00 after the echo.
void check(App& app, KeshLine line) {
    FrmMain& m = app.frmMain();
    const bool kwp = line == KeshLine::Kwp;
    m.Text2.setText("");
    bool secondExpected = app.SecondFrameConnect;
    if (!app.Connected) return;
    std::string in;
    try {
        in = klinePort(app).input();
    } catch (const SerialError&) {
    }
    app.PortInput = in;
    const std::string raw = BytesToHex(in);
    m.Text2.setText(raw);
    LogLine(app, "RECEIVED RAW DATA:  " + raw);
    const std::string tail = KeshStripEcho(raw, app.LastRequestHex);
    m.txtKesh.setText(tail);
    app.RawFrame = tail;
    LogLine(app, "RECEIVED FILTERED:  " + tail);
    if (kwp && FrameSlice(tail, 7) == "7F") {
        setStatus(app, "Invalid Mode Byte");
        LogLine(app, "INVALID MODE BYTE");
    }
    const std::string_view mode = FrameSlice(tail, 7);
    app.RxMode = mode.size() == 2 ? std::string("0") + mode[1] : std::string();
    app.RxPID = std::string(FrameSlice(tail, 9));
    int column = 11;
    for (;;) {
        cutSupportBytes(app, column);
        if (app.RxPID != "00" || app.RxMode != "01") {
            if (!kwp) tryKwpSlow(app);
            return;
        }
        m.lblECMAddress.setText(std::string(FrameSlice(tail, 5)));
        if (tail.size() > 24) m.lblECMAddress2.setText(std::string(FrameSlice(tail, 25)));
        m.lblWhatProtocol.setText(kwp ? "4" : "3");
        app.ProtocolCode = kwp ? "04" : "03";
        DecodeSupportPID00(app);
        if (!(app.SecondFrameConnect && secondExpected)) break;
        LogLine(app, "PROCESSING 2ND FRAME OF MODE 01 PID 00 ");
        secondExpected = false;
        column = 31;
    }
    linkUp(app, line);
}

void noCommunication(App& app) {
    const MsgAnswer answer = app.dialogs().show(NoCommunicationBox());
    app.KeshConnect.Finished = true;
    if (answer == MsgAnswer::Retry) {
        LogLine(app, "RETRY COMMAND");
        app.KeshConnect.Retry = true;
        return;
    }
    if (app.hooks.CancelConnect) {
        app.hooks.CancelConnect();
    } else {
        app.ConnectCancelled = true;
        LogLine(app, "USER CANCELED");
    }
    onPort(app, [](SerialPort& p) { p.setPortOpen(false); });
}

bool isKline(const App& app) {
    return app.OBDIIHardware == kKesh || app.OBDIIHardware == kTactrix;
}

}  // namespace

void KeshOnComm(App& app) {
    SerialPort& p = klinePort(app);
    if (p.commEvent() != kCommEventReceive) return;
    std::string in;
    try {
        in = p.input();
    } catch (const SerialError&) {
        return;
    }
    Field& field = app.frmConnecting().txtConnectingInput;
    for (char ch : in) {
        const std::string pair = ByteToHex(static_cast<unsigned char>(ch));
        LogLine(app, "INCOMING BUFFER:  " + pair);
        if (pair == "00") continue;
        field.setText(field.text() + pair);
        KeshConnectingInputChanged(app);
    }
}

void KeshConnectingInputChanged(App& app) {
    if (app.ProtocolCode != "03" || !isKline(app)) return;
    const std::string text = app.frmConnecting().txtConnectingInput.text();
    if (text.size() == 6) answerKeyBytes(app, text);
    if (app.ProtocolCode != "03") return;
    const std::string now = app.frmConnecting().txtConnectingInput.text();
    if (now.size() >= 12 || (now.size() >= 2 && now.compare(now.size() - 2, 2, "CC") == 0))
        tryIso(app, now);
}

void KeshCheckISO(App& app) {
    check(app, KeshLine::Iso);
}

void KeshCheckKWP(App& app) {
    check(app, KeshLine::Kwp);
}

void KeshFastInit(App& app) {
    FrmConnecting& c = app.frmConnecting();
    onPort(app, [](SerialPort& p) {
        p.setInputLen(0);
        p.setRThreshold(0);
    });
    app.RawFrame.clear();
    app.PortInput.clear();
    c.txtConnectingInput.setText("");
    app.ProtocolCode.clear();
    setStatus(app, "Trying ISO - 14230 (FAST)...");
    LogLine(app, "Trying ISO - 14230 (FAST)");
    c.KeshTimeOut.setInterval(10000);
    c.KeshTimeOut.start();
    LogLine(app, "SETBAUD 200");
    onPort(app, [](SerialPort& p) {
        p.setBaud(200);
        p.clearInput();
    });
    LogLine(app, "CLEAR BUFFER");
    // At 200 baud the start bit and four 0 bits hold the line low 25 ms, the rest high 25 ms.
    sendText(app, "\xF0");
    LogLine(app, "INITIALIZING ECU:  F0");
    loggedWait(app, 0.25);
    LogLine(app, "SETBAUD 10400");
    onPort(app, [](SerialPort& p) { p.setBaud(10400); });
    LogLine(app, "START COMMUNICATION REQUEST:  C1 33 F1 81 66");
    app.LastRequestHex = "C133F18166";
    sendText(app, kStartCommunication);
    loggedWait(app, 0.25);
    app.RawFrame.clear();
    std::string in;
    onPort(app, [&](SerialPort& p) { in = p.input(); });
    std::string text;
    for (char ch : in) {
        const std::string pair = ByteToHex(static_cast<unsigned char>(ch));
        text += pair;
        c.txtConnectingInput.setText(c.txtConnectingInput.text() + pair);
    }
    LogLine(app, "DATA RECEIVED:  " + text);
    if (text.size() < 19) return;
    // Past the echo of 0xF0 and of the request.
    FrmMain& m = app.frmMain();
    m.lblKeyword1.setText(std::string(FrameSlice(text, 21)));
    m.lblKeyword2.setText(std::string(FrameSlice(text, 23)));
    LogLine(app, "RECEIVED KEYWORD:  " + m.lblKeyword1.text() + " " + m.lblKeyword2.text());
    LogLine(app, "REQUESTING MODE 01 PID 00:  C2 33 F1 01 00 E7");
    app.LastRequestHex = "C233F10100E7";
    sendText(app, kKwpPid00);
    loggedWait(app, 0.25);
    KeshCheckKWP(app);
}

void KeshTimeOutTick(App& app) {
    app.frmConnecting().KeshTimeOut.stop();
    app.KeshConnect.HandshakePriority.reset();
    if (app.ConnectCancelled || app.frmConnecting().ConnectDone) return;
    if (app.ProtocolCode == "04" && app.KeshStart == 3) {
        KeshFastInit(app);
        return;
    }
    LogLine(app, "CONNECTING UNSUCCESSFUL (TIMEOUT)");
    if (app.ProtocolCode == "03" && app.KeshStart == 1) {
        KeshFastInit(app);
        return;
    }
    noCommunication(app);
}

ConnectOutcome KeshConnect(App& app) {
    FrmConnecting& c = app.frmConnecting();
    app.ProtocolCode.clear();
    app.KeshRequestMode2List = app.KeshRequestPid1C = false;
    app.RequestPid20 = app.RequestPid40 = false;
    app.KeshConnect = KeshConnectState{};
    c.txtConnectingInput.setText("");
    SerialPort& p = klinePort(app);
    if (p.portOpen()) p.setPortOpen(false);
    p.setCommPort(PortNumber(app.ConnectPort));
    p.setSettings("10400,n,8,1");
    p.setRThreshold(1);
    LogLine(app, "SET PORT:  " + app.ConnectPort);
    p.setPortOpen(true);  // SerialError 8002 / 8005 go to the session's trap
    LogLine(app, "OPEN PORT");
    bool armed = true;
    if (app.KeshStart == 3) {
        // The fast initialisation runs from the time-out's handler.
        app.ProtocolCode = "04";
        c.KeshTimeOut.setInterval(1);
        c.KeshTimeOut.start();
    } else if (app.KeshStart == 1 || app.KeshStart == 2) {
        armed = startFiveBaud(app);
    } else {
        return ConnectOutcome::Done;
    }
    if (armed) {
        PumpedWait(app.loop(), [&] { return app.ConnectCancelled || app.KeshConnect.Finished; });
    }
    app.KeshConnect.HandshakePriority.reset();
    if (app.ConnectCancelled) {
        c.KeshTimeOut.stop();
        onPort(app, [](SerialPort& port) { port.setPortOpen(false); });
    }
    return app.KeshConnect.Retry ? ConnectOutcome::Retry : ConnectOutcome::Done;
}

void InstallKesh(App& app) {
    app.frmMain().KeshMSComm->setOnComm([&app] { KeshOnComm(app); });
    app.frmConnecting().KeshTimeOut.setHandler([&app] { KeshTimeOutTick(app); });
    app.frmMain().KeshDelay.setHandler([&app] { KeshDelayTick(app); });
}

const char* KeshLogType(const App& app) {
    return app.OBDIIHardware == kTactrix ? "TACTRIXISO-9141" : "KESHISO-9141";
}

}  // namespace ketrel
