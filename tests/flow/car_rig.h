#pragma once
#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "flow/dorvane_rig.h"
#include "sim/br3_converter.h"
#include "sim/kline_ecu.h"
#include "sim/vehicle_file.h"

namespace ketrel::test {

using Strings = std::vector<std::string>;

// The application joined on port 1 to a shipped car of data/sim ("default": the built-in car)
// through any of the converters or cables, on virtual time, with the session
// logic installed. `edit` changes the car before the device sees it.
struct CarRig {
    CarRig(const char* hardware, const std::string& car, int start, const char* delay = nullptr,
           const std::function<void(sim::SimVehicle&)>& edit = nullptr)
        : t(&ports),
          vehicle(car == "default" ? sim::SimVehicle::Default()
                                   : sim::LoadVehicleFile(std::string(KETREL_DATA_DIR) + "/sim/" +
                                                          car + ".vehicle")
                                         .vehicle) {
        if (edit) edit(vehicle);
        const bool kline = std::string(hardware) == kKesh || std::string(hardware) == kTactrix;
        if (kline) {
            device = std::make_unique<sim::KlineEcu>(vehicle);
            ecu = static_cast<sim::KlineEcu*>(device.get());
        } else if (std::string(hardware) == kBr3) {
            device = std::make_unique<sim::Br3Converter>(vehicle);
            br3 = static_cast<sim::Br3Converter*>(device.get());
        } else {
            device = std::make_unique<sim::DorvaneConverter>(vehicle);
            dorvane = static_cast<sim::DorvaneConverter*>(device.get());
        }
        wire = std::make_unique<sim::SimWire>(t.loop.scheduler(), *device);
        ports.plug(1, *wire);
        App& app = *t;
        app.BR3SetDelay = true;
        app.BR3Start = app.KeshStart = start;
        app.Temp = "F";
        SetUpSessionRig(t, hardware, delay ? delay : kline ? "225" : "180");
        app.hooks.FrameDecoded = [this] { decoded.push_back(t->RawFrame); };
    }
    App& app() { return *t; }
    // Connects, a hang failing instead of spinning; a question is answered as given.
    void connect(std::optional<MsgAnswer> answer = std::nullopt) {
        if (answer) t.dialogs.answerNext(*answer);
        t.loop.setLimitMs(t.loop.nowMs() + 400000);
        ConnectSession(app());
    }
    void run(int ms) { t.loop.runFor(ms); }
    // Runs fn at `ms` of virtual time (or `ms` after now), inside whatever wait goes on then.
    void at(int ms, std::function<void()> fn) { t.loop.scheduler().postAt(ms * 1000, fn); }
    void after(int ms, std::function<void()> fn) { at(int(t.loop.nowMs()) + ms, std::move(fn)); }
    // Frames the device took, as spaced hex.
    const Strings& frames() const {
        return br3 ? br3->commands() : ecu ? ecu->received() : dorvane->commands();
    }
    std::string log() const { return ReadFile(ConnectLog::pathFor(t.dir.path())); }
    // True when the connecting log holds these records in this order, others between them.
    bool logged(const Strings& records) const {
        const std::string log = this->log();
        std::size_t at = 0;
        for (const std::string& record : records) {  // stamped or not, each a whole record
            at = std::min(log.find(")     " + record + "\"", at),
                          log.find("\"" + record + "\"", at));
            if (at++ == std::string::npos) return false;
        }
        return true;
    }
    // The requests of service `mode` ("01") the device took from its `from`th frame on: the
    // text converter's commands, else the frames with the service byte after the tester's F1.
    Strings asked(const std::string& mode, std::size_t from = 0) const {
        Strings out;
        for (std::size_t i = from; i < frames().size(); ++i) {
            const std::string& f = frames()[i];
            const std::size_t at =
                dorvane ? (f.rfind(mode, 0) ? f.npos : 0) : f.find("F1 " + mode + " ");
            if (at != f.npos) out.push_back(f.substr(dorvane ? mode.size() : at + 4 + mode.size()));
        }
        return out;
    }
    // The Mode 01 PIDs asked for during the next `ms`.
    std::set<int> polled(int ms) {
        const std::size_t from = frames().size();
        run(ms);
        std::set<int> pids;
        for (const std::string& rest : asked("01", from))
            pids.insert(std::stoi(rest.substr(0, 2), nullptr, 16));
        return pids;
    }
    // Distinct frames decoded since the connect: a scan with changing values.
    std::size_t distinctDecoded() const { return std::set(decoded.begin(), decoded.end()).size(); }

    sim::SimSerialPortFactory ports;
    TestApp t;
    sim::SimVehicle vehicle;
    std::unique_ptr<sim::SimDevice> device;
    std::unique_ptr<sim::SimWire> wire;
    sim::Br3Converter* br3 = nullptr;
    sim::KlineEcu* ecu = nullptr;
    sim::DorvaneConverter* dorvane = nullptr;
    Strings decoded;
};

// The text converter and the built-in car.
struct DorvaneRig : CarRig {
    DorvaneRig() : CarRig(kDorvane, "default", 1, "180") {}
};

// The longest text the text converter's two frame buffers, the other receive buffers and a
// decoded frame held, and the frames decoded.
struct BufferWatch {
    explicit BufferWatch(App& app) {
        FrmMain& m = app.frmMain();
        for (Field* f : {&m.txtInputDORVANE, &app.frmConnecting().txtConnectingInput})
            f->observe([this, f] { longestInput = std::max(longestInput, f->text().size()); });
        for (Field* f : {&m.txtInputBR3, &m.Text2, &m.txtKesh})
            f->observe([this, f] { longestOther = std::max(longestOther, f->text().size()); });
        app.hooks.FrameDecoded = [this, &app] {
            ++frames;
            longestFrame = std::max(longestFrame, app.RawFrame.size());
        };
    }
    long frames = 0;
    std::size_t longestInput = 0, longestOther = 0, longestFrame = 0;
};

// A repeatable stream of bytes of any value.
struct Noise {
    std::uint32_t state;
    unsigned char byte() {
        state = state * 1664525u + 1013904223u;
        return static_cast<unsigned char>(state >> 24);
    }
    std::string bytes(std::size_t n) {
        std::string s;
        while (s.size() < n)
            s += char(byte());
        return s;
    }
};

// A value field that a decoded answer has written.
inline bool Shown(const Field& f) {
    return !f.text().empty() && f.text() != "N/A";
}

}  // namespace ketrel::test
