// The scan cycle's pace: ketrel-sim answers at once on a pseudo-terminal (--fast), and a
// headless session, the same one as ketrel-export --connect, scans it for a while. Reports
// frames per second from the first decoded frame to the last, and the processor time (user
// and system) this process spent per frame over the same stretch. The simulator is another
// process, so its own time is not counted.
//
//   bench_scan [--seconds N] [--real-timing] [--sim PATH] [--converter br3 [--vehicle FILE]]
//
// --real-timing keeps the simulator's converter and vehicle delays, for comparison.
// --converter br3 scans the simulated count-byte converter (real timing: its pace is the
// program's own BR3Delay timer) and reports the frames per second against the limit that
// timer sets, 1000 / BR3Delay a second.
//
// The car is the sample car without PID 1C: the poll position of that PID sends nothing, so
// the converter would wait for a command until its idle "S", a pause in every round that
// says nothing about the program.

#include <sys/resource.h>
#include <unistd.h>

#include <QCoreApplication>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "live_session.h"
#include "state/app.h"
#include "system/child_process.h"

namespace {

using Steady = std::chrono::steady_clock;

// A stream that takes everything and keeps nothing: the CSV is made but goes nowhere.
class NullBuffer : public std::streambuf {
  protected:
    int overflow(int c) override { return c; }
    std::streamsize xsputn(const char*, std::streamsize n) override { return n; }
};

double CpuSeconds() {
    rusage u{};
    getrusage(RUSAGE_SELF, &u);
    auto seconds = [](const timeval& t) { return double(t.tv_sec) + double(t.tv_usec) / 1e6; };
    return seconds(u.ru_utime) + seconds(u.ru_stime);
}

// The sample car with PID 1C taken out of its engine module's list; the file's path.
std::filesystem::path CarWithout1C(const std::filesystem::path& folder) {
    std::ifstream in(std::string(KETREL_DATA_DIR) + "/sim/idle_then_drive.vehicle");
    std::ostringstream out;
    for (std::string line; std::getline(in, line);) {
        if (line.rfind("mode1", 0) == 0) {
            std::size_t at = line.find(" 1C");
            if (at != std::string::npos) line.erase(at, 3);
        }
        out << line << '\n';
    }
    std::filesystem::path p = folder / "bench.vehicle";
    std::ofstream(p) << out.str();
    return p;
}

}  // namespace

int main(int argc, char** argv) {
    double seconds = 10;
    bool fast = true;
    std::string sim = KETREL_SIM_BINARY;
    std::string converter = "dorvane";
    std::string vehicle;
    for (int i = 1; i < argc; ++i) {
        std::string a = argv[i];
        if (a == "--seconds" && i + 1 < argc) {
            seconds = std::atof(argv[++i]);
        } else if (a == "--real-timing") {
            fast = false;
        } else if (a == "--sim" && i + 1 < argc) {
            sim = argv[++i];
        } else if (a == "--converter" && i + 1 < argc) {
            converter = argv[++i];
        } else if (a == "--vehicle" && i + 1 < argc) {
            vehicle = argv[++i];
        } else {
            std::cerr << "usage: bench_scan [--seconds N] [--real-timing] [--sim PATH]"
                         " [--converter br3 [--vehicle FILE]]\n";
            return 2;
        }
    }
    QCoreApplication qapp(argc, argv);
    auto folder = std::filesystem::temp_directory_path() /
                  ("ketrel-scan-bench-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder / "Log");
    const bool br3 = converter == "br3";
    if (br3) fast = false;
    if (vehicle.empty()) {
        vehicle =
            br3 ? std::string(KETREL_DATA_DIR) + "/sim/vpw.vehicle" : CarWithout1C(folder).string();
    }
    int status = 1;
    {
        std::vector<std::string> args{"--converter", converter, "--link", (folder / "car").string(),
                                      "--vehicle",   vehicle};
        if (fast) args.push_back("--fast");
        ketrel::test::ChildProcess simulator(sim, args);
        if (simulator.pid() <= 0 || simulator.firstLine().empty()) {
            std::cerr << "bench_scan: can't start " << sim << "\n";
            return 1;
        }
        ketrel::exporter::ExportOptions options;
        options.connect = true;
        options.hardware = br3 ? ketrel::kBr3 : ketrel::kDorvane;
        options.port = (folder / "car").string();
        options.seconds = seconds;
        NullBuffer nothing;
        std::ostream csv(&nothing);
        std::ostringstream messages;
        ketrel::exporter::LiveSession session(options, {folder / "config", folder}, csv, messages);

        long frames = 0;
        Steady::time_point firstAt, lastAt;
        double firstCpu = 0, lastCpu = 0;
        ketrel::App& app = session.app();
        auto writeRow = app.hooks.FrameDecoded;
        app.hooks.FrameDecoded = [&] {
            writeRow();
            lastAt = Steady::now();
            lastCpu = CpuSeconds();
            if (frames++ == 0) {
                firstAt = lastAt;
                firstCpu = lastCpu;
            }
        };
        status = session.run();
        if (frames < 2) {
            std::cerr << "bench_scan: the session decoded " << frames << " frames\n"
                      << messages.str();
        } else {
            double wall = std::chrono::duration<double>(lastAt - firstAt).count();
            double perFrame = (lastCpu - firstCpu) / double(frames - 1);
            double rate = double(frames - 1) / wall;
            std::printf("converter: %s, %s\n", converter.c_str(),
                        fast ? "answers at once (--fast)" : "real timing");
            std::printf("frames: %ld in %.2f s\n", frames, wall);
            std::printf("frames per second: %.1f\n", rate);
            if (br3) {
                int delay = app.frmMain().BR3Delay.interval();
                double limit = 1000.0 / delay;
                std::printf("limit at BR3Delay %d ms: %.2f a second; reached %.1f %%\n", delay,
                            limit, 100.0 * rate / limit);
            }
            std::printf("processor time per frame: %.1f us (%.1f %% of one core)\n", perFrame * 1e6,
                        100.0 * (lastCpu - firstCpu) / wall);
        }
    }
    std::filesystem::remove_all(folder);
    return status;
}
