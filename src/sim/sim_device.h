#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace ketrel::sim {

// The histories a simulated device and its wire keep for tests and traces (commands taken,
// frames sent, every byte on the line) hold at most this many entries; past it the older half
// goes. A simulator running for days, in ketrel-sim or behind a "sim:" port, keeps its memory.
inline constexpr std::size_t kHistoryCap = std::size_t(1) << 14;

// Appends `entry` to a history, first dropping the older half of a full one.
template <class T>
void KeepInHistory(std::vector<T>& history, std::type_identity_t<T> entry) {
    if (history.size() >= kHistoryCap) {
        history.erase(history.begin(), history.begin() + std::ptrdiff_t(kHistoryCap / 2));
    }
    history.push_back(std::move(entry));
}

// What a simulated device can do at its end of a serial line: read its own clock, set
// timers, and send bytes to the program.
class DeviceLink {
  public:
    virtual ~DeviceLink() = default;
    // The device's time in microseconds. Inside a handler it is the moment of the event being
    // handled, even when the program reads the port later.
    virtual std::int64_t nowMicros() = 0;
    // Runs fn at the given device time; the handle cancels it.
    virtual std::uint64_t at(std::int64_t micros, std::function<void()> fn) = 0;
    virtual void cancel(std::uint64_t handle) = 0;
    // Sends one burst of bytes, starting now or when the previous burst has left. The program
    // receives a burst as one piece (what a USB adapter delivers in one transfer).
    virtual void send(std::string_view bytes) = 0;
    // True while the program has the port open; bytes sent otherwise are lost.
    virtual bool hostListening() = 0;
    // A device on a one-wire line (a K-line) has the program hear every byte it sends, and a
    // break as one 0x00; a line that cannot do that ignores the wish.
    virtual void setLineEcho(bool /*on*/) {}
    // The rate the device sends at, where the line knows rates; bytes at another rate than
    // the program's arrive as 0x00.
    virtual void setSendBaud(int /*rate*/) {}

    std::uint64_t after(std::int64_t micros, std::function<void()> fn) {
        return at(nowMicros() + micros, std::move(fn));
    }
};

// A device on a serial line. It sees the port being opened and closed, every byte the
// program sends, every break edge and every baud change, each at its own time.
class SimDevice {
  public:
    virtual ~SimDevice() = default;
    virtual void attach(DeviceLink& link) { link_ = &link; }
    virtual void onHostOpen() {}
    virtual void onHostClose() {}
    virtual void onByte(unsigned char /*byte*/) {}
    virtual void onBreak(bool /*on*/) {}
    virtual void onBaud(int /*rate*/) {}

  protected:
    DeviceLink& link() { return *link_; }
    bool attached() const { return link_ != nullptr; }

  private:
    DeviceLink* link_ = nullptr;
};

}  // namespace ketrel::sim
