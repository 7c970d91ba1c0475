#include "sim/engine_model.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace ketrel::sim {

namespace {

constexpr double kPi = 3.14159265358979323846;

// Data bytes of Mode 01 PIDs 00 to 4E, by the standard.
constexpr std::array<std::uint8_t, 0x4F> kPidSizes = {
    4, 4, 2, 2, 1, 1, 1, 1, 1, 1, 1, 1, 2, 1, 1, 1,  // 00-0F
    2, 1, 1, 1, 2, 2, 2, 2, 2, 2, 2, 2, 1, 1, 1, 2,  // 10-1F
    4, 2, 2, 2, 4, 4, 4, 4, 4, 4, 4, 4, 1, 1, 1, 1,  // 20-2F
    1, 2, 2, 1, 4, 4, 4, 4, 4, 4, 4, 4, 2, 2, 2, 2,  // 30-3F
    4, 4, 2, 2, 2, 1, 1, 1, 1, 1, 1, 1, 1, 2, 2,     // 40-4E
};

std::uint8_t clampByte(double v) {
    return static_cast<std::uint8_t>(std::clamp(std::lround(v), 0L, 255L));
}

std::vector<std::uint8_t> word(double v) {
    long w = std::clamp(std::lround(v), 0L, 65535L);
    return {static_cast<std::uint8_t>(w >> 8), static_cast<std::uint8_t>(w & 0xFF)};
}

std::uint8_t percentByte(double pct) {
    return clampByte(pct * 255.0 / 100.0);
}

std::uint8_t trimByte(double pct) {
    return clampByte(pct * 128.0 / 100.0 + 128.0);
}

// Position in the drive cycle: speed and how hard the engine works.
struct Phase {
    double kph, throttle, load;
};

Phase drivePhase(const EngineProfile& p, double seconds) {
    if (seconds < p.idleSeconds) return {0, 12, 22};
    double t = std::fmod(seconds - p.idleSeconds, 60.0);
    if (t < 10) return {p.cruiseKph * t / 10, 38, 68};
    if (t < 40) return {p.cruiseKph + 2 * std::sin(2 * kPi * t / 9), 18, 36};
    if (t < 50) return {p.cruiseKph * (50 - t) / 10, 6, 14};
    return {0, 12, 22};
}

}  // namespace

int PidDataSize(int pid) {
    if (pid < 0 || pid >= static_cast<int>(kPidSizes.size())) return 0;
    return kPidSizes[pid];
}

EngineState EngineAt(const EngineProfile& p, double seconds) {
    EngineState s;
    s.seconds = std::max(0.0, seconds);
    Phase ph = drivePhase(p, s.seconds);
    s.kph = std::max(0.0, ph.kph);
    s.throttlePct = ph.throttle;
    s.loadPct = ph.load;
    double idleWobble = 12 * std::sin(2 * kPi * s.seconds / 3.1);
    s.rpm = s.kph < 1 ? p.idleRpm + idleWobble : p.idleRpm + 300 + s.kph * 25 + ph.load * 6;
    double tau = std::max(1.0, p.warmupSeconds / 3.0);
    s.coolantC = p.operatingC - (p.operatingC - p.ambientC) * std::exp(-s.seconds / tau);
    s.intakeC = p.ambientC + 6 + 4 * (s.coolantC - p.ambientC) / (p.operatingC - p.ambientC + 1);
    s.mafGps = s.rpm / 60.0 * p.displacementL / 2.0 * s.loadPct / 100.0 * 1.2;
    s.mapKpa = 22 + s.loadPct * 0.75;
    s.timingDeg = s.kph < 1 ? 10 : 18 + s.kph / 5 - ph.load / 10;
    s.closedLoop = s.coolantC >= 60;
    s.longTrim = p.longTermTrim;
    if (s.closedLoop) {
        // The upstream sensors switch rich and lean about once a second; the short-term trim
        // leans against them.
        bool rich = std::fmod(s.seconds, 1.2) < 0.6;
        s.o2Upstream = rich ? 0.78 : 0.12;
        s.shortTrim = rich ? -2.3 : 3.1;
        s.o2Downstream = 0.66 + 0.03 * std::sin(2 * kPi * s.seconds / 7);
    } else {
        s.o2Upstream = 0.45;
        s.o2Downstream = 0.45;
        s.shortTrim = 0;
    }
    return s;
}

