#pragma once
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/scheduler.h"
#include "sim/sim_device.h"

namespace ketrel::sim {

class SimSerialPort;

// One thing that happened on a virtual wire, with its time, as a test looks at it.
struct WireEvent {
    enum class Kind { Open, Close, HostByte, BreakOn, BreakOff, Baud, DeviceBurst, Vanish };
    Kind kind = Kind::Open;
    std::int64_t atMicros = 0;       // when the device saw it; for a burst, when it began
    std::int64_t arriveMicros = -1;  // DeviceBurst: when the program can read it; -1 lost
    std::string bytes;               // HostByte: the byte; DeviceBurst: the burst as sent
    int baud = 0;                    // Baud: the new rate; HostByte: the rate it was sent at
};

// The virtual serial line between a simulated port of the program and a simulated device,
// on the scheduler's time. Bytes take their real time on the line (10 bits each at the
// rate in force), the device sees each byte when its stop bit ends, and what the device
// sends reaches the port as received-data events at the moment it has arrived. The device
// runs on its own time: when the program is busy and does not pump, the device still
// reacts at the right moments, and its answers wait in the port buffer.
class SimWire : public DeviceLink {
  public:
    SimWire(Scheduler& scheduler, SimDevice& device);
    ~SimWire() override;
    SimWire(const SimWire&) = delete;
    SimWire& operator=(const SimWire&) = delete;

    // The program hears every byte it sends (a K-line), and a break as one 0x00 byte.
    void setEcho(bool on) { echo_ = on; }
    // Extra delay before a burst can be read, as a USB adapter adds.
    void setLatencyMicros(std::int64_t us) { latency_ = us; }
    // The rate the device sends at. Bytes sent at a rate other than the port's arrive as 0x00.
    void setDeviceBaud(int rate) { deviceBaud_ = rate; }
    int hostBaud() const { return hostBaud_; }
    bool breakOn() const { return breakOn_; }

    // Everything the device saw and sent, in the device's time order.
    const std::vector<WireEvent>& events() const { return events_; }
    void clearEvents() { events_.clear(); }
    // The bytes the device has received from the program so far, in order.
    std::string deviceReceived() const;

    // Pulls the plug: an open port gets an error event and is closed, and opening fails with
    // 8002 until restore().
    void vanish();
    void restore() { present_ = true; }
    bool present() const { return present_; }

    // ---- The port's side.
    bool inUse() const { return host_ != nullptr; }
    void hostAttach(SimSerialPort& port, int baud);
    void hostDetach(SimSerialPort& port);
    void hostWrite(std::string_view bytes);
    void hostSetBreak(bool on);
    void hostSetBaud(int rate);
    // Brings the device and the arrivals up to the present moment.
    void settle();
    // Life token for registries that keep a pointer to the wire.
    std::weak_ptr<bool> lifeToken() const { return alive_; }

    // ---- DeviceLink
    std::int64_t nowMicros() override;
    std::uint64_t at(std::int64_t micros, std::function<void()> fn) override;
    void cancel(std::uint64_t handle) override;
    void send(std::string_view bytes) override;
    bool hostListening() override { return host_ != nullptr && present_; }
    void setLineEcho(bool on) override { setEcho(on); }
    void setSendBaud(int rate) override { setDeviceBaud(rate); }

    // Microseconds that `count` bytes take at `baud` (10 bits each).
    static std::int64_t byteMicros(int baud, std::size_t count);

  private:
    using Key = std::pair<std::int64_t, std::uint64_t>;
    std::uint64_t queue(std::int64_t at, std::function<void()> fn);
    void arrive(std::int64_t at, std::string bytes);
    void postWake(std::int64_t at);
    void onWake();
    void log(WireEvent e) { KeepInHistory(events_, std::move(e)); }

    Scheduler& sched_;
    SimDevice& device_;
    SimSerialPort* host_ = nullptr;
    std::map<Key, std::function<void()>> deviceQueue_;
    std::map<std::uint64_t, Key> handles_;
    std::uint64_t nextSeq_ = 1;
    std::multimap<std::int64_t, std::string> arrivals_;
    std::int64_t devNow_ = 0;
    bool inSettle_ = false;
    std::int64_t hostTxFree_ = 0, devTxFree_ = 0;
    int hostBaud_ = 19200, deviceBaud_ = 19200;
    bool breakOn_ = false;
    std::int64_t breakSince_ = 0;
    bool echo_ = false;
    std::int64_t latency_ = 0;
    bool present_ = true;
    std::vector<WireEvent> events_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace ketrel::sim
