#include "soak/soak_driver.h"

#include <unistd.h>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <memory>
#include <ostream>

#include "core/session.h"
#include "flow/dorvane_rig.h"
#include "link/conn_log.h"
#include "platform/serial_port.h"
#include "recording/log_file.h"
#include "recording/recorder.h"
#include "screens/frm_recorder.h"
#include "sim/br3_converter.h"
#include "sim/dorvane_converter.h"
#include "sim/kline_ecu.h"
#include "sim/sim_serial_port.h"
#include "sim/sim_wire.h"
#include "sim/vehicle_file.h"
#include "support/test_app.h"

namespace ketrel::soak {
namespace {

constexpr std::size_t kFrameTextCap = 1024;  // the longest a receive buffer may hold
constexpr std::size_t kLogDataCap = 701;
constexpr std::size_t kRecordListCap = 200;
// Armed timers and posted events at any one time. The K-line car's drop timer is re-armed 5 s
// ahead at every request, and the wake-ups of the ones called off stay queued until then.
constexpr std::size_t kQueueCap = 256;

// How each device meets its car: the converter name, the car, the start setting.
struct DeviceSetup {
    std::string name;
    const char* hardware;
    const char* car;
    int start;
};

const std::vector<DeviceSetup>& Setups() {
    static const std::vector<DeviceSetup> setups{
        {"DORVANE", kDorvane, "pwm", 1},
        {"BR3", kBr3, "vpw", 1},
        {"KESH", kKesh, "iso9141", 2},
        {"TACTRIX", kTactrix, "iso14230", 2},
    };
    return setups;
}

// The application on virtual time with one simulated car behind port 1, wired as the session
// flow tests wire it, with the recorder installed.
struct Rig {
    explicit Rig(const DeviceSetup& s) : t(&ports) {
        vehicle = sim::LoadVehicleFile(std::string(KETREL_DATA_DIR) + "/sim/" + s.car + ".vehicle")
                      .vehicle;
        const std::string hardware = s.hardware;
        if (hardware == kDorvane) {
            device = std::make_unique<sim::DorvaneConverter>(vehicle);
        } else if (hardware == kBr3) {
            device = std::make_unique<sim::Br3Converter>(vehicle);
        } else {
            device = std::make_unique<sim::KlineEcu>(vehicle);
        }
        wire = std::make_unique<sim::SimWire>(t.loop.scheduler(), *device);
        ports.plug(1, *wire);
        App& app = *t;
        app.BR3SetDelay = true;
        app.BR3Start = app.KeshStart = s.start;
        app.Temp = "F";
        test::SetUpSessionRig(t, s.hardware, "225");
        app.AlertOnMIL = true;
        InstallRecorder(app);
    }
    // How many codes of one kind the car can report, the padding code of a reply counted.
    std::size_t codesOfCar(bool pending) const {
        std::size_t n = 1;
        for (const sim::SimEcu& e : vehicle.ecus)
            n += (pending ? e.pending : e.stored).size();
        return n;
    }
    // What the simulated device keeps of its own history, which a long run must not grow either.
    std::size_t deviceHistory() const {
        std::size_t n = 0;
        if (auto* d = dynamic_cast<sim::DorvaneConverter*>(device.get()))
            n += d->commands().size() + d->sent().size();
        if (auto* b = dynamic_cast<sim::Br3Converter*>(device.get())) n += b->commands().size();
        if (auto* k = dynamic_cast<sim::KlineEcu*>(device.get())) n += k->received().size();
        return n;
    }

    sim::SimSerialPortFactory ports;
    test::TestApp t;
    sim::SimVehicle vehicle;
    std::unique_ptr<sim::SimDevice> device;
    std::unique_ptr<sim::SimWire> wire;
};

std::size_t LineCount(const std::filesystem::path& p) {
    std::ifstream in(p, std::ios::binary);
    std::size_t n = 0;
    for (std::string line; std::getline(in, line);)
        n++;
    return n;
}

void CollectBuffers(Rig& rig, SoakReport& r) {
    App& app = *rig.t;
    FrmMain& m = app.frmMain();
    auto add = [&r](std::string name, std::size_t size, std::size_t cap) {
        r.buffers.push_back({std::move(name), size, cap});
    };
    add("ConnLog.dat lines", LineCount(ConnectLog::pathFor(rig.t.dir.path())), 0);
    add("LogData rows", std::size_t(m.LogData.count()), kLogDataCap);
    add("lstRecordData rows", std::size_t(m.lstRecordData.count()), kRecordListCap);
    add("lstCodes", std::size_t(m.lstCodes.count()), rig.codesOfCar(false));
    add("lstPendingCodes", std::size_t(m.lstPendingCodes.count()), rig.codesOfCar(true));
    add("lstFreezeCodes", std::size_t(m.lstFreezeCodes.count()), 1);
    add("gridTroubleCode rows", std::size_t(m.gridTroubleCode.rows()), 10);
    add("gridPending rows", std::size_t(m.gridPending.rows()), 10);
    add("GridData rows", std::size_t(m.GridData.rows()), 20);
    add("Text2 chars", m.Text2.text().size(), kFrameTextCap);
    add("txtInputDORVANE chars", m.txtInputDORVANE.text().size(), kFrameTextCap);
    add("txtInputBR3 chars", m.txtInputBR3.text().size(), kFrameTextCap);
    add("txtKesh chars", m.txtKesh.text().size(), kFrameTextCap);
    add("VinText chars", app.VinText.size(), 17);
    std::size_t waiting = 0;
    for (SerialPort* port : {m.MSComm.get(), m.BR3MSComm.get(), m.KeshMSComm.get()}) {
        if (port && port->portOpen()) waiting += std::size_t(port->inBufferCount());
    }
    add("port input bytes", waiting, kFrameTextCap);
    add("event queue", rig.t.loop.scheduler().size(), kQueueCap);
    add("simulator wire events", rig.wire->events().size(), sim::kHistoryCap);
    add("simulator device history", rig.deviceHistory(), 2 * sim::kHistoryCap);
}

// Non-empty and empty frames of a recorded log, as the player reads them.
void CountRecorded(const std::filesystem::path& log, SoakReport& r) {
    LogReader reader;
    if (!reader.open(log)) return;
    for (std::string frame; reader.next(frame);)
        (frame.empty() ? r.emptyReads : r.recorded)++;
}

}  // namespace

const std::vector<std::string>& SoakDevices() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> v;
        for (const DeviceSetup& s : Setups())
            v.push_back(s.name);
        return v;
    }();
    return names;
}

