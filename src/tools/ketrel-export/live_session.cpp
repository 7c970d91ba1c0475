#include "live_session.h"

#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QSocketNotifier>
#include <cmath>
#include <csignal>
#include <iostream>

#include "core/application.h"
#include "core/session.h"
#include "export_session.h"
#include "link/converters.h"
#include "link/port_map.h"
#include "platform/ini_settings_store.h"
#include "platform/overlay_settings_store.h"
#include "qt/app_folder.h"
#include "qt/qt_event_loop.h"
#include "qt/qt_serial_devices.h"
#include "qt/sim_port_factory.h"
#include "recording/log_file.h"
#include "recording/log_save.h"
#include "recording/recorder.h"
#include "state/app.h"

namespace ketrel::exporter {

namespace {

// The port number a device path of the command line is mapped to, in memory only.
constexpr int kCommandLinePort = 1;

}  // namespace

struct LiveSession::Impl {
    Impl(const ExportOptions& o, const LiveSetup& s, std::ostream& out, std::ostream& err)
        : options(o),
          setup(s),
          out(out),
          err(err),
          ini(s.configRoot, [this](const std::string& text) { say(text); }),
          settings(ini),
          ports(loop, settings, devices),
          dialogs(err) {}

    void putCommandLineOnTop();
    void build();
    void watchStatus();
    void frameDecoded();
    void finish(LiveEnd why);
    void startRecording();
    bool saveRecording();
    int exitStatus() const;
    void say(const std::string& text) { err << "ketrel-export: " << text << '\n' << std::flush; }

