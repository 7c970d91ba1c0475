// soak_bench [--hours N] [--device NAME]: runs each link device's session for N virtual hours
// (24 by default) and prints what it left behind; exits 1 when a soak failed. Each device runs
// in a process of its own, so its resident memory is its own.
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "soak/soak_driver.h"

namespace {

constexpr long kRssGrowthLimitKb = 4096;

int Usage() {
    std::cerr << "usage: soak_bench [--hours N] [--device DORVANE|BR3|KESH|TACTRIX]\n";
    return 2;
}

// One device's soak, printed; the number of failures.
int SoakOne(const std::string& device, double hours) {
    using namespace ketrel::soak;
    SoakReport r = RunSoak(device, hours * 60, 15, [](const SoakReport& at) {
        std::cerr << at.device << ": " << at.virtualHours << " h, " << at.decoded << " frames\n";
    });
    PrintSoakReport(std::cout, r);
    const std::vector<std::string> failures = SoakFailures(r, kRssGrowthLimitKb);
    for (const std::string& why : failures)
        std::cout << "  FAIL: " << why << "\n";
    std::cout.flush();
    return int(failures.size());
}

}  // namespace

int main(int argc, char** argv) {
    double hours = 24;
    std::vector<std::string> devices = ketrel::soak::SoakDevices();
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (i + 1 >= argc) return Usage();
        if (arg == "--hours") {
            hours = std::atof(argv[++i]);
        } else if (arg == "--device") {
            devices = {argv[++i]};
        } else {
            return Usage();
        }
    }
    if (devices.size() == 1) return SoakOne(devices[0], hours) ? 1 : 0;
    bool failed = false;
    for (const std::string& device : devices) {
        std::cout.flush();
        const pid_t child = ::fork();
        if (child == 0) std::_Exit(SoakOne(device, hours) ? 1 : 0);
        int status = 1;
        if (child < 0 || ::waitpid(child, &status, 0) != child || status != 0) failed = true;
    }
    return failed ? 1 : 0;
}
