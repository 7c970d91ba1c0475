#include "sim/sim_vehicle.h"

#include <algorithm>
#include <cctype>

namespace ketrel::sim {

namespace {

PidContext contextFor(const SimEcu& ecu, const EngineProfile& profile) {
    PidContext c;
    c.profile = &profile;
    c.mil = ecu.mil;
    c.storedCount = static_cast<int>(ecu.stored.size());
    for (int i = 0; i < 3; ++i)
        c.monitors[i] = ecu.monitors[i];
    c.obdStandard = ecu.obdStandard;
    std::uint8_t o2 = 0;
    for (int pid = 0x14; pid <= 0x1B; ++pid) {
        if (ecu.mode1.count(pid)) o2 |= static_cast<std::uint8_t>(1u << (pid - 0x14));
    }
    c.o2Present = o2;
    c.distanceSinceClearKm = ecu.distanceSinceClearKm;
    c.distanceMilKm = ecu.mil ? 120 : 0;
    c.warmupsSinceClear = ecu.warmupsSinceClear;
    return c;
}

bool isBitmapPid(int pid) {
    return pid == 0x00 || pid == 0x20 || pid == 0x40 || pid == 0x60;
}

bool anyAbove(const std::set<int>& pids, int pid) {
    return pids.upper_bound(pid) != pids.end();
}

}  // namespace

std::array<std::uint8_t, 4> SupportBitmap(const std::set<int>& pids, int base) {
    std::array<std::uint8_t, 4> out{};
    for (int i = 1; i <= 32; ++i) {
        int pid = base + i;
        bool on = pids.count(pid) > 0;
        if (i == 32) on = on || anyAbove(pids, pid);
        if (on) out[(i - 1) / 8] |= static_cast<std::uint8_t>(0x80u >> ((i - 1) % 8));
    }
    return out;
}

std::uint8_t J1850Crc(const std::vector<std::uint8_t>& bytes) {
    std::uint8_t crc = 0xFF;
    for (std::uint8_t b : bytes) {
        crc ^= b;
        for (int i = 0; i < 8; ++i)
            crc = (crc & 0x80) ? static_cast<std::uint8_t>((crc << 1) ^ 0x1D)
                               : static_cast<std::uint8_t>(crc << 1);
    }
    return static_cast<std::uint8_t>(~crc);
}

std::uint8_t ByteSum(const std::vector<std::uint8_t>& bytes) {
    unsigned sum = 0;
    for (std::uint8_t b : bytes)
        sum += b;
    return static_cast<std::uint8_t>(sum & 0xFF);
}

std::optional<std::uint16_t> ParseTroubleCode(const std::string& text) {
    static const std::string kLetters = "PCBU";
    if (text.size() != 5) return std::nullopt;
    auto letter =
        kLetters.find(static_cast<char>(std::toupper(static_cast<unsigned char>(text[0]))));
    if (letter == std::string::npos) return std::nullopt;
    unsigned value = static_cast<unsigned>(letter) << 14;
    for (int i = 1; i < 5; ++i) {
        char c = static_cast<char>(std::toupper(static_cast<unsigned char>(text[i])));
        if (!std::isxdigit(static_cast<unsigned char>(c))) return std::nullopt;
        unsigned d = std::isdigit(static_cast<unsigned char>(c)) ? unsigned(c - '0')
                                                                 : unsigned(c - 'A' + 10);
        if (i == 1 && d > 3) return std::nullopt;
        value |= d << (4 * (4 - i));
    }
    return static_cast<std::uint16_t>(value);
}

std::string HexText(const std::vector<std::uint8_t>& bytes) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string out;
    for (std::uint8_t b : bytes) {
        out += kDigits[b >> 4];
        out += kDigits[b & 0x0F];
    }
    return out;
}

SimMessage SimVehicle::frame(const SimEcu& ecu, const std::vector<std::uint8_t>& data) const {
    std::uint8_t first = 0x48, second = 0x6B;
    switch (protocol) {
        case Protocol::J1850Vpw:
        case Protocol::Iso9141:
            break;
        case Protocol::J1850Pwm:
            first = 0x41;
            break;
        case Protocol::Iso14230:
            first = static_cast<std::uint8_t>(0x80 | (data.size() & 0x3F));
            second = 0xF1;
            break;
    }
    // Sized once: growing a three-byte header by the data trips a false overread warning of
    // GCC 12 in optimised builds.
    SimMessage m(3 + data.size());
    m[0] = first;
    m[1] = second;
    m[2] = ecu.address;
    std::copy(data.begin(), data.end(), m.begin() + 3);
    bool j1850 = protocol == Protocol::J1850Vpw || protocol == Protocol::J1850Pwm;
    m.push_back(j1850 ? J1850Crc(m) : ByteSum(m));
    return m;
}

std::optional<std::vector<std::uint8_t>> SimVehicle::mode1Data(SimEcu& ecu, int pid,
                                                               double seconds) {
    if (isBitmapPid(pid)) {
        bool answers = pid == 0x00 || anyAbove(ecu.mode1, pid);
        if (!answers) return std::nullopt;
        auto bits = SupportBitmap(ecu.mode1, pid);
        return std::vector<std::uint8_t>(bits.begin(), bits.end());
    }
    if (!ecu.mode1.count(pid)) return std::nullopt;
    if (auto it = ecu.fixed.find(pid); it != ecu.fixed.end()) return it->second;
    return EncodePid(pid, EngineAt(engine, seconds), contextFor(ecu, engine));
}

