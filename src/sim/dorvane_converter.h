#pragma once
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "sim/sim_device.h"
#include "sim/sim_vehicle.h"

namespace ketrel::sim {

// Times of the text converter, in milliseconds.
struct DorvaneTiming {
    int bootMs = 200;           // from power-up or port opening (DTR resets it) to the first "S"
    int idleSyncMs = 250;       // "S" again while it waits for a command
    int commandMs = 20;         // a converter command ("800204", "F0646A", "900504") takes this
    int vehicleMs = 40;         // from a vehicle request to the first answer
    int messageGapMs = 8;       // between the answers of several modules
    int syncGapMs = 10;         // after the last answer, until "S"
    int noAnswerMs = 150;       // it gives up waiting for the vehicle
    int commandGapMs = 100;     // a pause this long inside a command throws the part away
    int splitGapMs = 3;         // between the pieces of an answer that is split
    int searchRepeatMs = 1000;  // "P" again while it searches for a silent vehicle
    bool lineTime = true;       // answers take the time of their characters at 19200 baud

    // A converter and vehicle that answer at once: no wait for the vehicle, no time on the
    // line, only the short pauses that keep an answer and the next "S" apart, and a quick
    // repeat of "S" when a command does not come. For measuring how fast the program itself
    // turns a frame round.
    static DorvaneTiming Fast() {
        DorvaneTiming t;
        t.idleSyncMs = 50;
        t.commandMs = 0;
        t.vehicleMs = 0;
        t.messageGapMs = 1;
        t.syncGapMs = 2;
        t.splitGapMs = 0;
        t.lineTime = false;
        return t;
    }
};

// The text converter at 19200 baud, as the program meets it.
//
// It sends "S" when it can take a command, and again every idleSyncMs while none comes.
// A command is six ASCII hex characters: mode, PID and the expected answer length (which it
// does not need: the vehicle's messages end by themselves). It asks the vehicle and sends
// each module's answer as "V" + hex text of the message (three header bytes, the answer's
// mode byte, PID, data, check byte), then "S". Mode 02 requests ask for frame 0; modes 03,
// 04 and 07 take no PID. Its own commands: "900504" answers "V" + firmware ("V1.23");
// "800204", "F0646A" and the 13-byte binary retry frame (01 06 ...) are taken in silence.
// Characters that come while it is busy are ignored. Status chunks: "T" when the vehicle
// did not answer a request, "P" while it searches for a vehicle that went silent, "I" when
// it found it again; a test can send any of them itself.
class DorvaneConverter : public SimDevice {
  public:
    explicit DorvaneConverter(SimVehicle& vehicle, std::string firmware = "1.23");

    DorvaneTiming timing;
    // Sends nothing at all and takes no command; false makes it ready again.
    void setSilent(bool on);
    // Scrambles the text of the next `count` answers, keeping their length.
    void garbleNextAnswers(int count) { garbleCount_ = count; }
    // Sends each answer in pieces, cut before these character offsets.
    void setSplitPoints(std::vector<std::size_t> offsets) { splits_ = std::move(offsets); }
    // Sends a status chunk now (for example "P", "I", "T").
    void sendStatus(const std::string& text);
    // Ignition off: the vehicle is silent and the converter searches ("P"); on: "I", then "S".
    void setVehicleResponding(bool on);

    // Commands taken, as received ("010C07"; "RETRY FRAME" for the binary frame).
    const std::vector<std::string>& commands() const { return commands_; }
    // Chunks sent, as sent.
    const std::vector<std::string>& sent() const { return sent_; }
    // Seconds of engine time at the current device time.
    double engineSeconds();
    // Told what happens, one line at a time ("ignored while busy: 01"), for the verbose log.
    std::function<void(const std::string&)> trace;

    void attach(DeviceLink& link) override;
    void onHostOpen() override { reset(); }
    void onByte(unsigned char byte) override;

  private:
    enum class State { Booting, Ready, Busy, Searching, Silent };

    void reset();
    void becomeReady();
    void armIdle();
    void later(std::int64_t atMicros, std::function<void()> fn);
    void cancelAll();
    void emit(const std::string& text);
    void takeCommand(const std::string& command);
    void askVehicle(const std::string& command);
    std::int64_t scheduleAnswer(std::int64_t at, std::string text);
    void note(const std::string& line) {
        if (trace) trace(line);
    }
    std::string garble(std::string text);

    SimVehicle& vehicle_;
    std::string firmware_;
    State state_ = State::Booting;
    std::string partial_;
    std::int64_t lastCharAt_ = 0;
    int binaryLeft_ = 0;
    std::vector<std::uint64_t> pending_;
    std::int64_t startMicros_ = 0;
    int garbleCount_ = 0;
    std::uint32_t noise_ = 0x2F2F2F2Fu;
    std::vector<std::size_t> splits_;
    std::vector<std::string> commands_, sent_;
};

}  // namespace ketrel::sim
