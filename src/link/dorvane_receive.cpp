#include "link/dorvane_receive.h"

#include <array>

#include "link/frame_dispatch.h"
#include "obd/bit_operations.h"
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

const SliceLayout& LayoutFor(FrameKey key) {
    switch (key.mode) {
        case 4:
            return kMode04;
        case 3:
        case 7:
            return kCodes;
        case 2:
            return key.pid == 0x00 ? kMode02Pid00 : key.pid == 0x02 ? kMode02Pid02 : kMode02;
        default:
            return kOther;
    }
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

void CutBytes(App& app, FrameKey key) {
    const SliceLayout& layout = LayoutFor(key);
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

void DORVANERECEIVE(App& app) {
    if (!app.Connecting && !app.PlayingLog) {
        app.frmMain().TimeOutConnect.restart();
        if (!app.Connected) return;
    }
    ClearCells(app);
    CutBytes(app, ReadFrameKey(app));
    DispatchFrame(app, ReceivePath::Dorvane);
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
