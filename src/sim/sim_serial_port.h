#pragma once
#include <map>
#include <memory>
#include <string>

#include "platform/serial_port.h"
#include "sim/sim_wire.h"

namespace ketrel::sim {

// Which wire is plugged into which port number, and which simulated ports exist; shared by
// the factory and its ports so that either may go first.
struct SimPortRegistry {
    struct Plug {
        SimWire* wire = nullptr;
        std::weak_ptr<bool> alive;
    };
    std::map<int, Plug> wires;
    std::map<std::string, SimSerialPort*> ports;
    SimWire* wireFor(int number) const;
};

// A port of the program joined to a simulated device through a SimWire. It behaves as the
// desktop port does: byte-exact output, input that never blocks and keeps 0x00, the
// received-data event on the event thread when the threshold is 1, break and baud changes
// seen by the device, errors 8002 and 8005 on opening.
class SimSerialPort : public SerialPort {
  public:
    SimSerialPort(std::shared_ptr<SimPortRegistry> registry, std::string name);
    ~SimSerialPort() override;

    const std::string& name() const { return name_; }
    int baud() const { return baud_; }
    SimWire* wire() const { return wire_; }

    void setCommPort(int number) override { number_ = number; }
    int commPort() const override { return number_; }
    void setSettings(const std::string& settings) override;
    std::string settings() const override { return settings_; }
    bool portOpen() const override { return wire_ != nullptr; }
    void setPortOpen(bool open) override;
    void setRThreshold(int count) override { threshold_ = count; }
    int rThreshold() const override { return threshold_; }
    void setInputLen(int count) override { inputLen_ = count; }
    void clearInput() override;
    int inBufferCount() const override;
    std::string input() override;
    void output(std::string_view bytes) override;
    void setBreak(bool on) override;
    bool setBaud(int rate) override;
    int commEvent() const override { return commEvent_; }

    // ---- The wire's side.
    void receive(const std::string& bytes);
    // Raises the received-data event for data that has arrived since the last one.
    void announce();
    // The device went away under the open port: error event, port closed.
    void vanished();
    void wireGone();

  private:
    std::shared_ptr<SimPortRegistry> registry_;
    std::string name_;
    int number_ = 1;
    std::string settings_ = "9600,n,8,1";
    int baud_ = 9600;
    SimWire* wire_ = nullptr;
    int threshold_ = 0;
    int inputLen_ = 0;
    int commEvent_ = 0;
    std::string rx_;
    bool unannounced_ = false;
};

// Makes simulated ports for the application; a test plugs wires into port numbers.
class SimSerialPortFactory : public SerialPortFactory {
  public:
    SimSerialPortFactory() : registry_(std::make_shared<SimPortRegistry>()) {}
    // Port `number` now leads to `wire`.
    void plug(int number, SimWire& wire);
    void unplug(int number);
    std::unique_ptr<SerialPort> create(const std::string& objectName) override;
    // The live port made under this object name, or nullptr.
    SimSerialPort* port(const std::string& objectName) const;

  private:
    std::shared_ptr<SimPortRegistry> registry_;
};

// The rate in a line-settings text such as "19200,n,8,1"; 0 when it has none.
int BaudOfSettings(const std::string& settings);

}  // namespace ketrel::sim
