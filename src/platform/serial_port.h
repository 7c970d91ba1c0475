#pragma once
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/serial_adapter.h"
#include "platform/serial_devices.h"

namespace ketrel {

// Error raised by a port operation; the codes are those the messages depend on.
class SerialError : public std::runtime_error {
  public:
    SerialError(int code, const std::string& text) : std::runtime_error(text), code_(code) {}
    int code() const { return code_; }

  private:
    int code_;
};

inline constexpr int kErrInvalidPort = 8002;  // no such port
inline constexpr int kErrPortOpen = 8005;     // already open or busy
inline constexpr int kErrPortIo = 8020;       // read or write failed (device gone)
inline constexpr int kErrPortClosed = 8018;   // the operation needs an open port

inline constexpr int kCommEventReceive = 2;   // data received
inline constexpr int kCommEventError = 1010;  // the device failed (for example, unplugged)

// The serial device as the logic sees it. Bytes travel as std::string, one char per byte,
// 0x00 kept and 0x80 to 0xFF unchanged.
class SerialPort {
  public:
    virtual ~SerialPort() = default;

    // Port number; set only while closed.
    virtual void setCommPort(int number) = 0;
    virtual int commPort() const = 0;
    // Line parameters such as "19200,n,8,1".
    virtual void setSettings(const std::string& settings) = 0;
    virtual std::string settings() const = 0;
    virtual bool portOpen() const = 0;
    // Opens or closes; throws SerialError (kErrInvalidPort, kErrPortOpen) when opening fails.
    virtual void setPortOpen(bool open) = 0;
    // 0: no received-data event; 1: the event fires as soon as a byte has arrived.
    virtual void setRThreshold(int count) = 0;
    virtual int rThreshold() const = 0;
    // 0 means input() returns all that has arrived (the only value the program uses).
    virtual void setInputLen(int count) = 0;
    // Throws away everything received and not yet read.
    virtual void clearInput() = 0;
    virtual int inBufferCount() const = 0;
    // All that has arrived; empties the buffer; never blocks.
    virtual std::string input() = 0;
    // Sends the bytes at once.
    virtual void output(std::string_view bytes) = 0;
    // True holds the transmit line in break (K-line low); False releases it.
    virtual void setBreak(bool on) = 0;
    // Changes the baud rate of an open port keeping its receive buffer; false if it failed.
    virtual bool setBaud(int rate) = 0;
    // Whether the driver refused the last break that was set; some adapters' drivers do,
    // and then the line cannot be woken up.
    virtual bool breakRefused() const { return false; }
    // Asks the driver of the open port to hand received bytes over at once; true if it took it.
    virtual bool setLowLatency() { return false; }
    // Inside the handler: kCommEventReceive or kCommEventError.
    virtual int commEvent() const = 0;
    // The received-data event, run on the event thread.
    void setOnComm(std::function<void()> fn) { onComm_ = std::move(fn); }

  protected:
    void fireOnComm() {
        if (onComm_) onComm_();
    }

  private:
    std::function<void()> onComm_;
};

// Makes the port objects of the screens; the backend decides what stands behind them.
class SerialPortFactory {
  public:
    virtual ~SerialPortFactory() = default;
    virtual std::unique_ptr<SerialPort> create(const std::string& objectName) = 0;
    // The devices the port numbers go to, where the backend knows them.
    virtual SerialDeviceLister* deviceLister() { return nullptr; }
    // What the system tells about the adapters behind the devices, where the backend knows.
    virtual SerialAdapterInspector* adapterInspector() { return nullptr; }
};

// SetPortBaud: changes the rate of an open port; a closed port is left alone, silently.
inline void SetPortBaud(SerialPort& port, int rate) {
    if (!port.portOpen()) return;
    port.setBaud(rate);
}

}  // namespace ketrel
