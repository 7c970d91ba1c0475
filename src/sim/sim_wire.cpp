#include "sim/sim_wire.h"

#include <algorithm>

#include "sim/sim_serial_port.h"

namespace ketrel::sim {

SimWire::SimWire(Scheduler& scheduler, SimDevice& device) : sched_(scheduler), device_(device) {
    device_.attach(*this);
}

SimWire::~SimWire() {
    *alive_ = false;
    if (host_) host_->wireGone();
}

std::int64_t SimWire::byteMicros(int baud, std::size_t count) {
    if (baud <= 0) return 0;
    return static_cast<std::int64_t>((10'000'000.0 * double(count)) / double(baud) + 0.5);
}

std::string SimWire::deviceReceived() const {
    std::string out;
    for (const auto& e : events_) {
        if (e.kind == WireEvent::Kind::HostByte) out += e.bytes;
    }
    return out;
}

std::int64_t SimWire::nowMicros() {
    return inSettle_ ? devNow_ : std::max(devNow_, sched_.clock().nowMicros());
}

std::uint64_t SimWire::queue(std::int64_t at, std::function<void()> fn) {
    std::uint64_t seq = nextSeq_++;
    deviceQueue_.emplace(Key{at, seq}, std::move(fn));
    handles_.emplace(seq, Key{at, seq});
    postWake(at);
    return seq;
}

std::uint64_t SimWire::at(std::int64_t micros, std::function<void()> fn) {
    return queue(micros, std::move(fn));
}

void SimWire::cancel(std::uint64_t handle) {
    auto it = handles_.find(handle);
    if (it == handles_.end()) return;
    deviceQueue_.erase(it->second);
    handles_.erase(it);
}

void SimWire::postWake(std::int64_t at) {
    sched_.postAt(at, [this, alive = alive_] {
        if (*alive) onWake();
    });
}

void SimWire::onWake() {
    settle();
    if (host_) host_->announce();
}

void SimWire::settle() {
    if (inSettle_) return;
    std::int64_t target = sched_.clock().nowMicros();
    inSettle_ = true;
    while (!deviceQueue_.empty()) {
        auto it = deviceQueue_.begin();
        if (it->first.first > target) break;
        devNow_ = std::max(devNow_, it->first.first);
        auto fn = std::move(it->second);
        handles_.erase(it->first.second);
        deviceQueue_.erase(it);
        fn();
    }
    devNow_ = std::max(devNow_, target);
    inSettle_ = false;
    while (!arrivals_.empty() && arrivals_.begin()->first <= target) {
        std::string bytes = std::move(arrivals_.begin()->second);
        arrivals_.erase(arrivals_.begin());
        if (host_) host_->receive(bytes);
    }
}

void SimWire::arrive(std::int64_t at, std::string bytes) {
    arrivals_.emplace(at, std::move(bytes));
    postWake(at);
}

void SimWire::send(std::string_view bytes) {
    if (bytes.empty()) return;
    std::int64_t start = std::max(nowMicros(), devTxFree_);
    std::int64_t end = start + byteMicros(deviceBaud_, bytes.size());
    devTxFree_ = end;
    WireEvent e{WireEvent::Kind::DeviceBurst, start, -1, std::string(bytes), deviceBaud_};
    if (hostListening()) {
        std::string delivered(bytes);
        if (deviceBaud_ != hostBaud_) std::fill(delivered.begin(), delivered.end(), '\0');
        e.arriveMicros = end + latency_;
        arrive(e.arriveMicros, std::move(delivered));
    }
    log(std::move(e));
}

void SimWire::hostAttach(SimSerialPort& port, int baud) {
    host_ = &port;
    hostBaud_ = baud;
    settle();
    std::int64_t now = sched_.clock().nowMicros();
    hostTxFree_ = std::max(hostTxFree_, now);
    queue(now, [this, now, baud] {
        log({WireEvent::Kind::Open, now, -1, {}, baud});
        device_.onHostOpen();
    });
}

void SimWire::hostDetach(SimSerialPort& port) {
    if (host_ != &port) return;
    settle();
    host_ = nullptr;
    arrivals_.clear();
    breakOn_ = false;
    std::int64_t now = sched_.clock().nowMicros();
    queue(now, [this, now] {
        log({WireEvent::Kind::Close, now, -1, {}, 0});
        device_.onHostClose();
    });
}

void SimWire::hostWrite(std::string_view bytes) {
    if (bytes.empty()) return;
    std::int64_t start = std::max(sched_.clock().nowMicros(), hostTxFree_);
    int baud = hostBaud_;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        std::int64_t done = start + byteMicros(baud, i + 1);
        unsigned char b = static_cast<unsigned char>(bytes[i]);
        queue(done, [this, done, b, baud] {
            log({WireEvent::Kind::HostByte, done, -1, std::string(1, char(b)), baud});
            device_.onByte(b);
        });
    }
    hostTxFree_ = start + byteMicros(baud, bytes.size());
    if (echo_) arrive(hostTxFree_, std::string(bytes));
}

void SimWire::hostSetBreak(bool on) {
    if (on == breakOn_) return;
    std::int64_t now = sched_.clock().nowMicros();
    breakOn_ = on;
    if (on) {
        breakSince_ = now;
    } else if (echo_ && now - breakSince_ >= byteMicros(hostBaud_, 1)) {
        arrive(now, std::string(1, '\0'));  // a UART reads a held break as one null byte
    }
    queue(now, [this, now, on] {
        log({on ? WireEvent::Kind::BreakOn : WireEvent::Kind::BreakOff, now, -1, {}, 0});
        device_.onBreak(on);
    });
}

void SimWire::hostSetBaud(int rate) {
    std::int64_t now = sched_.clock().nowMicros();
    hostBaud_ = rate;
    queue(now, [this, now, rate] {
        log({WireEvent::Kind::Baud, now, -1, {}, rate});
        device_.onBaud(rate);
    });
}

void SimWire::vanish() {
    present_ = false;
    std::int64_t now = sched_.clock().nowMicros();
    log({WireEvent::Kind::Vanish, now, -1, {}, 0});
    if (host_) {
        sched_.post([this, alive = alive_] {
            if (*alive && host_) host_->vanished();
        });
    }
}

}  // namespace ketrel::sim