    ExportOptions options;
    LiveSetup setup;
    std::ostream& out;
    std::ostream& err;
    QtEventLoop loop;
    IniSettingsStore ini;
    OverlaySettingsStore settings;
    QtSerialDeviceLister devices;
    SimPortFactory ports;
    StreamDialogs dialogs;
    NoLauncher launcher;
    FixedDisplayInfo display;
    std::unique_ptr<App> app;
    std::unique_ptr<Timer> deadline;
    std::vector<Column> columns;
    std::string row, lastStatus, lastPanel;
    long frames = 0;
    bool linked = false;
    bool outputBroken = false;
    bool recordStarted = false;
    LiveEnd end = LiveEnd::Running;
};

void LiveSession::Impl::putCommandLineOnTop() {
    if (!options.hardware.empty())
        settings.save(kAppName, kSection, "OBDIIHardware", options.hardware);
    if (!options.port.empty()) {
        std::string number = options.port;
        if (options.port.find('/') != std::string::npos || IsSimPortPath(options.port)) {
            SavePortDevicePath(settings, kCommandLinePort, options.port);
            number = std::to_string(kCommandLinePort);
        }
        settings.save(kAppName, kSection, "ConnectPort", number);
    }
    if (options.unitsGiven) {
        settings.save(kAppName, kSection, "Temp", options.temp);
        settings.save(kAppName, kSection, "Speed", options.speed);
        settings.save(kAppName, kSection, "Pressure", options.pressure);
    }
}

void LiveSession::Impl::build() {
    putCommandLineOnTop();
    app = std::make_unique<App>(
        Platform{loop, dialogs, settings, launcher, display, ports, setup.appPath});
    InstallApplication(*app);
    // The main screen's load reads the settings, as the program's start does; no window shows.
    app->frmMain().load();
    columns = ValueColumns(*app);
    app->hooks.FrameDecoded = [this] { frameDecoded(); };
    watchStatus();
}

// The connecting screen's status line and the status bar's connection text, when they change.
void LiveSession::Impl::watchStatus() {
    Field& status = app->frmConnecting().lblControlStatus[1];
    status.observe([this, &status] {
        if (status.text().empty()) lastStatus.clear();  // the screen went; a retry says it again
        if (status.text().empty() || status.text() == lastStatus) return;
        lastStatus = status.text();
        say("STATUS: " + lastStatus);
    });
    StatusPanel& panel = app->frmMain().panel(1);
    panel.observe([this, &panel] {
        if (panel.text().empty() || panel.text() == lastPanel) return;
        lastPanel = panel.text();
        say(lastPanel);
    });
}

void LiveSession::Impl::frameDecoded() {
    // The scan's first frame start completes an empty frame: there is nothing to write.
    if (outputBroken || app->RawFrame.empty()) return;
    if (frames++ == 0) WriteCsvHeader(columns, out);
    WriteCsvRow(app->RawFrame, columns, row, out);
    out.flush();
    if (!out) {
        say("could not write the output");
        outputBroken = true;
        // Not from inside the chunk handler, which goes on to mark the link as up.
        loop.scheduler().post([this] { finish(LiveEnd::OutputFailed); });
    }
}

// As the log controller opens and its Record button is pressed: a fresh Untitled.log.
void LiveSession::Impl::startRecording() {
    DeleteWorkingLog(setup.appPath);
    app->RecordCount = 0;
    app->RecordIndex = 0;
    recordStarted = RecorderOf(*app).beginRecording();
    if (recordStarted) say("recording into Log/" + options.record + ".log");
}

// Closes the recording and saves it under its name, as the save dialogue does.
bool LiveSession::Impl::saveRecording() {
    RecorderOf(*app).endRecording();
    const LogSaveResult result = SaveRecordedLog(*app, options.record);
    if (!result.saved()) {
        say("could not save the recording as Log/" + options.record + ".log (" + result.fileError +
            "); it stays in Log/" + kWorkingLogName + ".log");
        return false;
    }
    if (!result.catalogueError.empty())
        say("the log is saved but not listed in the catalogue: " + result.catalogueError);
    say("recorded " + std::to_string(app->LogFrames) + " frames into Log/" + options.record +
        ".log");
    return true;
}

void LiveSession::Impl::finish(LiveEnd why) {
    if (end != LiveEnd::Running) return;
    end = why;
    // The recording ends before the session, so that nothing asks whether to save it.
    if (app->Recording) RecorderOf(*app).endRecording();
    if (app->frmConnecting().loaded()) {
        if (!app->ConnectCancelled) CancelConnect(*app);
    } else if (app->Connected) {
        EndSession(*app);
    }
}

int LiveSession::Impl::exitStatus() const {
    switch (end) {
        case LiveEnd::Interrupted:
            return kExitOk;
        case LiveEnd::TimeUp:
            return linked ? kExitOk : kExitFailed;
        default:
            return kExitFailed;
    }
}

LiveSession::LiveSession(const ExportOptions& options, const LiveSetup& setup, std::ostream& out,
                         std::ostream& err)
    : d_(std::make_unique<Impl>(options, setup, out, err)) {
    d_->build();
}

LiveSession::~LiveSession() = default;

int LiveSession::run() {
    Impl& d = *d_;
    App& app = *d.app;
    std::string hardware = app.GetSetting("OBDIIHardware");
    if (const ConverterDriver* driver = FindConverter(hardware); driver && !driver->connect) {
        d.say("the " + hardware + " is not available yet in this build (see --hardware)");
        return kExitUsage;
    }
    if (d.options.seconds > 0) {
        double ms = std::ceil(d.options.seconds * 1000.0);
        d.deadline = std::make_unique<Timer>(d.loop.scheduler(), int(std::min(ms, 2e9)));
        d.deadline->setHandler([&d] {
            d.deadline->stop();
            d.finish(LiveEnd::TimeUp);
        });
        d.deadline->start();
    }
    ConnectSession(app);
    d.linked = app.Connected;
    if (d.linked && d.end == LiveEnd::Running && !d.options.record.empty()) d.startRecording();
    if (d.end == LiveEnd::Running && !app.Connected) {
        d.end = LiveEnd::NoLink;
        if (app.GetSetting("OBDIIHardware").empty() || app.GetSetting("ConnectPort").empty())
            d.say("give --hardware and --port, or choose them in the program's settings");
    }
    while (d.end == LiveEnd::Running && app.Connected)
        d.loop.waitAndPump();
    if (d.end == LiveEnd::Running) d.end = LiveEnd::LinkLost;
    if (app.Connected) EndSession(app);
    if (d.end == LiveEnd::TimeUp && !d.linked)
        d.say("the link did not come up within the time given");
    if (d.deadline) d.deadline->stop();
    if (d.recordStarted && !d.saveRecording()) return kExitFailed;
    return d.exitStatus();
}

void LiveSession::interrupt() {
    d_->finish(LiveEnd::Interrupted);
}

LiveEnd LiveSession::end() const {
    return d_->end;
}

long LiveSession::frames() const {
    return d_->frames;
}

App& LiveSession::app() {
    return *d_->app;
}

namespace {

int gSignalPipe[2] = {-1, -1};

void onSignal(int) {
    char c = 1;
    [[maybe_unused]] ssize_t n = ::write(gSignalPipe[1], &c, 1);
}

// SIGINT and SIGTERM wake the event loop through a pipe; the first one stops the run, and
// from then on the signals do what they do by default, so a second Ctrl-C ends at once.
class SignalWatch {
  public:
    explicit SignalWatch(std::function<void()> onStop) : onStop_(std::move(onStop)) {
        if (::pipe2(gSignalPipe, O_CLOEXEC | O_NONBLOCK) != 0) return;
        notifier_ = std::make_unique<QSocketNotifier>(gSignalPipe[0], QSocketNotifier::Read);
        QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] {
            char buf[16];
            while (::read(gSignalPipe[0], buf, sizeof buf) > 0) {
            }
            std::signal(SIGINT, SIG_DFL);
            std::signal(SIGTERM, SIG_DFL);
            onStop_();
        });
        struct sigaction sa {};
        sa.sa_handler = onSignal;
        sigemptyset(&sa.sa_mask);
        sa.sa_flags = SA_RESTART;
        sigaction(SIGINT, &sa, nullptr);
        sigaction(SIGTERM, &sa, nullptr);
    }
    ~SignalWatch() {
        std::signal(SIGINT, SIG_DFL);
        std::signal(SIGTERM, SIG_DFL);
        notifier_.reset();
        for (int& fd : gSignalPipe) {
            if (fd >= 0) ::close(fd);
            fd = -1;
        }
    }

  private:
    std::function<void()> onStop_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace

int RunLive(int& argc, char** argv, const ExportOptions& options) {
    QCoreApplication qapp(argc, argv);
    QCoreApplication::setApplicationName("Ketrel");
    // A closed output is told by the write, not by a signal that ends the program at once.
    std::signal(SIGPIPE, SIG_IGN);
    LiveSetup setup;
    setup.configRoot = DefaultConfigRoot();
    setup.appPath = ResolveAppFolder(QCoreApplication::applicationDirPath().toStdString());
    LiveSession session(options, setup, std::cout, std::cerr);
    SignalWatch stopOnSignal([&session] { session.interrupt(); });
    return session.run();
}

}  // namespace ketrel::exporter
