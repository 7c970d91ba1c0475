#pragma once
// The application the link fuzz targets feed: one per target, made once, scanning on one link
// device on virtual time, with the support lists of a car already read through the device's own
// receive path. Each input starts from the same session variables again.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <memory>
#include <string>
#include <utility>

#include "platform/desktop.h"
#include "platform/dialogs.h"
#include "platform/null_serial_port.h"
#include "platform/settings_store.h"
#include "platform/virtual_event_loop.h"
#include "state/app.h"

namespace ketrel::fuzz {

// A scanning port that is open and hands over what the target put in it; what is sent is lost.
class FeedPort : public NullSerialPort {
  public:
    bool portOpen() const override { return open; }
    void setPortOpen(bool o) override { open = o; }
    void clearInput() override { buffer.clear(); }
    int inBufferCount() const override { return int(buffer.size()); }
    std::string input() override { return std::exchange(buffer, {}); }
    bool setBaud(int) override { return true; }
    int commEvent() const override { return kCommEventReceive; }

    std::string buffer;
    bool open = true;
};

// The reads of the port one input makes at most: enough for a split frame, answers of several
// kinds one after another and the lists they change; more only makes each run slower.
inline constexpr int kReadsPerInput = 16;

// Takes an input apart front to back; past its end every read is empty.
class InputReader {
  public:
    InputReader(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
    bool done() const { return at_ == size_; }
    std::uint8_t byte() { return done() ? 0 : data_[at_++]; }
    // The next `n` bytes, fewer at the end.
    std::string bytes(std::size_t n) {
        n = std::min(n, size_ - at_);
        std::string s(reinterpret_cast<const char*>(data_ + at_), n);
        at_ += n;
        return s;
    }
    // The bytes up to the next `stop` (left out) or the end.
    std::string until(char stop) {
        std::size_t from = at_;
        while (at_ < size_ && char(data_[at_]) != stop)
            ++at_;
        std::string s(reinterpret_cast<const char*>(data_ + from), at_ - from);
        if (at_ < size_) ++at_;
        return s;
    }

  private:
    const std::uint8_t* data_;
    std::size_t size_;
    std::size_t at_ = 0;
};

// The variables an answer or a request can change, as the link left them up: put back before
// each input so that an input plays the same way whatever ran before it.
struct SessionVars {
    std::array<bool, 97> Mode1Supported{}, Mode2Supported{};
    std::array<bool, 101> PidWanted{};
    std::array<bool, 8> O2Location{}, O2LocationAlt{};
    bool FFPidsKnown = false, PidDiscoveryDone = false, Mode1ListRead = false,
         Mode2ListRead = false;
    int SupportedCount = 0, FFSupportedCount = 0, ExtendedPIDCount = 0;
    Br3Counters Br3Count, KeshCount;

    void takeFrom(const App& a) {
        Mode1Supported = a.Mode1Supported;
        Mode2Supported = a.Mode2Supported;
        PidWanted = a.PidWanted;
        O2Location = a.O2Location;
        O2LocationAlt = a.O2LocationAlt;
        FFPidsKnown = a.FFPidsKnown;
        PidDiscoveryDone = a.PidDiscoveryDone;
        Mode1ListRead = a.Mode1ListRead;
        Mode2ListRead = a.Mode2ListRead;
        SupportedCount = a.SupportedCount;
        FFSupportedCount = a.FFSupportedCount;
        ExtendedPIDCount = a.ExtendedPIDCount;
        Br3Count = a.Br3Count;
        KeshCount = a.KeshCount;
    }
    void putInto(App& a) const {
        a.Mode1Supported = Mode1Supported;
        a.Mode2Supported = Mode2Supported;
        a.PidWanted = PidWanted;
        a.O2Location = O2Location;
        a.O2LocationAlt = O2LocationAlt;
        a.FFPidsKnown = FFPidsKnown;
        a.PidDiscoveryDone = PidDiscoveryDone;
        a.Mode1ListRead = Mode1ListRead;
        a.Mode2ListRead = Mode2ListRead;
        a.SupportedCount = SupportedCount;
        a.FFSupportedCount = FFSupportedCount;
        a.ExtendedPIDCount = ExtendedPIDCount;
        a.Br3Count = Br3Count;
        a.KeshCount = KeshCount;
    }
};

// The one-shot requests a user or the connect raises; an input picks which one is pending.
inline constexpr bool App::*kPendingRequests[] = {
    nullptr,
    &App::RequestClearCodes,
    &App::RequestTroubleCodes,
    &App::RequestPendingCodes,
    &App::RequestFFCode,
    &App::RequestFFData,
    &App::RequestInfo,
    &App::RequestFirmware,
    &App::RequestPid1C,
    &App::KeshRequestPid1C,
    &App::KeshRequestMode2List,
    &App::RequestPid20,
    &App::RequestPid40,
};
inline constexpr std::size_t kPendingRequestCount = std::size(kPendingRequests);

// The application scanning on `hardware`, its scanning port `scanPort` fed by the target.
class LinkFuzzSession : public SerialPortFactory {
  public:
    LinkFuzzSession(const char* hardware, const char* scanPort) : scanName_(scanPort) {
        app_ = std::make_unique<App>(Platform{loop_, dialogs_, settings_, launcher_, display_,
                                              *this, std::filesystem::temp_directory_path()});
        App& app = *app_;
        app.OBDIIHardware = hardware;
        app.ConnectPort = "1";
        app.TimeOut = 10000;
        app.frmMain().TimeOutConnect.setInterval(10000);
        app.Connected = true;
        // The car of these runs keeps PID 0D on offer. An answer that takes every PID off the
        // lists would leave the next request's search turning until the watchdog ends the
        // session: a matter of time, which these targets do not run on.
        app.hooks.FrameDecoded = [this] {
            app_->PidWanted[0x0D] = app_->Mode1Supported[0x0D] = true;
        };
    }

