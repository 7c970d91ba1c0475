#pragma once
#include <vector>

#include "platform/serial_port.h"

namespace ketrel {

// A port with nothing behind it: every open fails with error 8002. Used where no serial
// backend is wired (tools that only decode).
class NullSerialPort : public SerialPort {
  public:
    void setCommPort(int number) override { port_ = number; }
    int commPort() const override { return port_; }
    void setSettings(const std::string& s) override { settings_ = s; }
    std::string settings() const override { return settings_; }
    bool portOpen() const override { return false; }
    void setPortOpen(bool open) override;
    void setRThreshold(int c) override { threshold_ = c; }
    int rThreshold() const override { return threshold_; }
    void setInputLen(int) override {}
    void clearInput() override {}
    int inBufferCount() const override { return 0; }
    std::string input() override { return {}; }
    void output(std::string_view) override {}
    void setBreak(bool) override {}
    bool setBaud(int) override { return false; }
    int commEvent() const override { return 0; }

  private:
    int port_ = 1;
    int threshold_ = 0;
    std::string settings_ = "9600,n,8,1";
};

// Factory of NullSerialPort objects.
class NullSerialPortFactory : public SerialPortFactory {
  public:
    std::unique_ptr<SerialPort> create(const std::string&) override {
        return std::make_unique<NullSerialPort>();
    }
};

}  // namespace ketrel
