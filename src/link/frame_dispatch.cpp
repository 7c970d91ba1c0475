#include "link/frame_dispatch.h"

#include "link/kesh_receive.h"
#include "link/serial_timing.h"
#include "platform/serial_port.h"

#include "obd/monitor_status.h"
#include "obd/pid_catalogue.h"
#include "obd/trouble_codes.h"
#include "obd/value_decoders.h"
#include "state/app.h"

namespace ketrel {
namespace {

constexpr int kLogDataCap = 701;
constexpr int kRecordListCap = 200;

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

bool TakesExtended(ReceivePath path) {
    return path != ReceivePath::Dorvane;
}

FrameRoute RouteMode01(int pid, ReceivePath path) {
    if (pid == 0x01) return FrameRoute::MonitorStatus;
    if (pid == 0x20) return FrameRoute::SupportPID20;
    if (pid >= 0x03 && pid <= 0x1F) return FrameRoute::LiveValue;
    if (!TakesExtended(path)) return FrameRoute::None;
    if (pid == 0x40) return FrameRoute::SupportPID40;
    if (pid >= 0x21 && pid <= 0x4E) return FrameRoute::LiveValue;
    return FrameRoute::None;
}

}  // namespace

FrameKey ReadFrameKey(const App& app) {
    FrameKey key;
    const std::string& mode = app.RxMode;
    if (mode.size() == 2 && mode[0] == '0') key.mode = HexDigit(mode[1]);
    const std::string& pid = app.RxPID;
    if (pid.size() == 2) {
        int hi = HexDigit(pid[0]), lo = HexDigit(pid[1]);
        if (hi >= 0 && lo >= 0) key.pid = hi * 16 + lo;
    }
    return key;
}

FrameRoute RouteFrame(const App& app, FrameKey key, std::size_t length, ReceivePath path) {
    const bool dorvane = path == ReceivePath::Dorvane;
    switch (key.mode) {
        case 1:
        case 2:
            if (key.pid == 0x00) {
                bool read = key.mode == 1 ? app.Mode1ListRead : app.Mode2ListRead;
                return dorvane && read ? FrameRoute::None : FrameRoute::SupportList;
            }
            if (key.mode == 1) return RouteMode01(key.pid, path);
            if (key.pid == 0x02) {
                return !dorvane || length >= 16 ? FrameRoute::FreezeCode : FrameRoute::None;
            }
            if (key.pid >= 0x03 && key.pid <= 0x13) return FrameRoute::FreezeValue;
            return FrameRoute::None;
        case 3:
            return !dorvane || length >= 20 ? FrameRoute::TroubleCodes : FrameRoute::None;
        case 7:
            return !dorvane || length >= 20 ? FrameRoute::PendingCodes : FrameRoute::None;
        case 4:
            return FrameRoute::ClearReply;
        default:
            return FrameRoute::None;
    }
}

void DispatchFrame(App& app, ReceivePath path) {
    FrameKey key = ReadFrameKey(app);
    if (path != ReceivePath::Dorvane) {
        switch (key.mode) {
            case 1:
            case 2:
            case 3:
            case 4:
            case 7:
                app.frmMain().TimeOutConnect.stop();
                break;
            default:
                return;
        }
    }
    switch (RouteFrame(app, key, app.RawFrame.size(), path)) {
        case FrameRoute::None:
            break;
        case FrameRoute::SupportList:
            DecodeSupportPID00(app);
            app.PidDiscoveryDone = true;
            (key.mode == 1 ? app.Mode1ListRead : app.Mode2ListRead) = true;
            break;
        case FrameRoute::TroubleCodes:
            DecodeTroubleCodes(app);
            break;
        case FrameRoute::PendingCodes:
            DecodePendingCodes(app);
            break;
        case FrameRoute::ClearReply:
            ApplyClearReply(app);
            break;
        case FrameRoute::MonitorStatus:
            DecodeMonitorStatus(app);
            break;
        case FrameRoute::SupportPID20:
            DecodeSupportPID20(app);
            break;
        case FrameRoute::SupportPID40:
            DecodeSupportPID40(app);
            break;
        case FrameRoute::FreezeCode:
            DecodeFreezeCode(app);
            break;
        case FrameRoute::LiveValue:
        case FrameRoute::FreezeValue:
            if (PidDecoder decode = ValueDecoder(key.pid)) decode(app);
            break;
    }
}

FrameKey KeySweepReply(App& app, const std::string& reply, std::size_t serviceColumn) {
    app.RxMode = "0";
    if (serviceColumn >= 1 && serviceColumn <= reply.size()) app.RxMode += reply[serviceColumn - 1];
    return ReadFrameKey(app);
}

void NoteReceivedFrame(App& app, const std::string& frame) {
    FrmMain& m = app.frmMain();
    m.LogData.addItem(frame);
    if (!app.Recording) return;
    if (m.lstRecordData.count() >= kRecordListCap) {
        m.lstRecordData.clear();
        app.RecordIndex = 0;
    }
    m.lstRecordData.addItem(frame);
    if (app.hooks.RecordFrame && app.RecordIndex < m.lstRecordData.count()) {
        app.hooks.RecordFrame(m.lstRecordData.item(app.RecordIndex));
        if (!app.Recording) return;  // the write failed and ended the recording: not counted
    }
    app.RecordIndex++;
    app.RecordCount++;
}

void CapLogData(App& app) {
    FrmMain& m = app.frmMain();
    if (m.LogData.count() < kLogDataCap) return;
    m.LogData.clear();
    m.Text2.setText("");
}

std::string ReadSweepReply(App& app, ReceivePath path) {
    FrmMain& m = app.frmMain();
    const bool kline = path == ReceivePath::Kline;
    SerialPort* port = (kline ? m.KeshMSComm : m.BR3MSComm).get();
    std::string bytes;
    try {
        if (port) bytes = port->input();
    } catch (const SerialError&) {
        bytes.clear();
    }
    const std::string raw = BytesToHex(bytes);
    if (!kline) return raw;
    m.Text2.setText(raw);
    return KeshStripEcho(raw, app.LastRequestHex);
}

}  // namespace ketrel
