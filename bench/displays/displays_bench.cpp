// What the displays cost the processor: the desktop program (windows drawn off screen)
// connects to the in-process simulated car behind the text converter ("sim:" port), then runs
// in real time for a few seconds in each state: the main screen alone, the scope at "1x" and
// at "8x" on RPM, and both gauge screens open. For each it prints the processor time (user and
// system) this process spent over the wall time, as a share of one core. The simulated car
// runs in this process too, so the main screen's figure is the floor the others stand on.
//
//   bench_displays [--seconds N]

#include <sys/resource.h>
#include <unistd.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QStyleFactory>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include "display/gauges.h"
#include "display/scope.h"
#include "link/port_map.h"
#include "platform/dialogs.h"
#include "platform/settings_store.h"
#include "qt/desktop_app.h"
#include "screens/frm_guage.h"
#include "screens/frm_mult_guage.h"
#include "screens/frm_scope.h"

namespace {

double CpuSeconds() {
    rusage u{};
    getrusage(RUSAGE_SELF, &u);
    auto seconds = [](const timeval& t) { return double(t.tv_sec) + double(t.tv_usec) / 1e6; };
    return seconds(u.ru_utime) + seconds(u.ru_stime);
}

// Lets Qt run for ms of real time.
void RunFor(int ms) {
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

// Runs for the given seconds and prints the share of a core spent.
void Measure(const char* what, double seconds) {
    const double cpu0 = CpuSeconds();
    QElapsedTimer wall;
    wall.start();
    RunFor(int(seconds * 1000));
    const double cpu = CpuSeconds() - cpu0, elapsed = double(wall.nsecsElapsed()) / 1e9;
    std::printf("%-34s %6.2f s wall  %6.3f s cpu  %5.1f %% of a core\n", what, elapsed, cpu,
                100 * cpu / elapsed);
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
    double seconds = 4;
    for (int i = 1; i < argc; ++i)
        if (!std::strcmp(argv[i], "--seconds") && i + 1 < argc) seconds = std::atof(argv[++i]);
    if (!std::getenv("QT_QPA_PLATFORM")) setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication qapp(argc, argv);
    QApplication::setStyle(QStyleFactory::create("Fusion"));

    const auto folder =
        std::filesystem::temp_directory_path() / ("ketrel-displays-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder);
    ketrel::ScriptedDialogs dialogs;
    ketrel::MemorySettingsStore settings;
    settings.save(ketrel::kAppName, ketrel::kSection, "OBDIIHardware", ketrel::kDorvane);
    settings.save(ketrel::kAppName, ketrel::kSection, "ConnectPort", "1");
    settings.save(ketrel::kAppName, ketrel::kSection, "Log File", "False");
    ketrel::SavePortDevicePath(settings, 1, "sim:");
    int result = 0;
    {
        ketrel::DesktopOptions o;
        o.appPath = folder;
        o.configRoot = folder / "config";
        o.dialogs = &dialogs;
        o.settings = &settings;
        ketrel::DesktopApp desktop(o);
        ketrel::App& app = desktop.app();
        desktop.start();
        app.frmMain().SplashScreen.stop();
        app.frmSplash().unload();
        app.frmMain().setEnabled(true);
        app.frmMain().mnuVehicleConnect.click();
        if (!app.Connected) {
            std::fprintf(stderr, "no connection to the simulated car\n");
            result = 1;
        } else {
            RunFor(1000);
            Measure("main screen, all PIDs polled", seconds);

            // The floor of the scope and the tachometer: RPM polled alone, nothing drawn.
            const auto wanted = app.PidWanted;
            for (std::size_t i = 0; i < 42; ++i)
                app.PidWanted[i] = i == 12;
            Measure("RPM polled alone, no display", seconds);
            app.PidWanted = wanted;

            ketrel::FrmScope& scope = *ketrel::ScopeScreen(app);
            app.frmMain().mnuViewScope.click();
            scope.mnuRPM.click();
            Measure("scope at 1x (75 ms)", seconds);
            for (int i = 0; i < 3; ++i)
                scope.cmdIncrease.click();
            Measure((std::string("scope at ") + scope.lblSpeed.text() + " (9 ms)").c_str(),
                    seconds);
            scope.unload();

            app.frmMain().mnuViewGuage.click();
            Measure("RPM gauge", seconds);
            ketrel::MultGuageScreen(app)->show();
            RunFor(2000);  // the lamp test of the five dials
            Measure("RPM gauge and multiple gauges", seconds);
            ketrel::GuageScreen(app)->unload();
            Measure("multiple gauges", seconds);
            ketrel::MultGuageScreen(app)->unload();
        }
        app.frmMain().mnuVehicleDisconnect.click();
    }
    std::filesystem::remove_all(folder);
    return result;
}
