#include "link/sweep_request.h"

#include "platform/serial_port.h"
#include "state/app.h"

namespace ketrel {
namespace {

SerialPort* portOf(App& app, const SweepLine& line) {
    FrmMain& m = app.frmMain();
    return (line.path == ReceivePath::Kline ? m.KeshMSComm : m.BR3MSComm).get();
}

}  // namespace

std::optional<SweepLine> SweepLineFor(const App& app) {
    const std::string& code = app.ProtocolCode;
    const bool kline = app.OBDIIHardware == kKesh || app.OBDIIHardware == kTactrix;
    if (!kline && app.OBDIIHardware != kBr3) return std::nullopt;
    SweepLine line;
    line.path = kline ? ReceivePath::Kline : ReceivePath::Br3;
    line.countByte = !kline;
    if (code == "03") {
        line.header = {0x68, 0x6A, 0xF1};
    } else if (code == "04" || code == "04SLOW") {
        line.header = {0xC2, 0x33, 0xF1};
    } else if (!kline && (code == "01" || code == "02")) {
        line.family = Br3Family::J1850;
        line.header = {code == "01" ? std::uint8_t(0x68) : std::uint8_t(0x61), 0x6A, 0xF1};
    } else {
        return std::nullopt;
    }
    return line;
}

std::string SweepFrame(const SweepLine& line, std::initializer_list<std::uint8_t> data,
                       std::uint8_t trailing) {
    if (!line.countByte) return KlineFrame(line.header, data);
    return Br3Frame(line.family, line.header, data, trailing);
}

void SendSweepFrame(App& app, const SweepLine& line, const std::string& frame) {
    app.FrameOut = frame;
    SerialPort* port = portOf(app, line);
    if (!port) return;
    try {
        port->output(frame);
    } catch (const SerialError&) {
        // a port that failed is silence to the sweep: no reply comes
    }
}

void ClearSweepInput(App& app, const SweepLine& line) {
    SerialPort* port = portOf(app, line);
    if (!port) return;
    try {
        port->clearInput();
    } catch (const SerialError&) {
    }
}

}  // namespace ketrel
