#pragma once
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>

#include "link/br3_frames.h"
#include "link/br3_request.h"

namespace ketrel {

class App;

// The line the oxygen-sensor tests take over from the scan chain: the count-byte converter on
// any of its four protocols, or a raw K-line cable on ISO 9141 or KWP 2000. Both sequences of
// the tests are written once over this.
struct Mode5Line {
    bool kline = false;  // a raw K-line cable: no count byte, and our own bytes come back
    bool j1850 = false;  // VPW or PWM: CRC, a trailing byte, the converter's length byte ahead
    std::string protocol;
};

// The line of the session at hand, from OBDIIHardware and ProtocolCode.
Mode5Line Mode5LineOf(const App& app);

// The 1-based column of a reply field whose ISO column is given: a J1850 reply through the
// count-byte converter stands two characters further on, behind the converter's length byte.
std::size_t ReplyColumn(const Mode5Line& line, std::size_t isoColumn);

// A request with these data bytes, the service byte first. On the count-byte converter: count
// byte, `wire` header, the data, the check over `check` and the data and, on J1850, the
// trailing 01. On a K-line the bare vehicle frame on `check`.
std::string Mode5Frame(const Mode5Line& line, const Br3Header& wire, const Br3Header& check,
                       std::initializer_list<std::uint8_t> data);

// Clears the input of the line's scanning port (BR3MSComm or KeshMSComm).
void ClearSweepInput(App& app, const Mode5Line& line);
// Sends a frame on the line's scanning port; on a K-line LastRequestHex keeps its hex text for
// the echo strip. False when the port failed.
bool SendSweepFrame(App& app, const Mode5Line& line, const std::string& frame);
// What has arrived on the scanning port as hex text, our own echo cut on a K-line against
// LastRequestHex. `raw`, when given, takes the text before the cut.
std::string ReadSweepReply(App& app, const Mode5Line& line, std::string* raw = nullptr);

// The byte at a 1-based column of a reply as decimal text, through HexTextToByte: a missing
// byte reads 0.
std::string ReplyByteText(const std::string& reply, std::size_t column);

// Gives the line back to the scan chain: the request routine of `br3Line` on the count-byte
// converter, that of ISO 9141 or KWP 2000 on a K-line cable.
void RestartScanChain(App& app, const Mode5Line& line, Br3Line br3Line);

}  // namespace ketrel
