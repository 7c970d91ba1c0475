#include "sim/mode5_data.h"

#include <exception>

namespace ketrel::sim {

namespace {

bool isSupportId(int id) {
    return id % 0x20 == 0 && id <= 0xE0;
}

std::optional<int> hexArg(const std::string& text) {
    if (text.empty() || text.size() > 2) return std::nullopt;
    try {
        std::size_t used = 0;
        int v = std::stoi(text, &used, 16);
        if (used == text.size()) return v;
    } catch (const std::exception&) {
    }
    return std::nullopt;
}

}  // namespace

std::optional<O2TestResult> O2TestData::result(int testId, int sensor) const {
    auto it = results_.find({testId, sensor});
    if (it == results_.end()) return std::nullopt;
    return it->second;
}

std::array<std::uint8_t, 4> O2TestData::supportBitmap(int base) const {
    std::array<std::uint8_t, 4> out{};
    for (const auto& [key, r] : results_) {
        const int bit = key.first - base - 1;
        if (bit >= 0 && bit < 32) out[std::size_t(bit / 8)] |= std::uint8_t(0x80u >> (bit % 8));
    }
    return out;
}

std::optional<std::vector<std::uint8_t>> O2TestData::answer(
    const std::vector<std::uint8_t>& request) const {
    if (request.size() < 2 || request[0] != 0x05 || results_.empty()) return std::nullopt;
    const int id = request[1];
    if (request.size() == 2 || isSupportId(id)) {
        if (!isSupportId(id)) return std::nullopt;
        auto bits = supportBitmap(id);
        if (bits == std::array<std::uint8_t, 4>{}) return std::nullopt;
        return std::vector<std::uint8_t>{0x45,    std::uint8_t(id), 0x00,   bits[0],
                                         bits[1], bits[2],          bits[3]};
    }
    const int sensor = request[2];
    auto r = result(id, sensor);
    if (!r) return std::nullopt;
    return std::vector<std::uint8_t>{0x45,     std::uint8_t(id), std::uint8_t(sensor),
                                     r->value, r->minimum,       r->maximum};
}

bool ReadO2TestLine(O2TestData& data, const std::string& keyword,
                    const std::vector<std::string>& args, std::string& error) {
    if (keyword != "o2test") return false;
    std::vector<int> v;
    for (const std::string& a : args) {
        auto n = hexArg(a);
        if (!n) {
            error = "\"" + a + "\" is not a hex byte";
            return true;
        }
        v.push_back(*n);
    }
    if (v.size() != 5) {
        error = "o2test takes a test id, a sensor, a value, a minimum and a maximum";
    } else if (v[0] == 0 || isSupportId(v[0])) {
        error = "o2test: test id " + args[0] + " asks for support, it is no test";
    } else if (v[1] < 1 || v[1] > 8) {
        error = "o2test: sensor " + args[1] + " is not 1 to 8";
    } else {
        data.set(v[0], v[1], {std::uint8_t(v[2]), std::uint8_t(v[3]), std::uint8_t(v[4])});
    }
    return true;
}

}  // namespace ketrel::sim