std::optional<std::vector<std::uint8_t>> EncodePid(int pid, const EngineState& s,
                                                   const PidContext& c) {
    const EngineProfile fallback;
    const EngineProfile& p = c.profile ? *c.profile : fallback;
    switch (pid) {
        case 0x01: {
            int count = std::min(c.storedCount, 127);
            return std::vector<std::uint8_t>{
                static_cast<std::uint8_t>((c.mil ? 0x80 : 0x00) | count), c.monitors[0],
                c.monitors[1], c.monitors[2]};
        }
        case 0x02:
            return std::vector<std::uint8_t>{0, 0};
        case 0x03:
            return std::vector<std::uint8_t>{static_cast<std::uint8_t>(s.closedLoop ? 0x02 : 0x01),
                                             0x00};
        case 0x04:
            return std::vector<std::uint8_t>{percentByte(s.loadPct)};
        case 0x05:
            return std::vector<std::uint8_t>{clampByte(s.coolantC + 40)};
        case 0x06:
        case 0x08:
            return std::vector<std::uint8_t>{trimByte(s.shortTrim)};
        case 0x07:
        case 0x09:
            return std::vector<std::uint8_t>{trimByte(s.longTrim)};
        case 0x0A:
            return std::vector<std::uint8_t>{clampByte(300.0 / 3)};
        case 0x0B:
            return std::vector<std::uint8_t>{clampByte(s.mapKpa)};
        case 0x0C:
            return word(s.rpm * 4);
        case 0x0D:
            return std::vector<std::uint8_t>{clampByte(s.kph)};
        case 0x0E:
            return std::vector<std::uint8_t>{clampByte((s.timingDeg + 64) * 2)};
        case 0x0F:
            return std::vector<std::uint8_t>{clampByte(s.intakeC + 40)};
        case 0x10:
            return word(s.mafGps * 100);
        case 0x11:
            return std::vector<std::uint8_t>{percentByte(s.throttlePct)};
        case 0x12:
            return std::vector<std::uint8_t>{0x04};  // secondary air: off
        case 0x13:
            return std::vector<std::uint8_t>{c.o2Present};
        case 0x1C:
            return std::vector<std::uint8_t>{c.obdStandard};
        case 0x1D:
            return std::vector<std::uint8_t>{c.o2Present};
        case 0x1E:
            return std::vector<std::uint8_t>{0x00};
        case 0x1F:
            return word(s.seconds);
        case 0x21:
            return word(c.distanceMilKm);
        case 0x2F:
            return std::vector<std::uint8_t>{percentByte(p.fuelLevel)};
        case 0x30:
            return std::vector<std::uint8_t>{clampByte(c.warmupsSinceClear)};
        case 0x31:
            return word(c.distanceSinceClearKm);
        case 0x33:
            return std::vector<std::uint8_t>{clampByte(p.baroKpa)};
        case 0x42:
            return word(p.batteryVolts * 1000);
        case 0x45:
        case 0x47:
        case 0x4C:
            return std::vector<std::uint8_t>{percentByte(s.throttlePct)};
        case 0x46:
            return std::vector<std::uint8_t>{clampByte(p.ambientC + 40)};
        default:
            break;
    }
    if (pid >= 0x14 && pid <= 0x1B) {
        // Sensor 1 of each bank (14, 18) sits before the catalyst and switches.
        bool upstream = pid == 0x14 || pid == 0x18;
        double volts = upstream ? s.o2Upstream : s.o2Downstream;
        std::uint8_t trim = upstream && s.closedLoop ? trimByte(s.shortTrim) : 0xFF;
        return std::vector<std::uint8_t>{clampByte(volts / 0.005), trim};
    }
    int size = PidDataSize(pid);
    if (size > 0 && pid != 0x00 && pid != 0x20 && pid != 0x40) {
        return std::vector<std::uint8_t>(static_cast<std::size_t>(size), 0);
    }
    return std::nullopt;
}

}  // namespace ketrel::sim