long ResidentKb() {
    std::FILE* f = std::fopen("/proc/self/statm", "r");
    if (!f) return 0;
    long size = 0, resident = 0;
    const int read = std::fscanf(f, "%ld %ld", &size, &resident);
    std::fclose(f);
    return read == 2 ? resident * (::sysconf(_SC_PAGESIZE) / 1024) : 0;
}

SoakReport RunSoak(const std::string& device, double virtualMinutes, int codesEveryMinutes,
                   const std::function<void(const SoakReport&)>& progress) {
    SoakReport r;
    r.device = device;
    const DeviceSetup* setup = nullptr;
    for (const DeviceSetup& s : Setups())
        if (s.name == device) setup = &s;
    if (!setup) return r;
    const auto started = std::chrono::steady_clock::now();
    Rig rig(*setup);
    App& app = *rig.t;
    FrmMain& m = app.frmMain();
    app.hooks.FrameDecoded = [&] {
        if (app.Recording && !app.RawFrame.empty()) r.decoded++;
    };
    const long minutes = long(virtualMinutes + 0.5);
    rig.t.loop.setLimitMs(rig.t.loop.nowMs() + (minutes + 10) * 60000LL);
    ConnectSession(app);
    r.connected = app.Connected;
    if (app.Connected) {
        m.mnuEditRecord.onClick();
        Field* buttons[] = {&m.cmdRequestTC, &m.cmdRequestPending, &m.cmdRequestFF};
        long decodedAtHour = 0;
        for (long minute = 1; minute <= minutes && app.Connected; ++minute) {
            rig.t.loop.runFor(60000);
            if (minute == 1) r.rssFirstMinuteKb = ResidentKb();
            if (codesEveryMinutes > 0 && minute % codesEveryMinutes == 0) {
                Field& button = *buttons[r.codeRequests % 3];
                if (button.enabled()) r.codeRequests++;
                button.click();
            }
            if (minute % 60 == 0 || minute == minutes) {
                if (r.decoded == decodedAtHour) r.quietHours++;
                decodedAtHour = r.decoded;
                r.virtualHours = double(minute) / 60;
                if (progress) progress(r);
            }
        }
        r.connected = app.Connected;
        RecorderScreen(app).cmdStop.click();
    }
    r.rssEndKb = ResidentKb();
    r.virtualHours = double(rig.t.loop.nowMs()) / 3600000.0;
    CountRecorded(LogFilePath(rig.t.dir.path(), "Untitled"), r);
    CollectBuffers(rig, r);
    for (const MessageBox& box : rig.t.dialogs.shown())
        r.messages.push_back(box.title + ": " + box.text);
    r.realSeconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    return r;
}

std::vector<std::string> SoakFailures(const SoakReport& r, long rssGrowthLimitKb) {
    std::vector<std::string> why;
    if (!r.connected) why.push_back("the session was not up at the end");
    if (r.decoded == 0) why.push_back("no frame decoded");
    if (r.decoded != r.recorded) why.push_back("decoded != recorded");
    if (r.quietHours > 0) why.push_back("hours without a frame");
    if (!r.messages.empty()) why.push_back("message boxes shown");
    for (const BufferSize& b : r.buffers)
        if (b.cap > 0 && b.size > b.cap) why.push_back(b.name + " over its cap");
    if (rssGrowthLimitKb >= 0 && r.rssEndKb - r.rssFirstMinuteKb > rssGrowthLimitKb)
        why.push_back("resident memory grew");
    return why;
}

void PrintSoakReport(std::ostream& out, const SoakReport& r) {
    char line[160];
    std::snprintf(line, sizeof line, "%s: %.2f virtual hours in %.1f real seconds\n",
                  r.device.c_str(), r.virtualHours, r.realSeconds);
    out << line;
    std::snprintf(line, sizeof line,
                  "  RSS after 1 virtual minute %ld kB, at the end %ld kB (%+ld kB)\n",
                  r.rssFirstMinuteKb, r.rssEndKb, r.rssEndKb - r.rssFirstMinuteKb);
    out << line;
    out << "  frames decoded " << r.decoded << ", recorded " << r.recorded << " (empty reads "
        << r.emptyReads << "), code requests " << r.codeRequests << ", hours without frames "
        << r.quietHours << ", connected at the end " << (r.connected ? "yes" : "no") << "\n";
    for (const BufferSize& b : r.buffers) {
        std::snprintf(line, sizeof line, "  %-24s %9zu", b.name.c_str(), b.size);
        out << line;
        if (b.cap > 0) out << "  (cap " << b.cap << ")";
        out << "\n";
    }
    for (const std::string& m : r.messages)
        out << "  message box: " << m << "\n";
}

}  // namespace ketrel::soak
