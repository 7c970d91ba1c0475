#pragma once
#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "sim/engine_model.h"
#include "sim/mode5_data.h"
#include "sim/mode6_data.h"

namespace ketrel::sim {

// The four vehicle protocols; they differ here in the header bytes and the check byte.
enum class Protocol { J1850Vpw, J1850Pwm, Iso9141, Iso14230 };

// One control module of the simulated vehicle.
struct SimEcu {
    std::uint8_t address = 0x10;  // answering module address (third header byte)
    std::string name = "engine";
    std::set<int> mode1;  // Mode 01 PIDs it answers; the bitmap PIDs 00/20/40 follow from these
    std::set<int> mode2;  // Mode 02 PIDs of its freeze frame; PID 00 follows from these
    std::vector<std::uint16_t> stored, pending;  // trouble codes as the two standard bytes
    std::uint16_t freezeCode = 0;                // the code that stored the freeze frame
    bool mil = false;
    std::map<int, std::vector<std::uint8_t>> fixed;        // Mode 01 PIDs held at these bytes
    std::map<int, std::vector<std::uint8_t>> freezeFixed;  // Mode 02 PIDs held at these bytes
    std::array<std::uint8_t, 3> monitors{0x07, 0x65, 0x00};
    std::uint8_t obdStandard = 0x01;
    double distanceSinceClearKm = 1500;
    int warmupsSinceClear = 12;
    O2TestData o2Tests;  // Mode 05 oxygen-sensor test results
    Mode6Data mode6;     // on-board test results (Mode 06)
};

// One message of a module as it travels: three header bytes, the data, the check byte.
using SimMessage = std::vector<std::uint8_t>;

// The simulated vehicle: its modules, codes, freeze frame and VIN, and the engine that
// makes the live values move. It answers a request the way the modules on the bus do.
class SimVehicle {
  public:
    Protocol protocol = Protocol::J1850Vpw;
    std::vector<SimEcu> ecus;
    std::string vin;
    std::array<std::uint8_t, 2> keyBytes{0x08, 0x08};
    EngineProfile engine;
    double freezeAtSeconds = 95;  // engine time of the freeze-frame snapshot
    bool responding = true;       // ignition on: the modules answer
    // Non-zero: every module refuses every request with 7F, the mode and this code.
    std::uint8_t refusal = 0;

    // The messages of every module to one request (mode byte first, then its parameters), at
    // `seconds` after the engine started. No message is the answer to what nobody supports.
    std::vector<SimMessage> answer(const std::vector<std::uint8_t>& request, double seconds);

    // A module's message for the given data: header, data, check byte.
    SimMessage frame(const SimEcu& ecu, const std::vector<std::uint8_t>& data) const;

    // A vehicle with one engine module supporting the usual PIDs, for tests and the tool.
    static SimVehicle Default();

  private:
    std::optional<std::vector<std::uint8_t>> mode1Data(SimEcu& ecu, int pid, double seconds);
    std::optional<std::vector<std::uint8_t>> mode2Data(SimEcu& ecu, int pid);
    std::vector<SimMessage> codeMessages(const SimEcu& ecu, std::uint8_t mode,
                                         const std::vector<std::uint16_t>& codes) const;
    std::vector<SimMessage> vinMessages(const SimEcu& ecu, int pid) const;
};

// The four bitmap bytes of a support PID (base 00, 20, 40): bit for PID base+1 first, and
// the last bit set when any PID above base+32 is supported.
std::array<std::uint8_t, 4> SupportBitmap(const std::set<int>& pids, int base);

// J1850 CRC-8 (polynomial 1D, start FF, inverted) and the ISO byte sum.
std::uint8_t J1850Crc(const std::vector<std::uint8_t>& bytes);
std::uint8_t ByteSum(const std::vector<std::uint8_t>& bytes);

// A trouble code text such as "P0301" as its two bytes; nothing if it is not a code.
std::optional<std::uint16_t> ParseTroubleCode(const std::string& text);

// A message as upper-case hex text with no separator, as the text converter sends it.
std::string HexText(const std::vector<std::uint8_t>& bytes);

}  // namespace ketrel::sim
