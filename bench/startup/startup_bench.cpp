// Time from nothing to the main window shown: the Qt backends, the application object, the
// settings read and saved through the INI file, the splash and the main window's first
// show. The 1500 ms splash timer is not waited for.
#include <benchmark/benchmark.h>

#include <unistd.h>
#include <QApplication>
#include <QStyleFactory>
#include <QWidget>
#include <filesystem>
#include <string>

#include "platform/dialogs.h"
#include "qt/desktop_app.h"

namespace {

std::filesystem::path tempFolder() {
    auto p =
        std::filesystem::temp_directory_path() / ("ketrel-bench-" + std::to_string(::getpid()));
    std::filesystem::create_directories(p);
    return p;
}

void StartupToMainWindow(benchmark::State& state) {
    auto folder = tempFolder();
    for (auto _ : state) {
        ketrel::ScriptedDialogs dialogs;
        ketrel::DesktopOptions o;
        o.appPath = folder;
        o.configRoot = folder / "config";
        o.dialogs = &dialogs;
        ketrel::DesktopApp desktop(o);
        desktop.start();
        QWidget* main = desktop.windows().windowOf("frmMain");
        while (!main || !main->isVisible()) {
            QApplication::processEvents();
            main = desktop.windows().windowOf("frmMain");
        }
        QApplication::processEvents();  // the first paint
        state.PauseTiming();
        desktop.app().frmMain().SplashScreen.stop();
        state.ResumeTiming();
    }
    std::filesystem::remove_all(folder);
}
BENCHMARK(StartupToMainWindow)->Unit(benchmark::kMillisecond)->Iterations(20);

}  // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
