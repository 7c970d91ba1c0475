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

}  // namespace ketrel
