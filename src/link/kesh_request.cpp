#include "link/kesh_request.h"

#include <array>
#include <cstdint>

#include "link/br3_frames.h"
#include "link/request_chain.h"
#include "link/serial_timing.h"
#include "screens/frm_main.h"
#include "state/app.h"

namespace ketrel {
namespace {

using S = RequestStep;

// KWP 2000 has no places for PIDs 20 and 40: they reach it only through the extended list.
constexpr std::array<S, 12> kIsoOrder{
    S::ClearCodes, S::FFData,    S::Pid20,  S::Pid40,        S::Mode5,        S::Info,
    S::Pid1C,      S::Mode2List, S::FFCode, S::TroubleCodes, S::PendingCodes, S::CustomList};
constexpr std::array<S, 10> kKwpOrder{S::ClearCodes,   S::FFData,    S::Mode5,  S::Info,
                                      S::Pid1C,        S::Mode2List, S::FFCode, S::TroubleCodes,
                                      S::PendingCodes, S::CustomList};

// A raw K-line cable's line: bare ISO/KWP frames on frmMain.KeshMSComm, the ISO and KWP slots
// of KeshCount, KeshDelay between requests.
class KeshRequestLine : public RequestLine {
  public:
    KeshRequestLine(App& app, KeshLine line)
        : RequestLine(
              app, *app.frmMain().KeshMSComm, app.frmMain().KeshDelay, app.KeshCount,
              line == KeshLine::Iso ? 2 : 3,
              line == KeshLine::Iso ? std::span<const S>(kIsoOrder) : std::span<const S>(kKwpOrder),
              false),
          line_(line) {}

  protected:
    std::string modeFrame(std::uint8_t mode, std::uint8_t) override {
        return KlineFrame(headerFor(1), {mode});
    }
    std::string pidFrame(std::uint8_t mode, std::uint8_t pid, std::uint8_t) override {
        return KlineFrame(headerFor(2), {mode, pid});
    }
    // A Mode 02 frame carries frame number 00.
    std::string mode2Frame(std::uint8_t pid, bool) override {
        return KlineFrame(headerFor(3), {0x02, pid, 0x00});
    }
    std::string cycleFrame(int pid) override { return pidFrame(0x01, std::uint8_t(pid), 1); }

    // The port at the scan rate whatever a wake-up or a sweep left, the fields of the last
    // answer emptied.
    bool prepare() override {
        FrmMain& m = app.frmMain();
        app.LastRequestHex.clear();
        try {
            SerialPort& p = *m.KeshMSComm;
            if (!p.portOpen()) p.setPortOpen(true);
            p.setRThreshold(0);
            p.setBaud(10400);
        } catch (const SerialError&) {
            return false;
        }
        m.Text2.setText("");
        m.txtKesh.setText("");
        app.RawFrame.clear();
        return RequestLine::prepare();
    }

  private:
    // The header of a frame of this many data bytes; on KWP the format byte counts them.
    Br3Header headerFor(std::size_t dataBytes) const {
        if (line_ == KeshLine::Iso) return {0x68, 0x6A, 0xF1};
        return {std::uint8_t(0xC0 + dataBytes), 0x33, 0xF1};
    }

    KeshLine line_;
};

}  // namespace

void KeshRequest(App& app, KeshLine line) {
    KeshRequestLine(app, line).request();
}

void KeshRequestFreeze(App& app, KeshLine line) {
    KeshRequestLine(app, line).requestFreeze();
}

void KeshRequestNew(App& app, KeshLine line) {
    KeshRequestLine(app, line).requestNew();
}

void KeshRequestNext(App& app) {
    if (app.ProtocolCode == "03") KeshRequest(app, KeshLine::Iso);
    if (app.ProtocolCode == "04") KeshRequest(app, KeshLine::Kwp);
}

}  // namespace ketrel
