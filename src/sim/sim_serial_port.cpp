#include "sim/sim_serial_port.h"

#include <cctype>

namespace ketrel::sim {

SimWire* SimPortRegistry::wireFor(int number) const {
    auto it = wires.find(number);
    if (it == wires.end() || it->second.alive.expired()) return nullptr;
    return it->second.wire;
}

int BaudOfSettings(const std::string& settings) {
    std::size_t i = 0;
    int rate = 0;
    while (i < settings.size() && std::isdigit(static_cast<unsigned char>(settings[i]))) {
        rate = rate * 10 + (settings[i] - '0');
        if (rate > 10'000'000) return 0;
        ++i;
    }
    if (i == 0 || (i < settings.size() && settings[i] != ',')) return 0;
    return rate;
}

SimSerialPort::SimSerialPort(std::shared_ptr<SimPortRegistry> registry, std::string name)
    : registry_(std::move(registry)), name_(std::move(name)) {
    registry_->ports[name_] = this;
}

SimSerialPort::~SimSerialPort() {
    if (wire_) wire_->hostDetach(*this);
    auto it = registry_->ports.find(name_);
    if (it != registry_->ports.end() && it->second == this) registry_->ports.erase(it);
}

void SimSerialPort::setSettings(const std::string& settings) {
    settings_ = settings;
    int rate = BaudOfSettings(settings);
    if (rate <= 0) return;
    baud_ = rate;
    if (wire_) wire_->hostSetBaud(rate);
}

void SimSerialPort::setPortOpen(bool open) {
    if (!open) {
        if (!wire_) return;
        wire_->hostDetach(*this);
        wire_ = nullptr;
        rx_.clear();
        unannounced_ = false;
        return;
    }
    if (wire_) throw SerialError(kErrPortOpen, "Port already open");
    SimWire* wire = registry_->wireFor(number_);
    if (!wire || !wire->present()) throw SerialError(kErrInvalidPort, "Invalid Port Number");
    if (wire->inUse()) throw SerialError(kErrPortOpen, "Port already open");
    rx_.clear();
    unannounced_ = false;
    commEvent_ = 0;
    wire_ = wire;
    wire_->hostAttach(*this, baud_);
}

void SimSerialPort::clearInput() {
    if (wire_) wire_->settle();
    rx_.clear();
    unannounced_ = false;
}

int SimSerialPort::inBufferCount() const {
    if (wire_) wire_->settle();
    return static_cast<int>(rx_.size());
}

std::string SimSerialPort::input() {
    if (wire_) wire_->settle();
    std::string out;
    if (inputLen_ > 0 && rx_.size() > static_cast<std::size_t>(inputLen_)) {
        out = rx_.substr(0, inputLen_);
        rx_.erase(0, inputLen_);
    } else {
        out.swap(rx_);
        unannounced_ = false;
    }
    return out;
}

void SimSerialPort::output(std::string_view bytes) {
    if (!wire_) throw SerialError(kErrPortClosed, "Operation valid only when the port is open");
    wire_->hostWrite(bytes);
}

void SimSerialPort::setBreak(bool on) {
    if (wire_) wire_->hostSetBreak(on);
}

bool SimSerialPort::setBaud(int rate) {
    if (!wire_ || rate <= 0) return false;
    baud_ = rate;
    wire_->hostSetBaud(rate);
    return true;
}

void SimSerialPort::receive(const std::string& bytes) {
    rx_ += bytes;
    unannounced_ = true;
}

void SimSerialPort::announce() {
    if (!wire_ || !unannounced_ || rx_.empty() || threshold_ < 1) return;
    unannounced_ = false;
    commEvent_ = kCommEventReceive;
    fireOnComm();
}

void SimSerialPort::vanished() {
    if (!wire_) return;
    wire_->hostDetach(*this);
    wire_ = nullptr;
    rx_.clear();
    unannounced_ = false;
    commEvent_ = kCommEventError;
    fireOnComm();
}

void SimSerialPort::wireGone() {
    wire_ = nullptr;
    rx_.clear();
}

void SimSerialPortFactory::plug(int number, SimWire& wire) {
    registry_->wires[number] = SimPortRegistry::Plug{&wire, wire.lifeToken()};
}

void SimSerialPortFactory::unplug(int number) {
    registry_->wires.erase(number);
}

std::unique_ptr<SerialPort> SimSerialPortFactory::create(const std::string& objectName) {
    return std::make_unique<SimSerialPort>(registry_, objectName);
}

SimSerialPort* SimSerialPortFactory::port(const std::string& objectName) const {
    auto it = registry_->ports.find(objectName);
    return it == registry_->ports.end() ? nullptr : it->second;
}

}  // namespace ketrel::sim
