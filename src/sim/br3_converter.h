#pragma once
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "sim/sim_device.h"
#include "sim/sim_vehicle.h"

namespace ketrel::sim {

// Times of the count-byte converter and the vehicle behind it, in milliseconds.
struct Br3Timing {
    int wakeMs = 4;         // from the space (0x20) to its answer
    int startMs = 20;       // a J1850 start command to its answer
    int slowInitMs = 2200;  // 5-baud wake-up: the address at 5 baud (2 s), sync, key bytes
    int fastInitMs = 70;    // fast initialisation and StartCommunication to the answer
    int j1850Ms = 30;       // a J1850 request to the module's message, handed over whole
    int p2Ms = 35;          // K-line: from a request, or from a message, to the next message
    int frameGapMs = 100;   // a pause this long inside a frame throws the part away
    bool kLineTime = true;  // K-line bytes come one by one at 10400 baud, about 1 ms each
    bool lineTime = true;   // what it sends takes its time at 19200 baud on the host line

    // A converter and vehicle that answer at once: no wake-up time, no wait for the vehicle
    // and no time on either line. For measuring how fast the program itself turns a frame
    // round.
    static Br3Timing Fast() {
        Br3Timing t;
        t.wakeMs = 0;
        t.startMs = 0;
        t.slowInitMs = 0;
        t.fastInitMs = 0;
        t.j1850Ms = 0;
        t.p2Ms = 0;
        t.kLineTime = false;
        t.lineTime = false;
        return t;
    }
};

// The count-byte converter at 19200 baud, as the program meets it.
//
// Asleep after the port opens, it wakes on a single space (0x20) and answers 01 FF. Awake, it
// takes commands, a first byte 0x40 + n followed by n bytes: 41 00 starts J1850 VPW (answer
// 02 00), 41 01 J1850 PWM (02 01), 42 02 <address> a 5-baud wake-up of the K-line (02 and the
// two key bytes, or 82 when nothing woke), 46 03 <message> a fast initialisation with
// StartCommunication (02 F1 <module> C1 and the key bytes). A start command the vehicle
// does not answer gets no answer (the wake-up its 82), and leaves no protocol running.
// Once a protocol runs it takes frames, a count byte n then n bytes: the header (passed on
// as it is), the mode and its parameters, the check byte (never verified) and, on J1850, a
// trailing byte of its own. On J1850 it hands back one byte of its own (the message's
// length) and the one message the trailing byte picks (1 the first, 2 the second, ...). On
// the K-line it passes on every module's messages one behind the other, byte by byte as they
// come, each after the P2 pause.
class Br3Converter : public SimDevice {
  public:
    explicit Br3Converter(SimVehicle& vehicle);

    Br3Timing timing;
    // Takes nothing and answers nothing while on; off, it goes on where it was.
    void setSilent(bool on);
    // Scrambles the bytes of the next `count` answers, keeping their length.
    void garbleNextAnswers(int count) { garbleCount_ = count; }
    // Cuts each message of the next `count` answers to its first half.
    void cutNextAnswers(int count) { cutCount_ = count; }
    // Ignition off: the vehicle answers nothing, a 5-baud wake-up fails with 82.
    void setVehicleResponding(bool on) { vehicle_.responding = on; }

    // Frames and commands taken, as spaced hex text ("20", "41 00", "07 68 6A F1 01 0C 4E 01").
    const std::vector<std::string>& commands() const { return commands_; }
    // The vehicle protocol that a start command has reached; nothing while asleep, before a
    // start command, or after one that found no vehicle.
    std::optional<Protocol> activeProtocol() const { return active_; }
    bool awake() const { return awake_; }
    // Seconds of engine time at the current device time.
    double engineSeconds();
    // Told what happens, one line at a time ("asleep, ignored: 41"), for the verbose log.
    std::function<void(const std::string&)> trace;

    void attach(DeviceLink& link) override;
    // The converter is powered from the car, not from the serial line: opening the port again
    // (the program hands it from the connecting port to the scanning port) keeps it awake on
    // its protocol; only a frame half received is dropped.
    void onHostOpen() override;
    void onByte(unsigned char byte) override;

  private:
    using Bytes = std::vector<std::uint8_t>;

    void reset();
    void later(std::int64_t atMicros, std::function<void()> fn);
    void cancelAll();
    void take(const Bytes& bytes);
    void startCommand(const Bytes& bytes);
    void startProtocol(Protocol protocol, int delayMs, Bytes answer);
    void vehicleFrame(const Bytes& bytes);
    void answer(std::int64_t at, std::vector<Bytes> pieces, bool kLine);
    std::int64_t schedulePiece(std::int64_t at, const Bytes& piece, bool kLine);
    void note(const std::string& line) {
        if (trace) trace(line);
    }

    SimVehicle& vehicle_;
    bool awake_ = false;
    bool silent_ = false;
    std::optional<Protocol> active_;
    Bytes partial_;
    std::size_t expected_ = 0;
    std::int64_t lastByteAt_ = 0;
    std::int64_t busyUntil_ = 0;
    std::uint64_t generation_ = 0;  // events of an older generation were called off
    std::int64_t startMicros_ = 0;
    int garbleCount_ = 0, cutCount_ = 0;
    std::uint32_t noise_ = 0x2F2F2F2Fu;
    std::vector<std::string> commands_;
};

// Bytes as upper-case hex pairs with a space between them ("07 68 6A").
std::string SpacedHex(const std::vector<std::uint8_t>& bytes);

}  // namespace ketrel::sim
