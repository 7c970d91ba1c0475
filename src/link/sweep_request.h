#pragma once
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>

#include "link/br3_frames.h"
#include "link/frame_dispatch.h"

namespace ketrel {

class App;
class SerialPort;

// How the request of a test sweep travels on the link device in use. The count-byte converter
// takes a count byte first and, on J1850, a trailing byte that picks the answer; the K-line
// cables put the vehicle frame on the wire bare and hear every byte of it again. One routine
// sends for both; the row holds what differs.
struct SweepLine {
    ReceivePath path = ReceivePath::Br3;  // Br3 or Kline: also how the reply is read
    Br3Family family = Br3Family::IsoKwp;
    Br3Header header{};  // for a two-data-byte request
    bool countByte = true;
};

// The line of the converter OBDIIHardware names on ProtocolCode; none for the text converter
// or a protocol the device does not sweep on.
std::optional<SweepLine> SweepLineFor(const App& app);

// The request as bytes for the wire: header, data, check, with the count byte and the J1850
// trailing byte where the line has them.
std::string SweepFrame(const SweepLine& line, std::initializer_list<std::uint8_t> data,
                       std::uint8_t trailing = 1);

// Writes a request on the line's scanning port; a port that fails is passed over, as the
// sweeps pass over every error.
void SendSweepFrame(App& app, const SweepLine& line, const std::string& frame);
// Empties the scanning port's input before a sweep begins.
void ClearSweepInput(App& app, const SweepLine& line);

}  // namespace ketrel
