// The support lists and PID 1C of the count-byte connect, and the hand-over to the scan.
#include <array>
#include <functional>
#include <string>

#include "link/br3_connect.h"
#include "link/br3_connect_io.h"
#include "link/br3_request.h"
#include "link/conn_log.h"
#include "link/port_number.h"
#include "obd/bit_operations.h"
#include "obd/pid_catalogue.h"
#include "obd/value_decoders.h"

namespace ketrel {
namespace {

// One support-list or PID request of the connect, per protocol: the bytes and the log line.
struct ListRequest {
    std::string frame;
    std::string log;  // the trailing byte's two digits follow on J1850
};

std::string twoDigits(int n) {
    return (n < 10 ? "0" : "") + std::to_string(n);
}

ListRequest mode1Request(const App& app, int trailing) {
    const std::string& p = app.ProtocolCode;
    if (p == "01")
        return {Br3Frame(Br3Family::J1850, kBr3VpwHeader, {0x01, 0x00}, std::uint8_t(trailing)),
                "SENDING:  07 68 6A F1 01 00 17 " + twoDigits(trailing)};
    if (p == "02")
        return {Br3Frame(Br3Family::J1850, kBr3PwmHeader, {0x01, 0x00}, std::uint8_t(trailing)),
                "SENDING:  07 61 6A F1 01 00 16 " + twoDigits(trailing)};
    if (p == "03")
        return {Br3Frame(Br3Family::IsoKwp, kBr3IsoHeader, {0x01, 0x00}),
                "SENDING:  06 68 6A F1 01 00 C4"};
    return {Br3Frame(Br3Family::IsoKwp, kBr3KwpHeader, {0x01, 0x00}),
            "SENDING:  06 C2 33 F1 01 00 E7"};
}

ListRequest mode2Request(const App& app, int trailing) {
    const std::string& p = app.ProtocolCode;
    if (p == "01")
        return {Br3Frame(Br3Family::J1850, kBr3VpwHeader, {0x02, 0x00}, std::uint8_t(trailing)),
                "SENDING:  07 68 6A F1 02 00 C3 " + twoDigits(trailing)};
    if (p == "02")
        return {Br3Frame(Br3Family::J1850, kBr3PwmHeader, {0x02, 0x00}, std::uint8_t(trailing)),
                "SENDING:  07 61 6A F1 02 00 DE " + twoDigits(trailing)};
    if (p == "03")
        return {Br3Frame(Br3Family::IsoKwp, kBr3IsoHeader, {0x02, 0x00, 0x00}),
                "SENDING:  07 68 6A F1 02 00 00 C5"};
    // The KWP list request keeps the two-byte format byte C2.
    return {Br3Frame(Br3Family::IsoKwp, kBr3KwpHeader, {0x02, 0x00, 0x00}),
            "SENDING:  07 C2 33 F1 02 00 00 E8"};
}

ListRequest pid1CRequest(const App& app) {
    const std::string& p = app.ProtocolCode;
    if (p == "01")
        return {Br3Frame(Br3Family::J1850, kBr3VpwHeader, {0x01, 0x1C}),
                "SENDING:  07 68 6A F1 01 28 46 01"};
    if (p == "02")
        return {Br3Frame(Br3Family::J1850, kBr3PwmHeader, {0x01, 0x1C}),
                "SENDING:  07 61 6A F1 01 28 5Bh 01"};
    if (p == "03")
        return {Br3Frame(Br3Family::IsoKwp, kBr3IsoHeader, {0x01, 0x1C}),
                "SENDING:  06 68 6A F1 01 28 E0"};
    return {Br3Frame(Br3Family::IsoKwp, kBr3KwpHeader, {0x01, 0x1C}),
            "SENDING:  06 C2 33 F1 01 28 03"};
}

void sendListRequest(App& app, const ListRequest& r) {
    app.FrameOut = r.frame;
    Br3SendFrameOut(app);
    LogLine(app, r.log);
}

// Clears the answer field and the port, and starts counting seconds from 0.
void beginListWait(App& app) {
    app.frmConnecting().txtConnectingInput.setText("");
    Br3ClearBuffer(app);
    app.frmConnecting().ConnectTimeOut.start();
    app.ConnectSeconds = 0;
}

// Bit texts of the four support bytes at these columns into ByteBits(1..4).
void cutSupportBits(App& app, const std::array<int, 4>& columns) {
    for (std::size_t n = 1; n <= 4; ++n)
        app.ByteBits[n] = SliceByte(FrameSlice(app.RawFrame, columns[n - 1])).bits;
}

bool& probeFlagFor(App& app, const std::string& protocolCode) {
    Br3ConnectState& s = app.Br3Connect;
    if (protocolCode == "01") return s.VpwProbeDone;
    if (protocolCode == "02") return s.PwmProbeDone;
    if (protocolCode == "03") return s.IsoProbeDone;
    if (protocolCode == "04SLOW") return s.KwpSlowProbeDone;
    return s.KwpFastProbeDone;
}

// frmMain.BR3MSComm takes over the converter for the scan.
void openScanPort(App& app, bool writeSettings) {
    SerialPort& scan = *app.frmMain().BR3MSComm;
    if (scan.portOpen()) scan.setPortOpen(false);
    if (writeSettings) scan.setSettings("19200,n,8,1");
    scan.setCommPort(PortNumber(app.ConnectPort));
    scan.setPortOpen(true);
}

// Pumps until `answered` holds, ConnectSeconds reaches `seconds` or the user cancels; true
// when the answer came.
bool awaitAnswer(App& app, long seconds, const std::function<bool()>& answered) {
    bool came = false;
    Br3PumpUntil(app, [&] {
        if (app.ConnectCancelled) return true;
        if (answered()) {
            came = true;
            return true;
        }
        return app.ConnectSeconds >= seconds;
    });
    return came && !app.ConnectCancelled;
}

bool listAnswered(App& app) {
    return Br3ConnectInput(app).size() >= 10;
}

// On ISO and KWP a second module's answer stands behind the first when the text is long
// enough for two.
void noteSecondFrame(App& app, const std::string& text, std::size_t twoFrames) {
    if (Br3IsJ1850(app) || !app.SecondFrameConnect) return;
    app.Br3Connect.SecondFrameExpected = text.size() >= twoFrames;
    if (!app.Br3Connect.SecondFrameExpected) LogLine(app, "2ND FRAME DATA NOT DETECTED");
}

// A support list's four bytes from these columns through the support lookup.
void decodeList(App& app, const char* mode, const std::array<int, 4>& columns) {
    app.RxMode = mode;
    app.RxPID = "00";
    cutSupportBits(app, columns);
    LogLine(app, std::string("MODE ") + mode + " PID 00 LOOKUP IN PROCESS");
    DecodeSupportPID00(app);
}

void linkUp(App& app) {
    app.frmConnecting().ConnectDone = true;
    if (app.hooks.LinkUp) app.hooks.LinkUp();
}

// The request cycle of a protocol, the scan's first request.
void runCycleFor(App& app, const std::string& protocolCode) {
    BR3Request(app, Br3LineFor(protocolCode));
}

}  // namespace

void BR3ConnectMode1List(App& app) {
    FrmConnecting& c = app.frmConnecting();
    FrmMain& m = app.frmMain();
    Br3ConnectState& s = app.Br3Connect;
    int trailing = 1;
    std::array<int, 4> columns{11, 13, 15, 17};
    for (;;) {
        beginListWait(app);
        if (app.BR3SetDelay) {
            const bool j = Br3IsJ1850(app);
            m.BR3Delay.setInterval(j ? 150 : 225);
            app.BR3Delay = j ? "150" : "225";
        }
        sendListRequest(app, mode1Request(app, trailing));
        c.BR3ConnectDelay.setInterval(275);
        c.BR3ConnectDelay.start();
        LogLine(app, "DELAY 275 mS");
        if (!awaitAnswer(app, 2, [&] { return listAnswered(app); })) {
            if (app.ConnectCancelled) return;
            LogLine(app, "MODE 01 PID 00 NOT RECEIVED");
            app.ConnectSeconds = 0;
            probeFlagFor(app, app.ProtocolCode) = true;
            return;
        }
        if (app.ProtocolCode == "04SLOW") app.ProtocolCode = "04";
        const bool j1850 = Br3IsJ1850(app);
        const std::string text = Br3ConnectInput(app);
        noteSecondFrame(app, text, 30);
        c.BR3ConnectDelay.stop();
        c.ConnectTimeOut.stop();
        s.ConnectEnded = true;
        app.Connected = true;
        app.RawFrame = text;
        m.lblECMAddress.setText(std::string(FrameSlice(text, j1850 ? 7 : 5)));
        if (!j1850 && text.size() >= 30) {
            m.lblECMAddress2.setText(std::string(FrameSlice(text, 25)));
        }
        decodeList(app, "01", j1850 ? std::array<int, 4>{13, 15, 17, 19} : columns);
        if (!j1850 && s.SecondFrameExpected) {
            // The second module's answer is already in the field.
            s.SecondFrameExpected = false;
            columns = {31, 33, 35, 37};
            LogLine(app, "PROCESSING 2ND FRAME OF MODE 01 PID 00 ");
            decodeList(app, "01", columns);
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
    FrmConnecting& c = app.frmConnecting();
    Br3ConnectState& s = app.Br3Connect;
    int trailing = 1;
    for (;;) {
        beginListWait(app);
        sendListRequest(app, mode2Request(app, trailing));
        c.BR3ConnectDelay.start();
        LogLine(app, "DELAY 275 mS");
        if (!awaitAnswer(app, 2, [&] { return listAnswered(app); })) {
            if (app.ConnectCancelled) return;
            // A vehicle without a freeze-frame list connects all the same.
            LogLine(app, "MODE 02 PID 00 NOT RECEIVED");
            c.ConnectTimeOut.stop();
            app.Mode2ListMissing = true;
            BR3ConnectPid1C(app);
            return;
        }
        const bool j1850 = Br3IsJ1850(app);
        const std::string text = Br3ConnectInput(app);
        noteSecondFrame(app, text, 32);
        c.BR3ConnectDelay.stop();
        c.ConnectTimeOut.stop();
        app.RawFrame = text;
        const std::array<int, 4> columns =
            j1850 ? std::array<int, 4>{15, 17, 19, 21} : std::array<int, 4>{13, 15, 17, 19};
        decodeList(app, "02", columns);
        if (!j1850 && s.SecondFrameExpected) {
            // The columns stay: the second pass reads the same bytes again.
            s.SecondFrameExpected = false;
            LogLine(app, "PROCESSING 2ND FRAME OF MODE 02 PID 00 ");
            decodeList(app, "02", columns);
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
    FrmConnecting& c = app.frmConnecting();
    beginListWait(app);
    sendListRequest(app, pid1CRequest(app));
    c.BR3ConnectDelay.start();
    LogLine(app, "DELAY 275 mS");
    // A vehicle that doesn't offer the PID isn't waited for.
    const bool answered = awaitAnswer(
        app, 1, [&] { return Br3ConnectInput(app).size() >= 13 || !app.Mode1Supported[0x1C]; });
    if (app.ConnectCancelled) return;
    if (!answered) {
        LogLine(app, "MODE 01 PID 28 NOT RECEIVED");
        c.ConnectTimeOut.stop();
        linkUp(app);
        openScanPort(app, false);
        // This path polls J1850 links with the PWM routine, VPW included.
        runCycleFor(app, Br3IsJ1850(app) ? "02" : app.ProtocolCode);
        return;
    }
    c.BR3ConnectDelay.stop();
    c.ConnectTimeOut.stop();
    app.RawFrame = Br3ConnectInput(app);
    app.RxMode = "01";
    app.RxPID = "1C";
    bool bad = false;
    std::string_view slice = FrameSlice(app.RawFrame, Br3IsJ1850(app) ? 13 : 11);
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

}  // namespace ketrel
