#include "sim/kline_ecu.h"

#include <algorithm>
#include <cstdlib>

#include "sim/br3_converter.h"
#include "sim/sim_wire.h"

namespace ketrel::sim {

namespace {

constexpr int kLineBaud = 10400;
constexpr int kFastInitBaud = 200;
constexpr std::uint8_t kObdAddress = 0x33;
constexpr std::uint8_t kSync = 0x55;
constexpr std::uint8_t kFastPatternByte = 0xF0;  // at 200 baud: 25 ms low, 25 ms high
constexpr std::uint8_t kStartCommunication = 0x81;
constexpr std::uint8_t kStartCommunicationOk = 0xC1;

std::int64_t lineMicros(std::size_t count) {
    return SimWire::byteMicros(kLineBaud, count);
}

std::string hexByte(std::uint8_t b) {
    return HexText({b});
}

}  // namespace

KlineEcu::KlineEcu(SimVehicle& vehicle) : vehicle_(vehicle) {}

void KlineEcu::attach(DeviceLink& l) {
    SimDevice::attach(l);
    startMicros_ = link().nowMicros();
    link().setSendBaud(kLineBaud);
    link().setLineEcho(echo_);
}

double KlineEcu::engineSeconds() {
    return double(link().nowMicros() - startMicros_) / 1e6;
}

void KlineEcu::setEcho(bool on) {
    echo_ = on;
    if (attached()) link().setLineEcho(on);
}

void KlineEcu::setSilent(bool on) {
    silent_ = on;
    if (on && attached()) {
        ++generation_;
        request_.clear();
        decoding_ = false;
    }
}

void KlineEcu::later(std::int64_t atMicros, std::function<void()> fn) {
    link().at(atMicros, [this, generation = generation_, fn = std::move(fn)] {
        if (generation == generation_ && !silent_) fn();
    });
}

void KlineEcu::sleep(const std::string& why) {
    if (state_ != State::Asleep) note(why);
    state_ = State::Asleep;
    ++generation_;
    request_.clear();
    link().cancel(requestDue_);
    link().cancel(dropDue_);
}

void KlineEcu::refuseAddress(const std::string& why) {
    note("5-baud address refused: " + why);
    decoding_ = false;
    link().cancel(addressCheck_);
}

void KlineEcu::onBreak(bool on) {
    if (silent_) return;
    std::int64_t now = link().nowMicros();
    if (on) {
        if (!decoding_) {
            // A falling edge from the idle line: the start of a wake-up, whichever it is.
            sleep("wake-up pattern on the line, link dropped");
            decoding_ = true;
            startEdge_ = lastEdge_ = now;
            bits_.clear();
            lineLow_ = true;
            addressCheck_ = link().at(startEdge_ + 10 * ms(timing.bitMs), [this] { addressEnd(); });
            return;
        }
        if (!takeRun(now - lastEdge_, 1)) return;
        lastEdge_ = now;
        lineLow_ = true;
        return;
    }
    if (!decoding_) return;
    std::int64_t low = now - lastEdge_;
    if (bits_.empty() && std::llabs(low - ms(timing.fastLowMs)) <= ms(timing.fastToleranceMs)) {
        decoding_ = false;
        link().cancel(addressCheck_);
        fastPattern(now);
        return;
    }
    if (!takeRun(low, 0)) return;
    lastEdge_ = now;
    lineLow_ = false;
}

bool KlineEcu::takeRun(std::int64_t micros, int level) {
    std::int64_t bit = ms(timing.bitMs);
    std::int64_t count = (micros + bit / 2) / bit;
    if (count < 1 || std::llabs(micros - count * bit) > ms(timing.bitToleranceMs)) {
        refuseAddress("bit slot off: " + std::to_string(micros / 1000) + " ms");
        return false;
    }
    bits_.insert(bits_.end(), std::size_t(count), level);
    if (bits_.size() > 9) {
        refuseAddress("no stop bit");
        return false;
    }
    return true;
}

void KlineEcu::addressEnd() {
    if (!decoding_ || silent_) return;
    decoding_ = false;
    if (lineLow_) {
        note("5-baud address refused: line low at the stop bit");
        return;
    }
    // The high run since the last edge fills the remaining data bits and the stop bit.
    std::uint8_t address = 0;
    for (std::size_t i = 1; i <= 8; ++i) {
        int bit = i < bits_.size() ? bits_[i] : 1;
        address |= static_cast<std::uint8_t>(bit << (i - 1));
    }
    KeepInHistory(received_, "address " + hexByte(address));
    if (address != kObdAddress) {
        note("5-baud address " + hexByte(address) + " is not ours");
        return;
    }
    if (!vehicle_.responding || vehicle_.ecus.empty()) {
        note("5-baud address taken, but the ignition is off");
        return;
    }
    note("5-baud address 33");
    sendKeyBytes(link().nowMicros());
}

void KlineEcu::sendKeyBytes(std::int64_t stopEnd) {
    auto key = vehicle_.keyBytes;
    std::int64_t at = stopEnd + ms(timing.w1Ms);
    for (std::uint8_t b : {kSync, key[0], key[1]}) {
        later(at, [this, b] { link().send(std::string(1, char(b))); });
        at += lineMicros(1) + ms(timing.w2Ms);
    }
    keyEnd_ = at - ms(timing.w2Ms);
    state_ = State::AwaitInvertedKey;
    later(keyEnd_ + ms(timing.w4MaxMs) + lineMicros(1) + 1,
          [this] { sleep("no inverted key byte came"); });
}

void KlineEcu::invertedKey(unsigned char byte, std::int64_t now) {
    KeepInHistory(received_, "inverted key " + hexByte(byte));
    std::int64_t after = now - lineMicros(1) - keyEnd_;
    std::uint8_t want = static_cast<std::uint8_t>(~vehicle_.keyBytes[1]);
    if (byte != want) {
        sleep("inverted key byte wrong: " + hexByte(byte));
        return;
    }
    if (after < ms(timing.w4MinMs) || after > ms(timing.w4MaxMs)) {
        sleep("inverted key byte " + std::to_string(after / 1000) + " ms after the key bytes");
        return;
    }
    ++generation_;  // the wait for the inverted key byte is over
    std::int64_t at = now + ms(timing.w4Ms);
    later(at, [this] { link().send(std::string(1, char(~kObdAddress & 0xFF))); });
    state_ = State::Linked;
    busyUntil_ = at + lineMicros(1);
    note("linked after the 5-baud wake-up");
    armDrop(at);
}

void KlineEcu::fastPattern(std::int64_t lowEnd) {
    sleep("wake-up pattern on the line, link dropped");
    KeepInHistory(received_, "fast init");
    if (vehicle_.protocol != Protocol::Iso14230 || !vehicle_.responding) {
        note("fast initialisation ignored: not an ISO 14230 vehicle, or the ignition is off");
        return;
    }
    patternEnd_ = lowEnd + ms(timing.fastLowMs);
    state_ = State::AwaitStartComm;
    note("fast initialisation pattern");
    later(patternEnd_ + ms(timing.startCommWindowMs), [this] {
        // A StartCommunication that came in time has linked; only a wait still open ends here.
        if (state_ == State::AwaitStartComm)
            sleep("no StartCommunication after the fast initialisation");
    });
}

void KlineEcu::onByte(unsigned char byte) {
    if (silent_) return;
    std::int64_t now = link().nowMicros();
    if (hostBaud_ == kFastInitBaud) {
        // 0xF0 at 200 baud: the start bit and four zeros low for 25 ms, then 25 ms high.
        if (byte == kFastPatternByte) fastPattern(now - ms(timing.fastLowMs));
        return;
    }
    if (hostBaud_ != kLineBaud) return;
    switch (state_) {
        case State::Asleep:
            return;
        case State::AwaitInvertedKey:
            invertedKey(byte, now);
            return;
        case State::AwaitStartComm:
            if (request_.empty() &&
                now - lineMicros(1) < patternEnd_ - ms(timing.fastToleranceMs)) {
                sleep("StartCommunication began inside the fast-initialisation pattern");
                return;
            }
            requestByte(byte, now);
            return;
        case State::Linked:
            requestByte(byte, now);
            return;
    }
}

void KlineEcu::requestByte(unsigned char byte, std::int64_t now) {
    request_.push_back(byte);
    link().cancel(requestDue_);
    requestDue_ = link().at(now + ms(timing.p2Ms), [this] {
        if (!silent_) takeRequest();
    });
    if (state_ == State::Linked) armDrop(now);
}

void KlineEcu::armDrop(std::int64_t now) {
    link().cancel(dropDue_);
    dropDue_ = link().at(now + ms(timing.p3MaxMs), [this] {
        if (!silent_)
            sleep("no request for " + std::to_string(timing.p3MaxMs) + " ms, link dropped");
    });
}

bool KlineEcu::headerFits(const Bytes& f) const {
    if (vehicle_.protocol == Protocol::Iso9141) return f[0] == 0x68 && f[1] == 0x6A && f[2] == 0xF1;
    // ISO 14230 with addresses: format byte with the data length, functional target, tester.
    bool addressed = (f[0] & 0xC0) == 0xC0 || (f[0] & 0xC0) == 0x80;
    return addressed && std::size_t(f[0] & 0x3F) == f.size() - 4 && f[1] == 0x33 && f[2] == 0xF1;
}

void KlineEcu::takeRequest() {
    Bytes frame;
    frame.swap(request_);
    KeepInHistory(received_, SpacedHex(frame));
    bool sumOk =
        frame.size() >= 5 && ByteSum(Bytes(frame.begin(), frame.end() - 1)) == frame.back();
    if (!sumOk || !headerFits(frame)) {
        note("not a request of this vehicle: " + SpacedHex(frame));
        if (state_ == State::AwaitStartComm) sleep("no StartCommunication after the fast init");
        return;
    }
    Bytes data(frame.begin() + 3, frame.end() - 1);
    // Called P2 after the request's last byte; a module still talking answers P2 after that.
    std::int64_t now = link().nowMicros();
    std::int64_t at = busyUntil_ > now - ms(timing.p2Ms) ? busyUntil_ + ms(timing.p2Ms) : now;
    if (data == Bytes{kStartCommunication}) {
        if (vehicle_.protocol != Protocol::Iso14230) return;
        auto key = vehicle_.keyBytes;
        state_ = State::Linked;
        note("linked after the fast initialisation");
        armDrop(now);
        answer(at,
               {vehicle_.frame(vehicle_.ecus.front(), {kStartCommunicationOk, key[0], key[1]})});
        return;
    }
    if (state_ != State::Linked) {
        sleep("a request before StartCommunication");
        return;
    }
    auto messages =
        vehicle_.responding ? vehicle_.answer(data, engineSeconds()) : std::vector<SimMessage>{};
    if (messages.empty()) {
        note("no module answers " + SpacedHex(data));
        return;
    }
    answer(at, std::move(messages));
}

void KlineEcu::answer(std::int64_t at, std::vector<SimMessage> messages) {
    bool garble = garbleCount_ > 0, twice = doubleCount_ > 0;
    if (garble) --garbleCount_;
    if (twice) --doubleCount_;
    for (SimMessage& m : messages) {
        for (std::uint8_t& b : m) {
            if (!garble) break;
            noise_ = noise_ * 1664525u + 1013904223u;
            b ^= static_cast<std::uint8_t>((noise_ >> 24) | 0x01);
        }
    }
    auto send = [this](const SimMessage& m) { link().send(std::string(m.begin(), m.end())); };
    if (twice) {
        SimMessage all;
        for (int round = 0; round < 2; ++round)
            for (const SimMessage& m : messages)
                all.insert(all.end(), m.begin(), m.end());
        later(at, [send, all] { send(all); });
        busyUntil_ = at + lineMicros(all.size());
        return;
    }
    // The first message goes at once (the request's P2 has passed), each further one P2 after
    // the one before it has left.
    for (std::size_t i = 0; i < messages.size(); ++i) {
        if (i > 0) at += ms(timing.p2Ms);
        const SimMessage& m = messages[i];
        later(at, [send, m] { send(m); });
        at += lineMicros(m.size());
    }
    busyUntil_ = at;
}

}  // namespace ketrel::sim
