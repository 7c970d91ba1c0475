#include "link/dorvane_receive.h"

#include <array>

#include "obd/bit_operations.h"
#include "obd/monitor_status.h"
#include "obd/pid_catalogue.h"
#include "obd/trouble_codes.h"
#include "obd/value_decoders.h"
#include "state/app.h"

namespace ketrel {
namespace {

// Where each data byte starts in the frame (1-based column; 0: not cut), and whether its hex
// text is kept in ByteHex.
struct SliceLayout {
    std::array<int, 6> start;
    std::array<bool, 6> keepHex;
};

// Mode 04 reads the mode byte itself as byte 1: that is how a clear answer is recognised.
constexpr SliceLayout kMode04{{8, 14, 16, 18, 0, 0}, {true, false, false, false, false, false}};
constexpr SliceLayout kCodes{{10, 12, 14, 16, 18, 20}, {true, true, true, true, true, true}};
constexpr SliceLayout kMode02Pid00{{14, 16, 18, 20, 0, 0}, {}};
// Freeze-frame replies skip the frame number at 12; byte 3 reads the same columns as byte 2.
constexpr SliceLayout kMode02Pid02{{14, 16, 16, 18, 0, 0},
                                   {true, true, false, false, false, false}};
constexpr SliceLayout kMode02{{14, 16, 16, 18, 0, 0}, {}};
constexpr SliceLayout kOther{{12, 14, 16, 18, 0, 0}, {}};

const SliceLayout& LayoutFor(const App& app) {
    if (app.RxMode == "04") return kMode04;
    if (app.RxMode == "03" || app.RxMode == "07") return kCodes;
    if (app.RxMode == "02") {
        if (app.RxPID == "00") return kMode02Pid00;
        if (app.RxPID == "02") return kMode02Pid02;
        return kMode02;
    }
    return kOther;
}

// The PID of RxPID when it is two upper-case hex digits, else -1.
int PidNumber(const std::string& pid) {
    if (pid.size() != 2) return -1;
    int value = 0;
    for (char c : pid) {
        int d = (c >= '0' && c <= '9') ? c - '0' : (c >= 'A' && c <= 'F') ? c - 'A' + 10 : -1;
        if (d < 0) return -1;
        value = value * 16 + d;
    }
    return value;
}

void ClearCells(App& app) {
    for (std::size_t n = 1; n <= 18; ++n) {
        app.ByteBits[n].clear();
        app.ByteHex[n].clear();
    }
    // ByteValue(5) belongs to the other converters' paths and is left as it is.
    for (std::size_t n = 1; n <= 4; ++n)
        app.ByteValue[n].reset();
}

void CutBytes(App& app) {
    const SliceLayout& layout = LayoutFor(app);
    for (std::size_t i = 0; i < 6; ++i) {
        if (layout.start[i] == 0) continue;
        std::size_t n = i + 1;
        SlicedByte b = SliceByte(FrameSlice(app.RawFrame, layout.start[i]));
        if (layout.keepHex[i]) app.ByteHex[n] = b.hex;
        if (n <= 4) app.ByteValue[n] = b.value;
        app.ByteBits[n] = std::move(b.bits);
    }
}

}  // namespace

DorvaneRoute RouteDorvaneFrame(const App& app) {
    const std::string& mode = app.RxMode;
    std::size_t length = app.RawFrame.size();
    if (mode == "01" && app.RxPID == "00")
        return app.Mode1ListRead ? DorvaneRoute::None : DorvaneRoute::SupportList;
    if (mode == "02" && app.RxPID == "00")
        return app.Mode2ListRead ? DorvaneRoute::None : DorvaneRoute::SupportList;
    if (mode == "03") return length >= 20 ? DorvaneRoute::TroubleCodes : DorvaneRoute::None;
    if (mode == "07") return length >= 20 ? DorvaneRoute::PendingCodes : DorvaneRoute::None;
    if (mode == "04") return DorvaneRoute::ClearReply;
    int pid = PidNumber(app.RxPID);
    if (mode == "01") {
        if (pid == 0x01) return DorvaneRoute::MonitorStatus;
        if (pid == 0x20) return DorvaneRoute::SupportPID20;
        if (pid >= 0x03 && pid <= 0x1F) return DorvaneRoute::LiveValue;
        return DorvaneRoute::None;
    }
    if (mode == "02") {
        if (pid == 0x02) return length >= 16 ? DorvaneRoute::FreezeCode : DorvaneRoute::None;
        if (pid >= 0x03 && pid <= 0x13) return DorvaneRoute::FreezeValue;
    }
    return DorvaneRoute::None;
}

void DORVANERECEIVE(App& app) {
    if (!app.Connecting && !app.PlayingLog) {
        app.frmMain().TimeOutConnect.restart();
        if (!app.Connected) return;
    }
    ClearCells(app);
    CutBytes(app);
    switch (RouteDorvaneFrame(app)) {
        case DorvaneRoute::None:
            break;
        case DorvaneRoute::SupportList:
            DecodeSupportPID00(app);
            app.PidDiscoveryDone = true;
            (app.RxMode == "01" ? app.Mode1ListRead : app.Mode2ListRead) = true;
            break;
        case DorvaneRoute::TroubleCodes:
            DecodeTroubleCodes(app);
            break;
        case DorvaneRoute::PendingCodes:
            DecodePendingCodes(app);
            break;
        case DorvaneRoute::ClearReply:
            ApplyClearReply(app);
            break;
        case DorvaneRoute::MonitorStatus:
            DecodeMonitorStatus(app);
            break;
        case DorvaneRoute::SupportPID20:
            DecodeSupportPID20(app);
            break;
        case DorvaneRoute::FreezeCode:
            DecodeFreezeCode(app);
            break;
        case DorvaneRoute::LiveValue:
        case DorvaneRoute::FreezeValue:
            MainValueDecoder(PidNumber(app.RxPID))(app);
            break;
    }
}

std::string GatherDorvaneFrame(const std::string& sofar, const std::string& chunk) {
    if (sofar.size() >= kDorvaneFrameCap) return sofar;
    return sofar + chunk.substr(0, kDorvaneFrameCap - sofar.size());
}

void SetDorvaneFrame(App& app, const std::string& frame) {
    auto upper = [](char c) { return c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c; };
    app.RawFrame = frame;
    app.RxMode.clear();
    if (frame.size() >= 9) {
        app.RxMode.push_back('0');
        app.RxMode.push_back(upper(frame[8]));
    }
    app.RxPID.clear();
    for (std::size_t i = 9; i < 11 && i < frame.size(); ++i)
        app.RxPID.push_back(upper(frame[i]));
}

}  // namespace ketrel
