#pragma once
#include <functional>
#include <string>

#include "link/br3_frames.h"
#include "link/serial_timing.h"
#include "platform/serial_port.h"
#include "state/app.h"

namespace ketrel {

// What the steps of the count-byte connect share: its port, its answer field and its waits.

inline constexpr Br3Header kBr3VpwHeader{0x68, 0x6A, 0xF1};
inline constexpr Br3Header kBr3PwmHeader{0x61, 0x6A, 0xF1};
inline constexpr Br3Header kBr3IsoHeader{0x68, 0x6A, 0xF1};
inline constexpr Br3Header kBr3KwpHeader{0xC2, 0x33, 0xF1};
inline constexpr Br3Header kBr3KwpHeader3{0xC3, 0x33, 0xF1};

// True on the J1850 protocols, whose frames carry a trailing byte.
inline bool Br3IsJ1850(const App& app) {
    return app.ProtocolCode == "01" || app.ProtocolCode == "02";
}

// The connecting port, BR3Connecting.
inline SerialPort& Br3ConnectingPort(App& app) {
    return *app.frmConnecting().BR3Connecting;
}

// The converter's answer as hex text, as the connecting timer last read it.
inline std::string Br3ConnectInput(App& app) {
    return app.frmConnecting().txtConnectingInput.text();
}

// Sends FrameOut. A port that fails mid-connect loses the bytes; the time limits then end
// the connect.
inline void Br3SendFrameOut(App& app) {
    try {
        if (Br3ConnectingPort(app).portOpen()) Br3ConnectingPort(app).output(app.FrameOut);
    } catch (const SerialError&) {
    }
}

// Throws away what the port has received and not yet read.
inline void Br3ClearBuffer(App& app) {
    try {
        if (Br3ConnectingPort(app).portOpen()) Br3ConnectingPort(app).clearInput();
    } catch (const SerialError&) {
    }
}

// A pumped wait: timers, the cancel button and the port's reads run until `done` holds.
inline void Br3PumpUntil(App& app, const std::function<bool()>& done) {
    PumpedWait(app.loop(), done);
}

}  // namespace ketrel
