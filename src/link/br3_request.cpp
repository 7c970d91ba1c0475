#include "link/br3_request.h"

#include <array>
#include <cstdint>

#include "link/br3_frames.h"
#include "link/request_chain.h"
#include "screens/frm_main.h"
#include "state/app.h"

namespace ketrel {
namespace {

using S = RequestStep;

constexpr std::array<S, 10> kJ1850Order{S::ClearCodes,   S::FFData,      S::Pid20,      S::Pid40,
                                        S::Mode5,        S::Info,        S::CustomList, S::FFCode,
                                        S::TroubleCodes, S::PendingCodes};
constexpr std::array<S, 10> kIsoKwpOrder{S::ClearCodes,   S::FFData,    S::Pid20,  S::Pid40,
                                         S::Mode5,        S::Info,      S::FFCode, S::TroubleCodes,
                                         S::PendingCodes, S::CustomList};

// What differs between the four protocols' request routines.
struct LineRow {
    Br3Family family;
    Br3Header header;   // of one-shot frames, and the header the check of every frame uses
    bool kwp;           // the format byte follows the number of data bytes
    std::size_t slot;   // index of the per-protocol counters
    std::size_t j1850;  // index of the J1850 frame counters
};

constexpr std::array<LineRow, 4> kLines{{
    {Br3Family::J1850, {0x61, 0x6A, 0xF1}, false, 0, 0},
    {Br3Family::J1850, {0x68, 0x6A, 0xF1}, false, 1, 1},
    {Br3Family::IsoKwp, {0x68, 0x6A, 0xF1}, false, 2, 0},
    {Br3Family::IsoKwp, {0xC2, 0x33, 0xF1}, true, 3, 0},
}};

// The count-byte converter on one protocol: its frames on frmMain.BR3MSComm, the protocol's
// slot of Br3Count, BR3Delay between requests. J1850 asks the vehicle information and the
// codes one frame a tick, the frame picked by the trailing byte.
class Br3RequestLine : public RequestLine {
  public:
    Br3RequestLine(App& app, Br3Line line) : Br3RequestLine(app, kLines[std::size_t(line)]) {}

  protected:
    std::string modeFrame(std::uint8_t mode, std::uint8_t trailing) override {
        return Br3Frame(row_.family, headerFor(1), {mode}, trailing);
    }
    std::string pidFrame(std::uint8_t mode, std::uint8_t pid, std::uint8_t trailing) override {
        return Br3Frame(row_.family, headerFor(2), {mode, pid}, trailing);
    }
    // On ISO and KWP a Mode 02 frame carries frame number 00; the freeze walk on KWP goes out
    // on the header the connect kept in FrameHeader3.
    std::string mode2Frame(std::uint8_t pid, bool walk) override {
        if (isJ1850()) return pidFrame(0x02, pid, 1);
        const Br3Header check = headerFor(3);
        const std::string wire = walk && row_.kwp ? app.FrameHeader3 : std::string();
        return Br3Frame(row_.family, HeaderFromText(wire, check), check, {0x02, pid, 0x00});
    }
    // A Mode 01 PID of the cycles goes out on the header the connect left in FrameHeader.
    std::string cycleFrame(int pid) override {
        const Br3Header check = headerFor(2);
        return Br3Frame(row_.family, HeaderFromText(app.FrameHeader, check), check,
                        {0x01, std::uint8_t(pid)});
    }

    Served serveInfo() override {
        if (!isJ1850()) return RequestLine::serveInfo();
        int& frame = app.Br3Count.VinFrame[row_.j1850];
        if (frame >= 5) frame = 0;
        frame++;
        app.frmMain().TimeOutConnect.stop();
        if (!send(pidFrame(0x09, 0x02, std::uint8_t(frame)))) return Served::Failed;
        if (frame == 5) app.RequestInfo = false;
        return Served::Sent;
    }

    Served serveCodes(bool pending) override {
        if (!isJ1850()) return RequestLine::serveCodes(pending);
        FrmMain& m = app.frmMain();
        (pending ? app.PendingAnswered : app.TroubleAnswered) = false;
        (pending ? app.RequestPendingCodes : app.RequestTroubleCodes) = false;
        int& frame = (pending ? app.Br3Count.PendingFrame : app.Br3Count.CodeFrame)[row_.j1850];
        frame++;
        if (!send(modeFrame(pending ? 0x07 : 0x03, std::uint8_t(frame)))) return Served::Failed;
        if (frame >= 3) frame = 0;
        // A vehicle with few codes is asked for the first frame every time.
        if ((pending ? m.lstPendingCodes : m.lstCodes).count() < 3) frame = 0;
        return Served::Sent;
    }

  private:
    Br3RequestLine(App& app, const LineRow& row)
        : RequestLine(app, *app.frmMain().BR3MSComm, app.frmMain().BR3Delay, app.Br3Count, row.slot,
                      row.family == Br3Family::J1850 ? std::span<const S>(kJ1850Order)
                                                     : std::span<const S>(kIsoKwpOrder),
                      row.family == Br3Family::J1850),
          row_(row) {}

    // The header written whole for a frame of this many data bytes.
    Br3Header headerFor(std::size_t dataBytes) const {
        Br3Header h = row_.header;
        if (row_.kwp) h[0] = std::uint8_t(0xC0 + dataBytes);
        return h;
    }

    const LineRow& row_;
};

}  // namespace

Br3Line Br3LineFor(const std::string& protocolCode) {
    if (protocolCode == "01") return Br3Line::Vpw;
    if (protocolCode == "03") return Br3Line::Iso;
    if (protocolCode == "04" || protocolCode == "04SLOW") return Br3Line::Kwp;
    return Br3Line::Pwm;
}

void BR3Request(App& app, Br3Line line) {
    Br3RequestLine(app, line).request();
}

void BR3RequestFreeze(App& app, Br3Line line) {
    Br3RequestLine(app, line).requestFreeze();
}

void BR3RequestNew(App& app, Br3Line line) {
    Br3RequestLine(app, line).requestNew();
}

}  // namespace ketrel
