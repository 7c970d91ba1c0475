#include "sim/dorvane_converter.h"

#include <algorithm>
#include <cctype>

namespace ketrel::sim {

namespace {

constexpr std::int64_t kMs = 1000;
constexpr int kBaud = 19200;
constexpr std::size_t kRetryFrameSize = 13;

std::int64_t textMicros(std::size_t chars) {
    return static_cast<std::int64_t>(10'000'000.0 * double(chars) / kBaud + 0.5);
}

int hexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

std::uint8_t hexByte(const std::string& s, std::size_t at) {
    return static_cast<std::uint8_t>(hexValue(s[at]) * 16 + hexValue(s[at + 1]));
}

}  // namespace

DorvaneConverter::DorvaneConverter(SimVehicle& vehicle, std::string firmware)
    : vehicle_(vehicle), firmware_(std::move(firmware)) {}

void DorvaneConverter::attach(DeviceLink& l) {
    SimDevice::attach(l);
    startMicros_ = link().nowMicros();
    reset();
}

double DorvaneConverter::engineSeconds() {
    return double(link().nowMicros() - startMicros_) / 1e6;
}

void DorvaneConverter::later(std::int64_t atMicros, std::function<void()> fn) {
    pending_.push_back(link().at(atMicros, std::move(fn)));
}

void DorvaneConverter::cancelAll() {
    for (auto h : pending_)
        link().cancel(h);
    pending_.clear();
}

void DorvaneConverter::reset() {
    if (!attached() || state_ == State::Silent) return;
    cancelAll();
    partial_.clear();
    binaryLeft_ = 0;
    state_ = State::Booting;
    later(link().nowMicros() + timing.bootMs * kMs, [this] {
        if (vehicle_.responding) {
            becomeReady();
        } else {
            setVehicleResponding(false);
        }
    });
}

void DorvaneConverter::emit(const std::string& text) {
    KeepInHistory(sent_, text);
    link().send(text);
}

void DorvaneConverter::becomeReady() {
    cancelAll();
    state_ = State::Ready;
    emit("S");
    armIdle();
}

void DorvaneConverter::armIdle() {
    if (timing.idleSyncMs <= 0) return;
    later(link().nowMicros() + timing.idleSyncMs * kMs, [this] {
        if (state_ == State::Ready) becomeReady();
    });
}

void DorvaneConverter::setSilent(bool on) {
    if (!attached()) return;
    if (on) {
        cancelAll();
        state_ = State::Silent;
        return;
    }
    if (state_ != State::Silent) return;
    state_ = State::Ready;
    becomeReady();
}

void DorvaneConverter::sendStatus(const std::string& text) {
    if (state_ == State::Silent) return;
    emit(text);
}

void DorvaneConverter::setVehicleResponding(bool on) {
    vehicle_.responding = on;
    if (!attached() || state_ == State::Silent) return;
    cancelAll();
    if (on) {
        state_ = State::Busy;
        emit("I");
        later(link().nowMicros() + timing.syncGapMs * kMs, [this] { becomeReady(); });
        return;
    }
    state_ = State::Searching;
    emit("P");
    later(link().nowMicros() + timing.searchRepeatMs * kMs, [this] {
        if (state_ == State::Searching) setVehicleResponding(false);
    });
}

void DorvaneConverter::onByte(unsigned char byte) {
    std::int64_t now = link().nowMicros();
    if (state_ != State::Ready) {
        if (state_ != State::Silent) {
            note(std::string("ignored while busy: ") + (std::isprint(byte) ? char(byte) : '.'));
        }
        return;
    }
    if (binaryLeft_ > 0) {
        if (--binaryLeft_ == 0) {
            KeepInHistory(commands_, std::string("RETRY FRAME"));
            note("took the binary retry frame");
        }
        return;
    }
    if (!partial_.empty() && now - lastCharAt_ >= timing.commandGapMs * kMs) {
        note("dropped an unfinished command: " + partial_);
        partial_.clear();
    }
    lastCharAt_ = now;
    if (hexValue(static_cast<char>(byte)) < 0) {
        if (partial_.empty() && byte == 0x01) {
            binaryLeft_ = static_cast<int>(kRetryFrameSize) - 1;
        } else if (!partial_.empty()) {
            note("dropped an unfinished command: " + partial_);
            partial_.clear();
        }
        return;
    }
    partial_ += static_cast<char>(std::toupper(byte));
    if (partial_.size() < 6) return;
    std::string command = partial_;
    partial_.clear();
    takeCommand(command);
}

void DorvaneConverter::takeCommand(const std::string& command) {
    KeepInHistory(commands_, command);
    cancelAll();
    state_ = State::Busy;
    std::int64_t now = link().nowMicros();
    std::string mode = command.substr(0, 2);
    if (mode == "80" || mode == "F0") {
        later(now + timing.commandMs * kMs, [this] { becomeReady(); });
    } else if (mode == "90") {
        std::int64_t end = scheduleAnswer(now + timing.commandMs * kMs, "V" + firmware_);
        later(end + timing.syncGapMs * kMs, [this] { becomeReady(); });
    } else {
        askVehicle(command);
    }
}

void DorvaneConverter::askVehicle(const std::string& command) {
    std::uint8_t mode = hexByte(command, 0), pid = hexByte(command, 2);
    std::vector<std::uint8_t> request{mode};
    if (mode != 0x03 && mode != 0x04 && mode != 0x07) request.push_back(pid);
    if (mode == 0x02) request.push_back(0x00);  // frame 0
    auto messages = vehicle_.answer(request, engineSeconds());
    std::int64_t now = link().nowMicros();
    if (messages.empty()) {
        later(now + timing.noAnswerMs * kMs, [this] {
            emit("T");
            later(link().nowMicros() + timing.syncGapMs * kMs, [this] { becomeReady(); });
        });
        return;
    }
    std::int64_t at = now + timing.vehicleMs * kMs;
    for (const auto& m : messages) {
        at = scheduleAnswer(at, "V" + HexText(m)) + timing.messageGapMs * kMs;
    }
    at += (timing.syncGapMs - timing.messageGapMs) * kMs;
    later(at, [this] { becomeReady(); });
}

std::int64_t DorvaneConverter::scheduleAnswer(std::int64_t at, std::string text) {
    if (garbleCount_ > 0) {
        --garbleCount_;
        text = garble(std::move(text));
    }
    std::vector<std::string> pieces;
    std::size_t from = 0;
    std::vector<std::size_t> cuts = splits_;
    std::sort(cuts.begin(), cuts.end());
    for (std::size_t cut : cuts) {
        if (cut <= from || cut >= text.size()) continue;
        pieces.push_back(text.substr(from, cut - from));
        from = cut;
    }
    pieces.push_back(text.substr(from));
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        later(at, [this, piece = pieces[i]] { emit(piece); });
        if (timing.lineTime) at += textMicros(pieces[i].size());
        if (i + 1 < pieces.size()) at += timing.splitGapMs * kMs;
    }
    return at;
}

std::string DorvaneConverter::garble(std::string text) {
    for (char& c : text) {
        noise_ = noise_ * 1664525u + 1013904223u;
        std::uint8_t flip = static_cast<std::uint8_t>((noise_ >> 24) | 0x01);
        c = static_cast<char>(static_cast<std::uint8_t>(c) ^ flip);
    }
    return text;
}

}  // namespace ketrel::sim
