#pragma once
#include <cstddef>
#include <string>

namespace ketrel {

class App;

// The most text a frame of this converter is gathered to. Real frames are under 100
// characters; a converter that sends rubbish with no frame start must not grow the buffer
// (and every copy of it) without end. What goes past it is dropped.
inline constexpr std::size_t kDorvaneFrameCap = 1024;

// The frame text gathered so far with the next chunk added, cut at kDorvaneFrameCap.
std::string GatherDorvaneFrame(const std::string& sofar, const std::string& chunk);

// Takes one complete DORVANE frame (RawFrame, RxMode and RxPID already set): restarts the
// watchdog, cuts the data bytes into ByteValue, ByteHex and ByteBits by the converter's column
// positions, and hands the frame to the decoder of its mode and PID.
void DORVANERECEIVE(App& app);

// Sets RawFrame, and RxMode and RxPID as the converter's frames carry them: RxMode is the
// ninth character upper-cased with "0" before it, RxPID the tenth and eleventh upper-cased.
void SetDorvaneFrame(App& app, const std::string& frame);

// Where a DORVANE frame goes, first match wins.
enum class DorvaneRoute {
    None,           // consumed without effect
    SupportList,    // Mode 01 or 02 PID 00, the first time on this connection
    TroubleCodes,   // Mode 03, 20 characters or more
    PendingCodes,   // Mode 07, 20 characters or more
    ClearReply,     // Mode 04, any length
    MonitorStatus,  // Mode 01 PID 01
    SupportPID20,   // Mode 01 PID 20
    FreezeCode,     // Mode 02 PID 02, 16 characters or more
    LiveValue,      // Mode 01 PIDs 03 to 1F
    FreezeValue,    // Mode 02 PIDs 03 to 13
};

// The route of the frame in RawFrame, RxMode and RxPID.
DorvaneRoute RouteDorvaneFrame(const App& app);

}  // namespace ketrel
