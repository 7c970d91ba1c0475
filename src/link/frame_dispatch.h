#pragma once
#include <cstddef>
#include <string>

namespace ketrel {

class App;

// The receive paths differ in a few routing rules; everything else about a frame's way to its
// decoder is the same for every link device.
enum class ReceivePath {
    Dorvane,  // text converter: length tests, each support list taken once, no PIDs above 20
    Br3,      // count-byte converter: no length tests, PIDs 21 to 4E, the watchdog stops
    Kline,    // raw K-line cables: as the count-byte converter
};

// The mode and PID of the frame at hand as numbers, read once from RxMode and RxPID. A mode
// is the low digit of the answer byte ("01" -> 1); -1 where the text is not hex.
struct FrameKey {
    int mode = -1;
    int pid = -1;
};
FrameKey ReadFrameKey(const App& app);

// Where a frame goes, first match wins.
enum class FrameRoute {
    None,           // consumed without effect
    SupportList,    // Mode 01 or 02 PID 00
    TroubleCodes,   // Mode 03
    PendingCodes,   // Mode 07
    ClearReply,     // Mode 04
    MonitorStatus,  // Mode 01 PID 01
    SupportPID20,   // Mode 01 PID 20
    SupportPID40,   // Mode 01 PID 40
    FreezeCode,     // Mode 02 PID 02
    LiveValue,      // Mode 01 PIDs 03 to 1F, and 21 to 4E where the path takes them
    FreezeValue,    // Mode 02 PIDs 03 to 13
};

// The route of a frame of `length` characters with this key on this path. Reads
// Mode1ListRead and Mode2ListRead for the text converter's once-only support lists.
FrameRoute RouteFrame(const App& app, FrameKey key, std::size_t length, ReceivePath path);

// Runs the decoder of the frame in RawFrame, RxMode and RxPID, whose cells are already cut.
// On the count-byte and K-line paths a frame of modes 01, 02, 03, 04 and 07 first stops the
// watchdog (the next request starts it again).
void DispatchFrame(App& app, ReceivePath path);

// The branch for the replies the test sweeps read themselves at the end of their own waits,
// outside the scan chain: RxMode takes the service digit at the 1-based `serviceColumn` of
// the reply, a "0" in front, and the key of the reply is read from it.
FrameKey KeySweepReply(App& app, const std::string& reply, std::size_t serviceColumn);

// What every receive path does with a frame it has read from the port: the debug list LogData
// takes it, and while recording it goes to lstRecordData (200 rows) and the log being written.
void NoteReceivedFrame(App& app, const std::string& frame);
// LogData and Text2 are cleared once LogData holds 701 rows.
void CapLogData(App& app);

// The branch of the test sweeps, which read a reply a fixed time after their own request and
// parse it by columns instead of routing it by mode: all that has arrived on the path's
// scanning port as hex text. On the K-line, Text2 takes the raw read and the echo is cut
// against LastRequestHex. A port that fails reads as silence.
std::string ReadSweepReply(App& app, ReceivePath path);

}  // namespace ketrel
