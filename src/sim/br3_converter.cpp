#include "sim/br3_converter.h"

#include <algorithm>

namespace ketrel::sim {

namespace {

constexpr std::int64_t kMs = 1000;
constexpr std::uint8_t kWake = 0x20;
constexpr std::uint8_t kObdAddress = 0x33;  // the address a 5-baud wake-up calls
constexpr std::uint8_t kFailedWake = 0x82;

// Microseconds that `count` bytes take at `baud`, 10 bits each.
std::int64_t lineMicros(int baud, std::size_t count) {
    return static_cast<std::int64_t>(10'000'000.0 * double(count) / baud + 0.5);
}

bool isJ1850(Protocol p) {
    return p == Protocol::J1850Vpw || p == Protocol::J1850Pwm;
}

const char* protocolName(Protocol p) {
    switch (p) {
        case Protocol::J1850Vpw:
            return "J1850 VPW";
        case Protocol::J1850Pwm:
            return "J1850 PWM";
        case Protocol::Iso9141:
            return "ISO 9141";
        case Protocol::Iso14230:
            return "ISO 14230";
    }
    return "?";
}

}  // namespace

std::string SpacedHex(const std::vector<std::uint8_t>& bytes) {
    std::string out;
    for (std::uint8_t b : bytes) {
        if (!out.empty()) out += ' ';
        out += HexText({b});
    }
    return out;
}

Br3Converter::Br3Converter(SimVehicle& vehicle) : vehicle_(vehicle) {}

void Br3Converter::attach(DeviceLink& l) {
    SimDevice::attach(l);
    startMicros_ = link().nowMicros();
    reset();
}

double Br3Converter::engineSeconds() {
    return double(link().nowMicros() - startMicros_) / 1e6;
}

void Br3Converter::later(std::int64_t atMicros, std::function<void()> fn) {
    link().at(atMicros, [this, generation = generation_, fn = std::move(fn)] {
        if (generation == generation_) fn();
    });
}

void Br3Converter::cancelAll() {
    ++generation_;
}

void Br3Converter::reset() {
    if (!attached()) return;
    cancelAll();
    awake_ = false;
    active_.reset();
    partial_.clear();
    expected_ = 0;
    busyUntil_ = 0;
}

void Br3Converter::onHostOpen() {
    partial_.clear();
    expected_ = 0;
}

void Br3Converter::setSilent(bool on) {
    if (on == silent_) return;
    silent_ = on;
    if (on && attached()) {
        cancelAll();
        partial_.clear();
    }
}

void Br3Converter::onByte(unsigned char byte) {
    if (silent_) return;
    std::int64_t now = link().nowMicros();
    if (!partial_.empty() && now - lastByteAt_ >= timing.frameGapMs * kMs) {
        note("dropped an unfinished frame: " + SpacedHex(partial_));
        partial_.clear();
    }
    lastByteAt_ = now;
    if (partial_.empty()) {
        if (byte == kWake) {
            take({byte});
            return;
        }
        if (!awake_) {
            note("asleep, ignored: " + HexText({byte}));
            return;
        }
        if (byte == 0 || byte >= 0x80) {
            note("neither a count nor a command, ignored: " + HexText({byte}));
            return;
        }
        // 0x40 + n: a command of n bytes; below 0x40: a count of the bytes that follow.
        expected_ = 1u + (byte >= 0x40 ? byte - 0x40u : byte);
    }
    partial_.push_back(byte);
    if (partial_.size() < expected_) return;
    Bytes bytes;
    bytes.swap(partial_);
    take(bytes);
}

void Br3Converter::take(const Bytes& bytes) {
    KeepInHistory(commands_, SpacedHex(bytes));
    if (bytes[0] == kWake) {
        awake_ = true;
        answer(link().nowMicros() + timing.wakeMs * kMs, {{0x01, 0xFF}}, false);
    } else if (bytes[0] >= 0x40) {
        startCommand(bytes);
    } else {
        vehicleFrame(bytes);
    }
}

void Br3Converter::startCommand(const Bytes& bytes) {
    // A start command ends whatever the last protocol was doing.
    cancelAll();
    active_.reset();
    std::int64_t now = link().nowMicros();
    busyUntil_ = now;
    Protocol p = vehicle_.protocol;
    bool there = vehicle_.responding && !vehicle_.ecus.empty();
    bool kLine = p == Protocol::Iso9141 || p == Protocol::Iso14230;
    auto key = vehicle_.keyBytes;
    int command = bytes.size() > 1 ? bytes[1] : -1;
    switch (command) {
        case 0x00:
        case 0x01: {
            Protocol wanted = command == 0x00 ? Protocol::J1850Vpw : Protocol::J1850Pwm;
            if (there && p == wanted) {
                startProtocol(p, timing.startMs, {0x02, static_cast<std::uint8_t>(command)});
            } else {
                note(std::string(protocolName(wanted)) + " started: no vehicle answers");
            }
            return;
        }
        case 0x02:
            if (there && kLine && bytes.size() == 3 && bytes[2] == kObdAddress) {
                startProtocol(p, timing.slowInitMs, {0x02, key[0], key[1]});
            } else {
                note("5-baud wake-up: nothing woke");
                answer(now + timing.slowInitMs * kMs, {{kFailedWake}}, false);
            }
            return;
        case 0x03:
            if (there && p == Protocol::Iso14230) {
                startProtocol(p, timing.fastInitMs,
                              {0x02, 0xF1, vehicle_.ecus.front().address, 0xC1, key[0], key[1]});
            } else {
                note("fast initialisation: no vehicle answers");
            }
            return;
        default:
            note("unknown command: " + SpacedHex(bytes));
    }
}

void Br3Converter::startProtocol(Protocol protocol, int delayMs, Bytes reply) {
    std::int64_t at = link().nowMicros() + delayMs * kMs;
    later(at, [this, protocol] {
        active_ = protocol;
        note(std::string(protocolName(protocol)) + " running");
    });
    answer(at, {std::move(reply)}, false);
}

void Br3Converter::vehicleFrame(const Bytes& bytes) {
    if (!active_) {
        note("no protocol running, frame not answered: " + SpacedHex(bytes));
        return;
    }
    bool j1850 = isJ1850(*active_);
    // count, header (3), mode, check, and on J1850 the trailing byte
    std::size_t least = j1850 ? 7 : 6;
    if (bytes.size() < least) {
        note("frame too short: " + SpacedHex(bytes));
        return;
    }
    Bytes request(bytes.begin() + 4, bytes.end() - (j1850 ? 2 : 1));
    if (j1850 && request[0] == 0x02 && request.size() == 2) request.push_back(0x00);  // frame 0
    auto messages = vehicle_.answer(request, engineSeconds());
    std::int64_t start = std::max(link().nowMicros(), busyUntil_);
    if (!j1850) {
        if (messages.empty()) {
            note("no module answers " + SpacedHex(request));
            return;
        }
        answer(start + timing.p2Ms * kMs, std::move(messages), true);
        return;
    }
    std::size_t pick = bytes.back();
    if (pick < 1 || pick > messages.size()) {
        note("no message " + std::to_string(pick) + " of " + std::to_string(messages.size()) +
             " to " + SpacedHex(request));
        return;
    }
    const SimMessage& m = messages[pick - 1];
    Bytes piece{static_cast<std::uint8_t>(m.size())};
    piece.insert(piece.end(), m.begin(), m.end());
    answer(start + timing.j1850Ms * kMs, {std::move(piece)}, false);
}

void Br3Converter::answer(std::int64_t at, std::vector<Bytes> pieces, bool kLine) {
    bool garble = garbleCount_ > 0, cut = cutCount_ > 0;
    if (garble) --garbleCount_;
    if (cut) --cutCount_;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        Bytes& piece = pieces[i];
        if (cut) piece.resize(std::max<std::size_t>(1, piece.size() / 2));
        if (garble) {
            for (std::uint8_t& b : piece) {
                noise_ = noise_ * 1664525u + 1013904223u;
                b ^= static_cast<std::uint8_t>((noise_ >> 24) | 0x01);
            }
        }
        if (i > 0) at += timing.p2Ms * kMs;
        at = schedulePiece(at, piece, kLine);
    }
    busyUntil_ = std::max(busyUntil_, at);
}

std::int64_t Br3Converter::schedulePiece(std::int64_t at, const Bytes& piece, bool kLine) {
    auto send = [this](Bytes bytes) { link().send(std::string(bytes.begin(), bytes.end())); };
    if (kLine && timing.kLineTime) {
        // Each byte is passed on as soon as it has come over the K-line.
        for (std::uint8_t b : piece) {
            at += lineMicros(10400, 1);
            later(at, [send, b] { send({b}); });
        }
        return at;
    }
    later(at, [send, piece] { send(piece); });
    return timing.lineTime ? at + lineMicros(19200, piece.size()) : at;
}

}  // namespace ketrel::sim
