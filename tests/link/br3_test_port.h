#pragma once
#include <memory>
#include <string>
#include <vector>

#include "platform/serial_port.h"
#include "support/test_app.h"

namespace ketrel::test {

// A port that keeps what is sent and hands back what a test put in its buffer.
class ScriptedPort : public SerialPort {
  public:
    void setCommPort(int n) override { port_ = n; }
    int commPort() const override { return port_; }
    void setSettings(const std::string& s) override { settings_ = s; }
    std::string settings() const override { return settings_; }
    bool portOpen() const override { return open_; }
    void setPortOpen(bool open) override { open_ = open; }
    void setRThreshold(int) override {}
    int rThreshold() const override { return 0; }
    void setInputLen(int) override {}
    void clearInput() override { buffer.clear(); }
    int inBufferCount() const override { return int(buffer.size()); }
    std::string input() override { return std::exchange(buffer, {}); }
    void output(std::string_view bytes) override { sent.emplace_back(bytes); }
    void setBreak(bool) override {}
    bool setBaud(int) override { return true; }
    int commEvent() const override { return kCommEventReceive; }

    std::string buffer;
    std::vector<std::string> sent;

  private:
    int port_ = 1;
    bool open_ = false;
    std::string settings_;
};

// The factory of the application's ports; BR3MSComm is kept for the test.
struct ScriptedPorts : SerialPortFactory {
    std::unique_ptr<SerialPort> create(const std::string& name) override {
        auto port = std::make_unique<ScriptedPort>();
        if (name == "BR3MSComm") scan = port.get();
        return port;
    }
    ScriptedPort* scan = nullptr;
};

// An application in a count-byte session on `protocolCode`, its scan port open.
struct Br3Session {
    explicit Br3Session(const std::string& protocolCode) : t(&ports) {
        t->OBDIIHardware = kBr3;
        t->ProtocolCode = protocolCode;
        t->Connected = true;
        t->Temp = "F";
        ports.scan->setPortOpen(true);
    }
    App& app() { return *t; }
    ScriptedPorts ports;
    TestApp t;
};

// Raw bytes as spaced hex ("07 68 6A").
inline std::string Spaced(const std::string& bytes) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string out;
    for (unsigned char c : bytes) {
        if (!out.empty()) out += ' ';
        out += kDigits[c >> 4];
        out += kDigits[c & 15];
    }
    return out;
}

}  // namespace ketrel::test
