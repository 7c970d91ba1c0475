// A vehicle file for the simulator: read, made into the simulated car, and asked what a
// scan asks (the PIDs its modules list, at the start, on the way and long after, the codes,
// the freeze frame, the oxygen-sensor and on-board tests, the VIN, a clear).
#include <cstddef>
#include <cstdint>
#include <set>
#include <sstream>
#include <vector>

#include "sim/vehicle_file.h"

using ketrel::sim::SimVehicle;

namespace {

using Request = std::vector<std::uint8_t>;

// The requests a scan of this car makes: what its modules list, the support ids and a few
// that nobody lists.
std::vector<Request> ScanRequests(const SimVehicle& car) {
    std::set<int> mode1{0x00, 0x20, 0x40, 0x60, 0x01, 0x0C}, mode2{0x00, 0x02}, tests{0x00, 0x20};
    std::set<int> mode6{0x00, 0x20, 0xE0};
    for (const auto& ecu : car.ecus) {
        mode1.insert(ecu.mode1.begin(), ecu.mode1.end());
        mode2.insert(ecu.mode2.begin(), ecu.mode2.end());
        for (const auto& r : ecu.mode6.results)
            mode6.insert(r.testId);
        for (int id = 1; id <= 0x0A; ++id)
            if (ecu.o2Tests.result(id, 1)) tests.insert(id);
    }
    std::vector<Request> out;
    for (int pid : mode1)
        out.push_back({0x01, std::uint8_t(pid)});
    for (int pid : mode2)
        out.push_back({0x02, std::uint8_t(pid), 0x00});
    for (int id : tests)
        out.push_back({0x05, std::uint8_t(id), 0x01});
    for (int id : mode6)
        out.push_back({0x06, std::uint8_t(id)});
    out.insert(out.end(), {{0x03}, {0x07}, {0x09, 0x00}, {0x09, 0x02}, {0x04}, {0x03}});
    return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace ketrel::sim;
    std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
    SimSetup setup;
    try {
        setup = ReadVehicleFile(in);
    } catch (const VehicleFileError&) {
        return 0;
    }
    SimVehicle& car = setup.vehicle;
    const std::vector<Request> requests = ScanRequests(car);
    for (double seconds : {0.0, 45.5, 1.0e6})
        for (const Request& r : requests)
            car.answer(r, seconds);
    return 0;
}
