#include "sim/mode6_data.h"

#include <set>

#include "sim/sim_vehicle.h"

namespace ketrel::sim {
namespace {

constexpr std::uint8_t kAnswer = 0x46;

bool isBase(int id) {
    return id % 0x20 == 0 && id <= 0xE0;
}

std::optional<unsigned long> hexArg(const std::string& text, std::size_t digits) {
    if (text.empty() || text.size() > digits) return std::nullopt;
    try {
        std::size_t used = 0;
        unsigned long v = std::stoul(text, &used, 16);
        if (used == text.size()) return v;
    } catch (const std::exception&) {
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::array<std::uint8_t, 4>> Mode6Data::bitmap(int base) const {
    if (auto it = support.find(base); it != support.end()) return it->second;
    std::set<int> ids;
    for (const Mode6Result& r : results)
        ids.insert(r.testId);
    // Base 00 is always answered; a later base only when a test lies above it.
    if (base != 0 && ids.upper_bound(base) == ids.end()) return std::nullopt;
    if (base == 0 && ids.empty()) return std::nullopt;
    return SupportBitmap(ids, base);
}

std::vector<std::vector<std::uint8_t>> Mode6Data::answer(int testId) const {
    std::vector<std::vector<std::uint8_t>> out;
    if (isBase(testId)) {
        if (auto bits = bitmap(testId)) {
            out.push_back({kAnswer, std::uint8_t(testId), 0x00, (*bits)[0], (*bits)[1], (*bits)[2],
                           (*bits)[3]});
        }
        return out;
    }
    for (const Mode6Result& r : results) {
        if (r.testId != testId) continue;
        out.push_back({kAnswer, r.testId, r.component, std::uint8_t(r.value >> 8),
                       std::uint8_t(r.value & 0xFF), std::uint8_t(r.limit >> 8),
                       std::uint8_t(r.limit & 0xFF)});
    }
    return out;
}

std::string AddMode6Setting(Mode6Data& data, const std::string& keyword,
                            const std::vector<std::string>& args) {
    if (keyword == "mode6") {
        if (args.size() != 4) return "mode6 takes a test id, a component, a value and a limit";
        auto id = hexArg(args[0], 2), comp = hexArg(args[1], 2);
        auto value = hexArg(args[2], 4), limit = hexArg(args[3], 4);
        if (!id || !comp || !value || !limit || *id == 0 || isBase(int(*id)))
            return "mode6 takes hex numbers and a test id that is not a support id";
        data.results.push_back(Mode6Result{std::uint8_t(*id), std::uint8_t(*comp),
                                           std::uint16_t(*value), std::uint16_t(*limit)});
        return {};
    }
    if (keyword == "mode6-support") {
        if (args.size() != 5) return "mode6-support takes a base and four hex bytes";
        std::array<std::uint8_t, 4> bits{};
        auto base = hexArg(args[0], 2);
        if (!base || !isBase(int(*base))) return "mode6-support takes a base 00, 20, ... E0";
        for (std::size_t i = 0; i < 4; ++i) {
            auto b = hexArg(args[i + 1], 2);
            if (!b) return "\"" + args[i + 1] + "\" is not a hex byte";
            bits[i] = std::uint8_t(*b);
        }
        data.support[int(*base)] = bits;
        return {};
    }
    return "unknown Mode 6 setting \"" + keyword + "\"";
}

}  // namespace ketrel::sim
