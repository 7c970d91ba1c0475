#pragma once
#include <cstdint>
#include <span>
#include <string>

#include "platform/event_loop.h"
#include "platform/serial_port.h"
#include "state/app.h"

namespace ketrel {

// The one-shot flags and the cycle, in the places the request routines test them.
enum class RequestStep {
    ClearCodes,
    FFData,
    Pid20,
    Pid40,
    Mode5,
    Info,
    Pid1C,
    Mode2List,
    CustomList,
    FFCode,
    TroubleCodes,
    PendingCodes
};

// What a step of the chain did: nothing (the next step is tried), sent a request, handed the
// line to another routine, or lost the port.
enum class Served { No, Sent, HandedOver, Failed };

// One line of a link device that makes its own requests (the count-byte converter on each of
// its four protocols, a raw K-line cable on ISO 9141 or KWP 2000). The chain of one-shots, the
// PID cycle, the freeze-frame walk and the extended walk are the same for all of them; a line
// gives its port, counters, timer, step order and frames, and may serve a step its own way.
class RequestLine {
  public:
    RequestLine(App& app, SerialPort& port, Timer& delay, Br3Counters& counters, std::size_t slot,
                std::span<const RequestStep> order, bool j1850)
        : app(app),
          port_(port),
          delay_(delay),
          counters_(counters),
          slot_(slot),
          order_(order),
          j1850_(j1850) {}
    virtual ~RequestLine() = default;

    // One tick of the scan chain: the first one-shot whose flag is up, else the next PID the
    // screen wants and the vehicle has; arms the line's delay timer unless handed over.
    void request();
    // One step of the freeze-frame walk over the Mode 02 PIDs.
    void requestFreeze();
    // The request of the extended list, PIDs 0x21 to 0x4E, while CustomListActive is up.
    void requestNew();

  protected:
    // A one-byte (mode) frame, with the J1850 trailing byte where the line has one.
    virtual std::string modeFrame(std::uint8_t mode, std::uint8_t trailing = 1) = 0;
    // A mode and PID frame of the one-shots.
    virtual std::string pidFrame(std::uint8_t mode, std::uint8_t pid,
                                 std::uint8_t trailing = 1) = 0;
    // A Mode 02 frame; `walk` for the freeze-frame walk's PIDs.
    virtual std::string mode2Frame(std::uint8_t pid, bool walk) = 0;
    // A Mode 01 frame of the PID cycle and the extended walk.
    virtual std::string cycleFrame(int pid) = 0;
    // The start of every request: the port made ready; false when the session is over.
    virtual bool prepare();
    // The vehicle information and the code requests; the slow lines get the whole answer at
    // once and wait for it.
    virtual Served serveInfo();
    virtual Served serveCodes(bool pending);

    // Sends a frame on the line's port; false when the port failed (the chain then stops and
    // the watchdog ends the session).
    bool send(const std::string& frame);
    Served sentOrFailed(bool ok) { return ok ? Served::Sent : Served::Failed; }
    bool isJ1850() const { return j1850_; }
    std::size_t slot() const { return slot_; }

    App& app;

  private:
    Served serve(RequestStep step);
    Served oneShot(bool& flag, const std::string& frame);
    bool servePidCycle();
    void finish();

    SerialPort& port_;
    Timer& delay_;
    Br3Counters& counters_;
    std::size_t slot_;
    std::span<const RequestStep> order_;
    bool j1850_;
};

}  // namespace ketrel
