#pragma once
#include <array>
#include <optional>
#include <stdexcept>
#include <string>

#include "obd/bit_operations.h"
#include "state/app.h"

namespace ketrel::test {

// Byte cells of a reply as a receive path leaves them: nullopt is a byte the reply lacked.
using Bytes = std::array<std::optional<int>, 4>;
inline constexpr std::nullopt_t E = std::nullopt;

// Unit settings of a case.
struct Units {
    const char* temp = "F";
    const char* speed = "MPH";
    const char* pressure = "PSI";
};

// Fills RxMode, RxPID and the cells of bytes 1 to 4 (value and bit text), as the BR3 and
// K-line paths can leave them, absent bytes included.
inline void SetReply(App& app, const std::string& mode, int pid, const Bytes& bytes) {
    app.RxMode = mode;
    app.RxPID = ByteToHexText(pid);
    for (std::size_t n = 1; n <= 4; ++n) {
        const std::optional<int>& b = bytes[n - 1];
        app.ByteValue[n] = b;
        app.ByteBits[n] = b ? SliceByte(ByteToHexText(*b)).bits : "";
        app.ByteHex[n] = b ? ByteToHexText(*b) : "";
    }
}

inline void SetUnits(App& app, const Units& u) {
    app.Temp = u.temp;
    app.Speed = u.speed;
    app.Pressure = u.pressure;
}

// A value field by name: "lblCoolant" on the main screen, "x.lblBaro" on the extended one.
inline Field& ValueField(App& app, const std::string& name) {
    Screen& screen = name.rfind("x.", 0) == 0 ? static_cast<Screen&>(app.frmNewPids())
                                              : static_cast<Screen&>(app.frmMain());
    std::string bare = name.rfind("x.", 0) == 0 ? name.substr(2) : name;
    Control* c = screen.findControl(bare);
    if (!c || c->kind() != ControlKind::Field) throw std::runtime_error("no field " + name);
    return static_cast<Field&>(*c);
}

}  // namespace ketrel::test