std::optional<std::vector<std::uint8_t>> SimVehicle::mode2Data(SimEcu& ecu, int pid) {
    if (pid == 0x00) {
        if (ecu.mode2.empty()) return std::nullopt;
        auto bits = SupportBitmap(ecu.mode2, 0x00);
        return std::vector<std::uint8_t>(bits.begin(), bits.end());
    }
    if (!ecu.mode2.count(pid)) return std::nullopt;
    if (pid == 0x02) {
        return std::vector<std::uint8_t>{static_cast<std::uint8_t>(ecu.freezeCode >> 8),
                                         static_cast<std::uint8_t>(ecu.freezeCode & 0xFF)};
    }
    if (ecu.freezeCode == 0) return std::nullopt;  // no frame stored
    if (auto it = ecu.freezeFixed.find(pid); it != ecu.freezeFixed.end()) return it->second;
    return EncodePid(pid, EngineAt(engine, freezeAtSeconds), contextFor(ecu, engine));
}

std::vector<SimMessage> SimVehicle::codeMessages(const SimEcu& ecu, std::uint8_t mode,
                                                 const std::vector<std::uint16_t>& codes) const {
    std::vector<SimMessage> out;
    std::size_t i = 0;
    do {
        std::vector<std::uint8_t> data{mode};
        for (int k = 0; k < 3; ++k, ++i) {
            std::uint16_t code = i < codes.size() ? codes[i] : 0;
            data.push_back(static_cast<std::uint8_t>(code >> 8));
            data.push_back(static_cast<std::uint8_t>(code & 0xFF));
        }
        out.push_back(frame(ecu, data));
    } while (i < codes.size());
    return out;
}

std::vector<SimMessage> SimVehicle::vinMessages(const SimEcu& ecu, int pid) const {
    if (vin.empty()) return {};
    if (pid == 0x00) return {frame(ecu, {0x49, 0x00, 0x40, 0x00, 0x00, 0x00})};
    if (pid == 0x01) return {frame(ecu, {0x49, 0x01, 0x05})};
    if (pid != 0x02) return {};
    std::string text = vin;
    text.resize(17, ' ');
    text.insert(0, 3, '\0');  // 20 bytes in five messages of four
    std::vector<SimMessage> out;
    for (int n = 0; n < 5; ++n) {
        std::vector<std::uint8_t> data{0x49, 0x02, static_cast<std::uint8_t>(n + 1)};
        for (int k = 0; k < 4; ++k)
            data.push_back(static_cast<std::uint8_t>(text[n * 4 + k]));
        out.push_back(frame(ecu, data));
    }
    return out;
}

std::vector<SimMessage> SimVehicle::answer(const std::vector<std::uint8_t>& request,
                                           double seconds) {
    std::vector<SimMessage> out;
    if (!responding || request.empty()) return out;
    std::uint8_t mode = request[0];
    if (refusal) {
        for (const SimEcu& ecu : ecus)
            out.push_back(frame(ecu, {0x7F, mode, refusal}));
        return out;
    }
    int pid = request.size() > 1 ? request[1] : -1;
    for (SimEcu& ecu : ecus) {
        if (mode == 0x01 && pid >= 0) {
            if (auto d = mode1Data(ecu, pid, seconds)) {
                std::vector<std::uint8_t> data{0x41, static_cast<std::uint8_t>(pid)};
                data.insert(data.end(), d->begin(), d->end());
                out.push_back(frame(ecu, data));
            }
        } else if (mode == 0x02 && pid >= 0) {
            // One freeze frame is stored, frame 0; a request without the number asks for it.
            bool frameZero = request.size() < 3 || request[2] == 0x00;
            if (auto d = frameZero ? mode2Data(ecu, pid) : std::nullopt) {
                std::vector<std::uint8_t> data{0x42, static_cast<std::uint8_t>(pid), 0x00};
                data.insert(data.end(), d->begin(), d->end());
                out.push_back(frame(ecu, data));
            }
        } else if (mode == 0x03 || mode == 0x07) {
            auto msgs = codeMessages(ecu, static_cast<std::uint8_t>(mode + 0x40),
                                     mode == 0x03 ? ecu.stored : ecu.pending);
            out.insert(out.end(), msgs.begin(), msgs.end());
        } else if (mode == 0x04) {
            ecu.stored.clear();
            ecu.pending.clear();
            ecu.freezeCode = 0;
            ecu.mil = false;
            ecu.distanceSinceClearKm = 0;
            ecu.warmupsSinceClear = 0;
            out.push_back(frame(ecu, {0x44}));
        } else if (mode == 0x05) {
            if (auto d = ecu.o2Tests.answer(request)) out.push_back(frame(ecu, *d));
        } else if (mode == 0x06 && pid >= 0) {
            for (const auto& data : ecu.mode6.answer(pid))
                out.push_back(frame(ecu, data));
        } else if (mode == 0x09 && pid >= 0 && &ecu == &ecus.front()) {
            auto msgs = vinMessages(ecu, pid);
            out.insert(out.end(), msgs.begin(), msgs.end());
        }
    }
    return out;
}

SimVehicle SimVehicle::Default() {
    SimVehicle v;
    v.vin = "1KTRL23T5SM000417";
    SimEcu ecu;
    ecu.mode1 = {0x01, 0x03, 0x04, 0x05, 0x06, 0x07, 0x0B, 0x0C, 0x0D, 0x0E,
                 0x0F, 0x10, 0x11, 0x13, 0x14, 0x15, 0x1C, 0x1F, 0x21, 0x2F};
    ecu.mode2 = {0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x0B, 0x0C, 0x0D, 0x0E, 0x0F, 0x11};
    ecu.stored = {*ParseTroubleCode("P0301")};
    ecu.pending = {*ParseTroubleCode("P0171")};
    ecu.freezeCode = ecu.stored.front();
    ecu.mil = true;
    v.ecus.push_back(ecu);
    return v;
}

}  // namespace ketrel::sim
