// The adapter pulled out mid-session, on each converter: the program's real serial port on a
// pseudo-terminal, a simulated car on the far side, and the far side closed while the session
// scans and records, as a USB adapter vanishes.
#include "sim/kline_ecu.h"
#include "sim/sim_serial_port.h"
#include "sim/vehicle_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <termios.h>
#include <unistd.h>

#include <QAction>
#include <QLabel>
#include <QMainWindow>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <thread>

#include "link/port_map.h"
#include "qt/qt_serial_devices.h"
#include "qt/qt_serial_port.h"
#include "qt_fixture.h"
#include "recording/log_file.h"
#include "recording/recorder.h"
#include "screens/frm_recorder.h"
#include "system/child_process.h"

namespace ketrel {
namespace {

using Clock = std::chrono::steady_clock;

// Polls `pred` without running any event, for at most `ms`.
bool SpinUntil(const std::function<bool()>& pred, int ms) {
    auto end = Clock::now() + std::chrono::milliseconds(ms);
    while (!pred()) {
        if (Clock::now() > end) return false;
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    return true;
}

// A simulated car behind a pseudo-terminal; pull() takes the terminal away under the program.
class CarOnPty {
  public:
    virtual ~CarOnPty() = default;
    virtual bool ready() const = 0;
    // The device path the program opens.
    virtual std::string path() const = 0;
    virtual void pull() = 0;
    // The ports the program must be made with, if it cannot use its own.
    virtual SerialPortFactory* ports() { return nullptr; }
    // Called once the program (and its event loop) exists.
    virtual void attach(EventLoop&) {}
};

// The text or count-byte converter served by ketrel-sim on a pseudo-terminal reached through a
// symbolic link; pulling kills the simulator, whose end closes the terminal's master side.
class SimProgramCar : public CarOnPty {
  public:
    SimProgramCar(const std::string& converter, const std::string& vehicle)
        : link_(Fresh("/tmp/ketrel-pulled-" + converter + "-" + std::to_string(::getpid()))),
          sim_(KETREL_SIM_BINARY,
               {"--converter", converter, "--vehicle", vehicle, "--link", link_}),
          device_(sim_.firstLine()) {}
    ~SimProgramCar() override {
        if (!killed_) sim_.stop(SIGTERM);
        std::error_code ignored;
        std::filesystem::remove(link_, ignored);
    }
    bool ready() const override { return !device_.empty() && std::filesystem::exists(link_); }
    std::string path() const override { return link_; }
    void pull() override {
        sim_.stop(SIGKILL);
        killed_ = true;
    }

  private:
    static std::string Fresh(const std::string& link) {
        std::filesystem::remove(link);
        return link;
    }
    std::string link_;
    test::ChildProcess sim_;
    std::string device_;
    bool killed_ = false;
};

// The master side of a pseudo-terminal that the test holds.
class PtyMaster {
  public:
    PtyMaster() {
        fd_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
        if (fd_ < 0 || ::grantpt(fd_) != 0 || ::unlockpt(fd_) != 0) return;
        path_ = ::ptsname(fd_);
        termios t{};
        ::tcgetattr(fd_, &t);
        ::cfmakeraw(&t);
        ::tcsetattr(fd_, TCSANOW, &t);
    }
    ~PtyMaster() { close(); }
    int fd() const { return fd_; }
    const std::string& path() const { return path_; }
    void close() {
        if (fd_ >= 0) ::close(fd_);
        fd_ = -1;
    }

  private:
    int fd_ = -1;
    std::string path_;
};

class KlineOnPty;

// A K-line cable's port whose bytes travel over the pseudo-terminal through the program's
// real serial port, both ways, while break and baud (which a terminal cannot carry) go to the
// simulated ECU's wire. The wire keeps the ECU's timing and echo; the relay moves its bytes.
class RelayPort : public SerialPort {
  public:
    RelayPort(KlineOnPty& car, const std::string& name);
    void setCommPort(int number) override { real_.setCommPort(number); }
    int commPort() const override { return real_.commPort(); }
    void setSettings(const std::string& s) override {
        real_.setSettings(s);
        far_->setSettings(s);
    }
    std::string settings() const override { return real_.settings(); }
    bool portOpen() const override { return real_.portOpen(); }
    void setPortOpen(bool open) override {
        real_.setPortOpen(open);
        if (!open || !far_->portOpen()) far_->setPortOpen(open);
    }
    void setRThreshold(int count) override { real_.setRThreshold(count); }
    int rThreshold() const override { return real_.rThreshold(); }
    void setInputLen(int count) override { real_.setInputLen(count); }
    void clearInput() override {
        relayIn();
        real_.clearInput();
    }
    int inBufferCount() const override {
        const_cast<RelayPort*>(this)->relayIn();
        return real_.inBufferCount();
    }
    std::string input() override {
        relayIn();
        return real_.input();
    }
    void output(std::string_view bytes) override {
        real_.output(bytes);
        relayOut(bytes.size());
    }
    void setBreak(bool on) override {
        real_.setBreak(on);
        far_->setBreak(on);
    }
    bool setBaud(int rate) override { return real_.setBaud(rate) && far_->setBaud(rate); }
    int commEvent() const override { return real_.commEvent(); }

  private:
    // What the ECU sent so far goes into the terminal, and waits until the port holds it.
    void relayIn();
    // The `count` bytes just written come out of the terminal and go to the ECU.
    void relayOut(std::size_t count);

    KlineOnPty& car_;
    QtSerialPort real_;
    std::unique_ptr<SerialPort> far_;
};

// The KESH or TACTRIX cable on a simulated K-line car, in the test's process: the program's
// ports are relays over the test's pseudo-terminal; pulling closes its master side.
class KlineOnPty : public CarOnPty, public SerialPortFactory {
  public:
    KlineOnPty(SettingsStore& settings, const std::string& vehicleFile)
        : settings_(settings), setup_(sim::LoadVehicleFile(vehicleFile)), ecu_(setup_.vehicle) {}
    bool ready() const override { return !master_.path().empty(); }
    std::string path() const override { return master_.path(); }
    void pull() override { master_.close(); }
    SerialPortFactory* ports() override { return this; }
    void attach(EventLoop& loop) override {
        wire_ = std::make_unique<sim::SimWire>(loop.scheduler(), ecu_);
        simPorts_.plug(1, *wire_);
    }
    std::unique_ptr<SerialPort> create(const std::string& name) override {
        return std::make_unique<RelayPort>(*this, name);
    }

    SettingsStore& settings_;
    QtSerialDeviceLister devices_;
    PtyMaster master_;
    sim::SimSetup setup_;
    sim::KlineEcu ecu_;
    std::unique_ptr<sim::SimWire> wire_;
    sim::SimSerialPortFactory simPorts_;
};

RelayPort::RelayPort(KlineOnPty& car, const std::string& name)
    : car_(car), real_(car.settings_, car.devices_, name), far_(car.simPorts_.create(name)) {
    far_->setCommPort(1);
    far_->setRThreshold(1);
    far_->setOnComm([this] { relayIn(); });
    real_.setOnComm([this] {
        if (real_.commEvent() == kCommEventError) far_->setPortOpen(false);
        fireOnComm();
    });
}

void RelayPort::relayIn() {
    const int fd = car_.master_.fd();
    if (fd < 0 || !far_->portOpen() || !real_.portOpen()) return;
    const std::string bytes = far_->input();
    if (bytes.empty()) return;
    const int before = real_.inBufferCount();
    if (::write(fd, bytes.data(), bytes.size()) != ssize_t(bytes.size())) return;
    SpinUntil([&] { return real_.inBufferCount() >= before + int(bytes.size()); }, 500);
}

void RelayPort::relayOut(std::size_t count) {
    const int fd = car_.master_.fd();
    if (fd < 0 || !far_->portOpen()) return;
    std::string got;
    SpinUntil(
        [&] {
            char buf[256];
            ssize_t n = ::read(fd, buf, sizeof buf);
            if (n > 0) got.append(buf, std::size_t(n));
            return got.size() >= count;
        },
        500);
    if (!got.empty()) far_->output(got);
}

// Whether this process still holds a file open at `path`.
bool HoldsOpen(const std::filesystem::path& path) {
    std::error_code ec;
    const auto want = std::filesystem::weakly_canonical(path, ec);
    for (const auto& e : std::filesystem::directory_iterator("/proc/self/fd", ec)) {
        std::error_code ignored;
        if (std::filesystem::read_symlink(e.path(), ignored) == want) return true;
    }
    return false;
}

std::vector<std::string> ReadLog(const std::filesystem::path& path) {
    std::vector<std::string> frames;
    LogReader r;
    std::string frame;
    if (!r.open(path)) return frames;
    while (r.next(frame))
        frames.push_back(frame);
    return frames;
}

struct Case {
    const char* name;
    const char* hardware;
    const char* vehicle;    // under data/sim
    const char* simulator;  // ketrel-sim's converter; none for the two K-line cables
    const char* keshStart;  // "1" 5-baud, "3" fast initialisation
};
void PrintTo(const Case& c, std::ostream* os) {
    *os << c.name;
}

// Ends the test program with a message when a case has not ended in time: a handler that
// never returns would otherwise hold the run until the harness gives up.
class HangGuard {
  public:
    explicit HangGuard(int seconds)
        : thread_([seconds](std::stop_token stop) {
              std::mutex m;
              std::unique_lock lock(m);
              std::condition_variable_any cv;
              if (cv.wait_for(lock, stop, std::chrono::seconds(seconds), [] { return false; }))
                  return;
              if (stop.stop_requested()) return;
              std::fprintf(stderr, "the case hung: not over after %d s\n", seconds);
              std::abort();
          }) {}

  private:
    std::jthread thread_;
};

class PortPulled : public ::testing::TestWithParam<Case> {};

// Connects, records, pulls the terminal out; the watchdog ends the session with its message,
// the main screen comes back disconnected, the event loop goes on, and the log keeps every
// frame the recorder was handed, closed.
TEST_P(PortPulled, TheSessionEndsWithItsMessageAndTheLogKeepsItsFrames) {
    const Case& c = GetParam();
    HangGuard guard(90);
    const std::string vehicle = std::string(KETREL_DATA_DIR) + "/sim/" + c.vehicle;
    MemorySettingsStore settings;
    std::unique_ptr<CarOnPty> car;
    if (c.simulator)
        car = std::make_unique<SimProgramCar>(c.simulator, vehicle);
    else
        car = std::make_unique<KlineOnPty>(settings, vehicle);
    ASSERT_TRUE(car->ready());
    auto g = std::make_unique<test::GuiApp>(car->ports());
    car->attach(g->desktop->loop());
    const std::pair<const char*, const char*> saved[] = {{"OBDIIHardware", c.hardware},
                                                         {"ConnectPort", "1"},
                                                         {"Log File", "False"},
                                                         {"BR3SetDelay", "True"},
                                                         {"KESH Start", c.keshStart}};
    for (auto [key, value] : saved)
        g->settings.save(kAppName, kSection, key, value);
    SavePortDevicePath(g->settings, 1, car->path());
    SavePortDevicePath(settings, 1, car->path());
    g->startPastSplash();
    App& app = g->app();
    FrmMain& m = app.frmMain();
    // The watchdog shortened from its 10 s floor, so the case stays short.
    m.TimeOutConnect.setInterval(3000);
    auto* w = qobject_cast<QMainWindow*>(g->desktop->windows().windowOf("frmMain"));
    auto* tools = w->findChild<QToolBar*>("Toolbar1");
    auto* connect = tools->findChild<QAction*>("tbConnect");

    // A K-line cable's connecting screen counts the line's idle down; its picture is taken
    // on the next turn of the connect's pump, once the view has drawn the text.
    Field& status = app.frmConnecting().lblControlStatus[1];
    bool counted = false;
    const int watch = status.observe([&] {
        if (counted || status.text() != "Initializing In Progress...3") return;
        QWidget* screen = g->desktop->windows().windowOf("frmConnecting");
        counted = screen && screen->isVisible();
        if (counted && c.hardware == std::string(kKesh))
            QTimer::singleShot(
                0, screen, [screen] { test::Screenshot(screen, "kline_connecting_countdown"); });
    });
    connect->trigger();
    const bool up =
        test::WaitFor([&] { return app.Connected && !app.frmConnecting().visible(); }, 20000);
    status.unobserve(watch);
    ASSERT_TRUE(up) << (g->dialogs.shown().empty() ? std::string("no message")
                                                   : g->dialogs.shown()[0].text);
    if (c.hardware == std::string(kKesh)) {  // the 5-baud wake-up, and the key bytes it read
        EXPECT_TRUE(counted);
        EXPECT_EQ(m.lblKeyword1.text(), "08");
    }
    m.mnuEditRecord.onClick();
    ASSERT_TRUE(app.Recording);
    std::vector<std::string> handed;
    auto write = app.hooks.RecordFrame;
    app.hooks.RecordFrame = [&](const std::string& f) {
        handed.push_back(f);
        write(f);
    };
    ASSERT_TRUE(test::WaitFor([&] { return handed.size() >= 4; }, 10000));

    g->dialogs.clear();
    g->dialogs.answerNext(MsgAnswer::Ok);  // the lost communication
    g->dialogs.answerNext(MsgAnswer::No);  // not saved under a name: Untitled.log stays
    const std::vector<std::string> beforePull = handed;
    car->pull();
    const auto pulledAt = Clock::now();
    EXPECT_TRUE(test::WaitFor([&] { return !app.Connected; }, 15000));
    EXPECT_TRUE(test::WaitFor([&] { return !RecorderScreen(app).loaded(); }, 5000));
    EXPECT_LT(Clock::now() - pulledAt, std::chrono::seconds(10));

    EXPECT_EQ(g->dialogs.titles(),
              (std::vector<std::string>{"Communication Not Found", "Save File"}));
    ASSERT_FALSE(g->dialogs.shown().empty());
    EXPECT_EQ(g->dialogs.shown()[0].text,
              "Unable To Establish Communication.  Please Check Your Connection Then Retry "
              "Again.");
    auto panel = [&](const char* name) {
        return w->statusBar()->findChild<QLabel*>(name)->text().toStdString();
    };
    EXPECT_EQ(panel("Panel1"), "CONNECTION STATUS:  DISCONNECTED");
    EXPECT_EQ(panel("Panel3"), "COM PORT:  N/A");
    EXPECT_TRUE(connect->isEnabled());
    EXPECT_FALSE(tools->findChild<QAction*>("tbDisconnect")->isEnabled());
    for (SerialPort* p : {m.MSComm.get(), m.BR3MSComm.get(), m.KeshMSComm.get()})
        EXPECT_FALSE(p->portOpen());

    // The loop still turns: a timer set now fires.
    bool fired = false;
    QTimer::singleShot(50, w, [&] { fired = true; });
    EXPECT_TRUE(test::WaitFor([&] { return fired; }, 2000));
    test::Screenshot(w, std::string("port_pulled_") + c.name);

    const auto log = LogFilePath(app.appPath(), kWorkingLogName);
    EXPECT_FALSE(HoldsOpen(log));
    const std::vector<std::string> frames = ReadLog(log);
    EXPECT_EQ(frames, handed);
    ASSERT_GE(frames.size(), beforePull.size());
    EXPECT_TRUE(std::equal(beforePull.begin(), beforePull.end(), frames.begin()));
    const std::string raw = test::ReadFile(log);
    EXPECT_TRUE(raw.size() >= 2 && raw.substr(raw.size() - 2) == "\r\n");
    g.reset();
}

INSTANTIATE_TEST_SUITE_P(
    EachConverter, PortPulled,
    ::testing::Values(Case{"dorvane", kDorvane, "vpw.vehicle", "dorvane", "1"},
                      Case{"br3", kBr3, "pwm.vehicle", "br3", "1"},
                      Case{"kesh", kKesh, "iso9141.vehicle", nullptr, "1"},
                      Case{"tactrix", kTactrix, "iso14230.vehicle", nullptr, "3"}),
    [](const ::testing::TestParamInfo<Case>& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace ketrel
