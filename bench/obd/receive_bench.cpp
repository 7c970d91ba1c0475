#include <benchmark/benchmark.h>

#include <unistd.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "core/data_tab.h"
#include "core/headless_replay.h"
#include "export.h"
#include "link/dorvane_receive.h"
#include "obd/pid_catalogue.h"

namespace {

using namespace ketrel;

// A scan cycle's worth of DORVANE replies: the PIDs a car polls, in the order it answers.
const std::vector<std::string>& CycleFrames() {
    static const std::vector<std::string> frames{
        "V486B1041010007E500", "V486B104103020000", "V486B104104A0",   "V486B104105A0",
        "V486B10410682",       "V486B1041077E",     "V486B10410880",   "V486B10410981",
        "V486B10410B65",       "V486B10410C1AF8",   "V486B10410D64",   "V486B10410E90",
        "V486B10410F50",       "V486B1041100C4E",   "V486B10411133",   "V486B10411201",
        "V486B1041148090",     "V486B104115707F",   "V486B10411A2080", "V486B10411B9980",
        "V486B10411C06",       "V486B10411E00",     "V486B10411F012C", "V486B10420C001AF8",
        "V486B104205000A0",    "V486B104206008A00",
    };
    return frames;
}

// Frames per second into the fields, in a live session (the watchdog restarted every frame).
void BM_DorvaneReceive(benchmark::State& state) {
    std::ostringstream err;
    HeadlessReplay session(err, "bench: ", "DORVANE", ReplayUnits{});
    App& app = session.app();
    app.PlayingLog = false;
    app.Connected = true;
    if (state.range(0) == 1) ShowGridStyle(app);
    const auto& frames = CycleFrames();
    std::size_t i = 0;
    for (auto _ : state) {
        SetDorvaneFrame(app, frames[i]);
        DORVANERECEIVE(app);
        if (++i == frames.size()) i = 0;
    }
    benchmark::DoNotOptimize(app.frmMain().lblRPM.text());
    state.SetItemsProcessed(state.iterations());
    state.SetLabel(state.range(0) == 1 ? "grid style" : "label style");
}
BENCHMARK(BM_DorvaneReceive)->Arg(0)->Arg(1);

// A log of `count` frames made from the scan cycle, written once per run.
std::string GeneratedLog(int count) {
    std::filesystem::path p = std::filesystem::temp_directory_path() /
                              ("ketrel-bench-" + std::to_string(::getpid()) + ".log");
    if (!std::filesystem::exists(p)) {
        std::ofstream out(p, std::ios::binary);
        const auto& frames = CycleFrames();
        for (int i = 0; i < count; ++i)
            out << '"' << frames[std::size_t(i) % frames.size()] << "\"\r\n";
    }
    return p.string();
}

// The whole export of a 100,000-frame log to CSV, the output written to /dev/null.
void BM_Export100k(benchmark::State& state) {
    std::string log = GeneratedLog(100000);
    exporter::ExportOptions options;
    for (auto _ : state) {
        std::ifstream in(log, std::ios::binary);
        std::ofstream out("/dev/null", std::ios::binary);
        std::ostringstream err;
        int status = exporter::RunExport(options, in, log, out, err);
        if (status != 0) state.SkipWithError("export failed");
    }
    std::filesystem::remove(log);
    state.SetItemsProcessed(state.iterations() * 100000);
}
BENCHMARK(BM_Export100k)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
