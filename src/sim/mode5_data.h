#pragma once
#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace ketrel::sim {

// One oxygen-sensor test result as a module keeps it: the test value and its two limits.
struct O2TestResult {
    std::uint8_t value = 0, minimum = 0, maximum = 0;
};

// The oxygen-sensor tests a module has run (Mode 05): results by test id and sensor. Test ids
// 01 to 0A are the standard ones, ids above 20 the maker's own. The sensor is the number the
// tester sends, 1 to 8.
class O2TestData {
  public:
    // Holds the result of a test of a sensor, replacing what was there.
    void set(int testId, int sensor, O2TestResult result) { results_[{testId, sensor}] = result; }
    // A module without oxygen-sensor tests answers no Mode 05 request at all.
    bool empty() const { return results_.empty(); }
    // The result of a test of a sensor; nothing when the module has not run it.
    std::optional<O2TestResult> result(int testId, int sensor) const;

    // The data bytes of the module's answer to a Mode 05 request (service byte first): a test
    // id and a sensor give "45 id sensor value min max"; a support id alone (00, 20, ... E0)
    // gives "45 id 00" and the four bitmap bytes of the ids above it. Nothing for what the
    // module lacks.
    std::optional<std::vector<std::uint8_t>> answer(const std::vector<std::uint8_t>& request) const;

    // The four bitmap bytes of a support id: bit for id base+1 first, over every sensor.
    std::array<std::uint8_t, 4> supportBitmap(int base) const;

  private:
    std::map<std::pair<int, int>, O2TestResult> results_;
};

// Reads one line of a vehicle file's oxygen-sensor section into the module's data:
//   o2test  TT S VV MM XX     test id (hex), sensor (1 to 8), value, minimum, maximum (hex)
// False when the keyword is not one of this section; an error text in `error` when it is but
// its values are wrong.
bool ReadO2TestLine(O2TestData& data, const std::string& keyword,
                    const std::vector<std::string>& args, std::string& error);

}  // namespace ketrel::sim
