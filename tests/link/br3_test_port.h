#pragma once
#include <memory>
#include <string>
#include <vector>

#include "link/serial_timing.h"
#include "obd/bit_operations.h"
#include "platform/null_serial_port.h"
#include "support/test_app.h"

namespace ketrel::test {

// A port that opens, keeps what is sent and hands back what a test put in its buffer.
class ScriptedPort : public NullSerialPort {
  public:
    bool portOpen() const override { return open_; }
    void setPortOpen(bool open) override { open_ = open; }
    void clearInput() override { buffer.clear(); }
    int inBufferCount() const override { return int(buffer.size()); }
    std::string input() override { return std::exchange(buffer, {}); }
    void output(std::string_view bytes) override { sent.emplace_back(bytes); }
    int commEvent() const override { return kCommEventReceive; }
    // Puts the bytes of hex text ("486B10") in the buffer, as a device's answer.
    void putHex(const std::string& hex) {
        for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
            bool bad = false;
            buffer.push_back(char(HexTextToByte(hex.substr(i, 2), bad)));
        }
    }

    std::string buffer;
    std::vector<std::string> sent;

  private:
    bool open_ = false;
};

// An application in a count-byte session on `protocolCode`, its scan port (BR3MSComm) scripted;
// or on another device whose scan port has another name (KeshMSComm for the K-line cables).
struct Br3Session : SerialPortFactory {
    explicit Br3Session(const std::string& protocolCode, const char* hardware = kBr3,
                        std::string scanPort = "BR3MSComm")
        : scanName(std::move(scanPort)), t(this) {
        t->OBDIIHardware = hardware;
        t->ProtocolCode = protocolCode;
        t->Connected = true;
        t->Temp = "F";
        scan->setPortOpen(true);
    }
    std::unique_ptr<SerialPort> create(const std::string& name) override {
        auto port = std::make_unique<ScriptedPort>();
        if (name == scanName) scan = port.get();
        return port;
    }
    App& app() { return *t; }
    // The frames sent, as spaced hex ("07 68 6A").
    std::vector<std::string> sentHex() const {
        std::vector<std::string> out;
        for (const std::string& f : scan->sent)
            out.push_back(BytesToSpacedHex(f).substr(0, f.size() * 3 - 1));
        return out;
    }
    std::string scanName;
    ScriptedPort* scan = nullptr;
    TestApp t;
};

}  // namespace ketrel::test
