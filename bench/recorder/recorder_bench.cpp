#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "core/data_tab.h"
#include "link/frame_dispatch.h"
#include "platform/desktop.h"
#include "platform/null_serial_port.h"
#include "platform/settings_store.h"
#include "platform/virtual_event_loop.h"
#include "recording/log_file.h"
#include "recording/recorder.h"
#include "screens/frm_recorder.h"
#include "state/app.h"

namespace {

using namespace ketrel;
namespace fs = std::filesystem;

// A scan cycle's worth of text converter replies, in the order a car answers them.
const std::vector<std::string>& CycleFrames() {
    static const std::vector<std::string> frames{
        "V486B1041010007E500", "V486B104103020000", "V486B104104A0",   "V486B104105A0",
        "V486B10410682",       "V486B1041077E",     "V486B10410880",   "V486B10410C1AF8",
        "V486B10410D64",       "V486B10410E90",     "V486B10410F50",   "V486B1041100C4E",
        "V486B10411133",       "V486B1041148090",   "V486B10411F012C", "V486B10420C001AF8",
    };
    return frames;
}

// The application on virtual time in a folder of its own, with the recorder and the data tab.
struct BenchApp {
    BenchApp() : dir(fs::temp_directory_path() / ("ketrel-bench-" + std::to_string(::getpid()))) {
        fs::create_directories(dir / "Log");
        app =
            std::make_unique<App>(Platform{loop, dialogs, settings, launcher, display, ports, dir});
        app->Temp = "F";
        app->OBDIIHardware = kDorvane;
        InstallDataTab(*app);
        InstallRecorder(*app);
    }
    ~BenchApp() {
        app.reset();
        std::error_code ignored;
        fs::remove_all(dir, ignored);
    }
    fs::path dir;
    VirtualEventLoop loop;
    ScriptedDialogs dialogs;
    MemorySettingsStore settings;
    RecordingLauncher launcher;
    FixedDisplayInfo display;
    NullSerialPortFactory ports;
    std::unique_ptr<App> app;
};

// A 100,000-frame log played at speed 0: frames per second of processor time, and the virtual
// time the replay took (each frame waits one turn of the event loop).
void BM_Replay100k(benchmark::State& state) {
    constexpr int kFrames = 100000;
    BenchApp b;
    {
        std::ofstream out(LogFilePath(b.dir, "bench"), std::ios::binary);
        const auto& frames = CycleFrames();
        for (int i = 0; i < kFrames; ++i)
            out << '"' << frames[std::size_t(i) % frames.size()] << "\"\r\n";
    }
    App& app = *b.app;
    FrmRecorder& r = RecorderScreen(app);
    Recorder& rec = RecorderOf(app);
    r.show();
    r.sldSpeed.setValue(0);
    double virtualMs = 0;
    for (auto _ : state) {
        app.LogName = "bench";
        app.LogType = "DORVANE";
        app.LogFrames = kFrames;
        const auto start = b.loop.clock().nowMicros();
        r.cmdPlay.setEnabled(true);
        r.cmdPlay.click();
        while (rec.replaying())
            b.loop.waitAndPump();
        virtualMs = double(b.loop.clock().nowMicros() - start) / 1000.0;
        if (rec.framesPlayed() != kFrames) state.SkipWithError("the replay did not play it all");
    }
    state.SetItemsProcessed(state.iterations() * kFrames);
    state.counters["virtual_ms"] = virtualMs;
}
BENCHMARK(BM_Replay100k)->Unit(benchmark::kMillisecond)->Iterations(3);

// The record step of a receive path with the recorder on: the 200-row list and one line
// written through to Log/Untitled.log.
void BM_RecordFrame(benchmark::State& state) {
    BenchApp b;
    App& app = *b.app;
    app.Connected = true;
    app.frmMain().mnuEditRecord.onClick();
    if (!app.Recording) state.SkipWithError("the recording did not start");
    const auto& frames = CycleFrames();
    std::size_t i = 0;
    for (auto _ : state) {
        NoteReceivedFrame(app, frames[i]);
        if (++i == frames.size()) i = 0;
    }
    RecorderScreen(app).cmdStop.click();
    state.SetItemsProcessed(state.iterations());
    state.counters["file_bytes"] = double(fs::file_size(LogFilePath(b.dir, kWorkingLogName)));
}
BENCHMARK(BM_RecordFrame);

}  // namespace

BENCHMARK_MAIN();
