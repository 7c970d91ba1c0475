#pragma once
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "sim/sim_device.h"
#include "sim/sim_vehicle.h"

namespace ketrel::sim {

// Times of the ECU on the K-line, in milliseconds; each within the windows a real ECU keeps.
struct KlineTiming {
    int bitMs = 200;               // one bit of the 5-baud address
    int bitToleranceMs = 20;       // how far an edge may sit from its slot
    int w1Ms = 100;                // end of the address's stop bit to the sync byte (60..300)
    int w2Ms = 10;                 // between the sync byte and each key byte (5..20)
    int w4MinMs = 25;              // window for the inverted key byte after the last key byte
    int w4MaxMs = 50;              //
    int w4Ms = 30;                 // the inverted key byte to the inverted address
    int fastLowMs = 25;            // fast initialisation: the line low, then high, this long each
    int fastToleranceMs = 3;       //
    int startCommWindowMs = 1000;  // the pattern to the StartCommunication request
    int p2Ms = 30;                 // a request's last byte to the answer, and between messages
    int p3MaxMs = 5000;            // no request this long and the link is dropped
};

// An engine module on a raw K-line, as the program meets it through a plain level shifter.
//
// The line is one wire: the program hears every byte it sends, and a break as one 0x00.
// Asleep, the module listens for a wake-up. The 5-baud wake-up is the address 0x33 clocked
// out with break edges in 200 ms bits; each edge must sit in its slot within the tolerance,
// else the module stays asleep without a word. It answers 0x55 and the two key bytes, waits
// 25 to 50 ms for the second key byte inverted and answers the address inverted (0xCC). The
// fast initialisation is the line held low 25 ms and high 25 ms (by a break, or by the byte
// 0xF0 at 200 baud) and then a StartCommunication request, answered with the key bytes; only
// an ISO 14230 vehicle takes it, and it takes the 5-baud wake-up too. Linked, the module
// answers each request in its protocol's header P2 after its last byte, every module's
// message one behind the other, and drops the link when no request comes for P3 max.
class KlineEcu : public SimDevice {
  public:
    explicit KlineEcu(SimVehicle& vehicle);

    KlineTiming timing;

    // Where the module stands in its wake-up and session.
    enum class State { Asleep, AwaitInvertedKey, AwaitStartComm, Linked };
    State state() const { return state_; }
    bool linked() const { return state_ == State::Linked; }

    // ---- Faults for tests.
    // Takes nothing and answers nothing while on (the echo stays: the wire makes it).
    void setSilent(bool on);
    // Off: the program hears nothing of what it sends, as a broken interface.
    void setEcho(bool on);
    // Scrambles the bytes of the next `count` answers, keeping their length.
    void garbleNextAnswers(int count) { garbleCount_ = count; }
    // Sends each of the next `count` answers twice over, all in one burst.
    void doubleNextAnswers(int count) { doubleCount_ = count; }

    // What the module took, one line each: "address 33", "inverted key F7", "fast init",
    // and each request frame as spaced hex ("68 6A F1 01 00 C4").
    const std::vector<std::string>& received() const { return received_; }
    // Told what happens, one line at a time ("bit slot off: 230 ms"), for the verbose log.
    std::function<void(const std::string&)> trace;
    // Seconds of engine time at the current device time.
    double engineSeconds();

    void attach(DeviceLink& link) override;
    void onByte(unsigned char byte) override;
    void onBreak(bool on) override;
    void onBaud(int rate) override { hostBaud_ = rate; }

  private:
    using Bytes = std::vector<std::uint8_t>;

    std::int64_t ms(int value) const { return std::int64_t(value) * 1000; }
    void later(std::int64_t atMicros, std::function<void()> fn);
    void sleep(const std::string& why);
    void refuseAddress(const std::string& why);
    bool takeRun(std::int64_t micros, int level);
    void addressEnd();
    void sendKeyBytes(std::int64_t stopEnd);
    void invertedKey(unsigned char byte, std::int64_t now);
    void fastPattern(std::int64_t lowEnd);
    void requestByte(unsigned char byte, std::int64_t now);
    void takeRequest();
    bool headerFits(const Bytes& frame) const;
    void armDrop(std::int64_t now);
    void answer(std::int64_t at, std::vector<SimMessage> messages);
    void note(const std::string& line) {
        if (trace) trace(line);
    }

    SimVehicle& vehicle_;
    State state_ = State::Asleep;
    bool silent_ = false, echo_ = true;
    int hostBaud_ = 10400;
    // The 5-baud address being read from the break edges.
    bool decoding_ = false, lineLow_ = false;
    std::int64_t startEdge_ = 0, lastEdge_ = 0;
    std::vector<int> bits_;
    std::uint64_t addressCheck_ = 0;
    std::int64_t keyEnd_ = 0;      // when the last key byte has left
    std::int64_t patternEnd_ = 0;  // when the fast-initialisation pattern ended
    Bytes request_;
    std::uint64_t requestDue_ = 0, dropDue_ = 0;
    std::int64_t busyUntil_ = 0;
    std::uint64_t generation_ = 0;  // events of an older generation were called off
    std::int64_t startMicros_ = 0;
    int garbleCount_ = 0, doubleCount_ = 0;
    std::uint32_t noise_ = 0x5A5A5A5Au;
    std::vector<std::string> received_;
};

}  // namespace ketrel::sim
