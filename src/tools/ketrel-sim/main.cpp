// ketrel-sim: runs a simulated converter and vehicle on a pseudo-terminal, in real time, so
// that the program (or any terminal tool) can open it as it would a serial port.
//
//   ketrel-sim --converter dorvane|br3 [--vehicle FILE] [--link PATH] [--fast] [--verbose]
//
// Prints the terminal's device path on the first line of standard output and runs until it
// is interrupted (SIGINT, SIGTERM); the symbolic link made with --link is removed on exit.

#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "sim/br3_converter.h"
#include "sim/dorvane_converter.h"
#include "sim/poll_event_loop.h"
#include "sim/pty_link.h"
#include "sim/vehicle_file.h"

namespace {

volatile std::sig_atomic_t gStop = 0;

void onSignal(int) {
    gStop = 1;
}

struct Options {
    std::string converter;
    std::string vehicleFile;
    std::string linkPath;
    bool verbose = false;
    bool fast = false;
};

constexpr const char* kUsage =
    "usage: ketrel-sim --converter dorvane|br3 [--vehicle FILE] [--link PATH] [--fast]\n"
    "                  [--verbose]\n"
    "  --converter NAME  the converter to simulate: dorvane (text) or br3 (count bytes);\n"
    "                    kesh and tactrix need a break on the line, which a pseudo-terminal\n"
    "                    can't carry: use the port sim: in the program instead\n"
    "  --vehicle FILE    the simulated vehicle and its protocol (see data/sim/*.vehicle);\n"
    "                    a built-in car if not given\n"
    "  --link PATH       also make a symbolic link PATH to the terminal's device\n"
    "  --fast            answer at once: no wait for the vehicle and no time on the line;\n"
    "                    dorvane still pauses 2 ms before each \"S\", and sends \"S\" again\n"
    "                    after 50 ms without a command (for measuring the program)\n"
    "  --verbose         log every byte received and sent on standard error\n";

// Reads the command line; an error message, or nothing when it is fine.
std::optional<std::string> parse(int argc, char** argv, Options& o) {
    for (int i = 1; i < argc; ++i) {
        std::string a = argv[i];
        auto value = [&](std::string& into) -> bool {
            if (i + 1 >= argc) return false;
            into = argv[++i];
            return true;
        };
        if (a == "--converter") {
            if (!value(o.converter)) return "--converter needs a name";
        } else if (a == "--vehicle") {
            if (!value(o.vehicleFile)) return "--vehicle needs a file";
        } else if (a == "--link") {
            if (!value(o.linkPath)) return "--link needs a path";
        } else if (a == "--fast") {
            o.fast = true;
        } else if (a == "--verbose") {
            o.verbose = true;
        } else if (a == "--help" || a == "-h") {
            std::cout << kUsage;
            std::exit(0);
        } else {
            return "unknown argument " + a;
        }
    }
    if (o.converter.empty()) return "--converter is required";
    return std::nullopt;
}

// Bytes as readable text: printable characters as they are, others as <XX>.
std::string shown(std::string_view bytes) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string out;
    for (char c : bytes) {
        auto b = static_cast<unsigned char>(c);
        if (b >= 0x20 && b < 0x7F) {
            out += c;
        } else {
            out += '<';
            out += kDigits[b >> 4];
            out += kDigits[b & 0x0F];
            out += '>';
        }
    }
    return out;
}

}  // namespace

int main(int argc, char** argv) {
    using namespace ketrel::sim;
    Options opt;
    if (auto err = parse(argc, argv, opt)) {
        std::cerr << "ketrel-sim: " << *err << "\n" << kUsage;
        return 2;
    }
    if (opt.converter != "dorvane" && opt.converter != "br3") {
        if (opt.converter == "kesh" || opt.converter == "tactrix") {
            std::cerr << "ketrel-sim: the " << opt.converter
                      << " cable makes its wake-up with a break on the K-line, and a "
                         "pseudo-terminal can't carry a break.\n"
                      << "ketrel-sim: give the program the port sim: (or sim:VEHICLE-FILE) "
                         "instead: it runs the car in-process,\n"
                      << "ketrel-sim: for example  ketrel-export --connect --hardware "
                      << opt.converter << " --port sim:data/sim/iso9141.vehicle\n";
        } else {
            std::cerr << "ketrel-sim: unknown converter \"" << opt.converter
                      << "\"; use dorvane or br3\n";
        }
        return 2;
    }

    SimSetup setup;
    try {
        if (opt.vehicleFile.empty()) {
            setup.vehicle = SimVehicle::Default();
        } else {
            setup = LoadVehicleFile(opt.vehicleFile);
        }
    } catch (const VehicleFileError& e) {
        std::cerr << "ketrel-sim: " << e.what() << "\n";
        return 2;
    }

    PollEventLoop loop;
    std::unique_ptr<SimDevice> device;
    std::function<void(const std::string&)>* trace = nullptr;
    if (opt.converter == "br3") {
        auto br3 = std::make_unique<Br3Converter>(setup.vehicle);
        if (opt.fast) br3->timing = Br3Timing::Fast();
        trace = &br3->trace;
        device = std::move(br3);
    } else {
        auto dorvane = std::make_unique<DorvaneConverter>(setup.vehicle, setup.firmware);
        if (opt.fast) dorvane->timing = DorvaneTiming::Fast();
        trace = &dorvane->trace;
        device = std::move(dorvane);
    }
    PtyLink link(loop, *device);
    if (opt.verbose) {
        auto stamp = [&loop] {
            char buf[32];
            std::snprintf(buf, sizeof buf, "%10.3f ", double(loop.clock().nowMicros()) / 1e6);
            return std::string(buf);
        };
        link.onTraffic = [stamp](const std::string& what, std::string_view bytes) {
            std::cerr << stamp() << what << ' ' << shown(bytes) << std::endl;
        };
        *trace = [stamp](const std::string& line) {
            std::cerr << stamp() << "note " << line << std::endl;
        };
    }
    std::string error;
    if (!link.open(error)) {
        std::cerr << "ketrel-sim: " << error << "\n";
        return 1;
    }

    bool linked = false;
    if (!opt.linkPath.empty()) {
        std::error_code ec;
        if (std::filesystem::is_symlink(opt.linkPath, ec))
            std::filesystem::remove(opt.linkPath, ec);
        std::filesystem::create_symlink(link.devicePath(), opt.linkPath, ec);
        if (ec) {
            std::cerr << "ketrel-sim: can't make the link " << opt.linkPath << ": " << ec.message()
                      << "\n";
            return 1;
        }
        linked = true;
    }

    struct sigaction sa {};
    sa.sa_handler = onSignal;
    sigemptyset(&sa.sa_mask);
    sigaction(SIGINT, &sa, nullptr);
    sigaction(SIGTERM, &sa, nullptr);

    std::cout << link.devicePath() << std::endl;
    loop.run(&gStop);

    if (linked) {
        std::error_code ec;
        if (std::filesystem::is_symlink(opt.linkPath, ec) &&
            std::filesystem::read_symlink(opt.linkPath, ec) == link.devicePath()) {
            std::filesystem::remove(opt.linkPath, ec);
        }
    }
    return 0;
}
