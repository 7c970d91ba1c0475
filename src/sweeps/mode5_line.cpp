#include "sweeps/mode5_line.h"

#include <stdexcept>

#include "link/kesh_receive.h"
#include "link/kesh_request.h"
#include "link/serial_timing.h"
#include "obd/bit_operations.h"
#include "platform/serial_port.h"
#include "state/app.h"

namespace ketrel {

namespace {

SerialPort& portOf(App& app, const Mode5Line& line) {
    return line.kline ? *app.frmMain().KeshMSComm : *app.frmMain().BR3MSComm;
}

}  // namespace

Mode5Line Mode5LineOf(const App& app) {
    Mode5Line line;
    line.kline = app.OBDIIHardware == kKesh || app.OBDIIHardware == kTactrix;
    line.protocol = app.ProtocolCode;
    line.j1850 = !line.kline && (line.protocol == "01" || line.protocol == "02");
    return line;
}

std::size_t ReplyColumn(const Mode5Line& line, std::size_t isoColumn) {
    return line.j1850 ? isoColumn + 2 : isoColumn;
}

std::string Mode5Frame(const Mode5Line& line, const Br3Header& wire, const Br3Header& check,
                       std::initializer_list<std::uint8_t> data) {
    if (line.kline) return KlineFrame(check, data);
    return Br3Frame(line.j1850 ? Br3Family::J1850 : Br3Family::IsoKwp, wire, check, data);
}

void ClearSweepInput(App& app, const Mode5Line& line) {
    try {
        portOf(app, line).clearInput();
    } catch (const SerialError&) {
    }
}

bool SendSweepFrame(App& app, const Mode5Line& line, const std::string& frame) {
    app.FrameOut = frame;
    if (line.kline) app.LastRequestHex = BytesToHex(frame);
    try {
        portOf(app, line).output(frame);
        return true;
    } catch (const SerialError&) {
        return false;
    }
}

std::string ReadSweepReply(App& app, const Mode5Line& line, std::string* raw) {
    std::string bytes;
    try {
        bytes = portOf(app, line).input();
    } catch (const SerialError&) {
        bytes.clear();  // a failed port reads as silence
    }
    const std::string hex = BytesToHex(bytes);
    if (raw) *raw = hex;
    return line.kline ? KeshStripEcho(hex, app.LastRequestHex) : hex;
}

std::string ReplyByteText(const std::string& reply, std::size_t column) {
    bool bad = false;  // looked at by nobody: a byte that is not there reads 0
    try {
        return std::to_string(HexTextToByte(FrameSlice(reply, int(column)), bad));
    } catch (const std::overflow_error&) {
        return "0";
    }
}

void RestartScanChain(App& app, const Mode5Line& line, Br3Line br3Line) {
    if (line.kline) {
        KeshRequestNext(app);
    } else {
        BR3Request(app, br3Line);
    }
}

}  // namespace ketrel