    std::unique_ptr<SerialPort> create(const std::string& name) override {
        auto port = std::make_unique<FeedPort>();
        if (name == scanName_) scan_ = port.get();
        return port;
    }

    App& app() { return *app_; }
    FeedPort& scan() { return *scan_; }
    // The lists as the connect left them; taken once the car's support answers are in.
    void keepLinkState() { linkUp_.takeFrom(*app_); }

    // Puts the session back as the link left it, on `protocolCode`, with the request that
    // `pending` picks from kPendingRequests raised, and the options of `options`:
    //   bit 0  SecondFrameConnect
    //   bit 1  metric units
    //   bit 2  the code alert on
    //   bit 3  the freeze-frame and support lists not read yet
    void begin(const std::string& protocolCode, std::uint8_t options, std::uint8_t pending) {
        App& app = *app_;
        FrmMain& m = app.frmMain();
        linkUp_.putInto(app);
        if (options & 0x08) app.FFPidsKnown = app.Mode1ListRead = app.Mode2ListRead = false;
        app.Connected = true;
        app.Connecting = app.PlayingLog = app.Recording = false;
        app.ProtocolCode = protocolCode;
        app.SecondFrameConnect = options & 0x01;
        const bool metric = options & 0x02;
        app.Temp = metric ? "C" : "F";
        app.Pressure = metric ? "kPa" : "PSI";
        app.Speed = metric ? "KPH" : "MPH";
        app.AlertOnMIL = options & 0x04;
        for (bool App::*flag : kPendingRequests)
            if (flag) app.*flag = false;
        if (bool App::*flag = kPendingRequests[pending % kPendingRequestCount]) app.*flag = true;
        app.CustomListActive = app.Mode5Requested = app.Mode6Active = app.Mode5ManufActive = false;
        app.PollPosition = 1;
        app.FFPosition = 3;
        app.VinText.clear();
        app.FrameOut.clear();
        app.LastRequestHex.clear();
        app.RawFrame.clear();
        app.RxMode.clear();
        app.RxPID.clear();
        for (ListBox* list : {&m.lstCodes, &m.lstPendingCodes, &m.lstFreezeCodes, &m.LogData})
            list->clear();
        for (Field* text : {&m.Text2, &m.txtKesh, &m.txtInputDORVANE, &m.txtInputBR3})
            text->setText("");
        for (Timer* timer : {&m.TimeOutConnect, &m.BR3Delay, &m.KeshDelay})
            timer->stop();
        scan_->open = true;
        scan_->buffer.clear();
        dialogs_.clear();
        // A search or a wait that never ends is a finding, not a stuck run.
        loop_.setLimitMs(loop_.nowMs() + 600000);
    }

  private:
    VirtualEventLoop loop_;
    ScriptedDialogs dialogs_;
    MemorySettingsStore settings_;
    RecordingLauncher launcher_;
    FixedDisplayInfo display_;
    std::string scanName_;
    FeedPort* scan_ = nullptr;
    std::unique_ptr<App> app_;
    SessionVars linkUp_;
};

// A session of the count-byte converter or a K-line cable on an ISO 9141 car whose support
// lists came in through the device's own receive tick, kept as the state each input starts from.
inline LinkFuzzSession& IsoSession(const char* hardware, const char* scanPort, void (*tick)(App&)) {
    static LinkFuzzSession* session = [&] {
        auto* s = new LinkFuzzSession(hardware, scanPort);
        s->begin("03", 0, 0);
        for (const std::string& answer :
             {std::string("\x48\x6B\x10\x41\x00\xBE\x1F\xA8\x13\x00", 10),
              std::string("\x48\x6B\x10\x42\x00\x00\x18\x00\x00\x00\x00", 11)}) {
            s->scan().buffer = answer;
            tick(s->app());
        }
        s->keepLinkState();
        return s;
    }();
    return *session;
}

}  // namespace ketrel::fuzz
