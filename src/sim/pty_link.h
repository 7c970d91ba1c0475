#pragma once
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/scheduler.h"
#include "sim/poll_event_loop.h"
#include "sim/sim_device.h"

namespace ketrel::sim {

// A simulated device on a pseudo-terminal, in real time: the program opens the terminal's
// device path as if it were a serial port. Bytes only: a pseudo-terminal carries no break
// and no baud rate, so the device sees neither.
class PtyLink : public DeviceLink {
  public:
    PtyLink(PollEventLoop& loop, SimDevice& device);
    ~PtyLink() override;
    PtyLink(const PtyLink&) = delete;
    PtyLink& operator=(const PtyLink&) = delete;

    // Makes the pseudo-terminal in raw mode and attaches the device; false, with the reason
    // in `error`, if the system refuses.
    bool open(std::string& error);
    // The path the program opens, such as /dev/pts/3.
    const std::string& devicePath() const { return path_; }
    bool hostOpen() const { return hostOpen_; }

    // Told of every piece of traffic: "recv" with what the program sent, "send" with what
    // the device sent, "lost" with what it sent while nobody listened, "open" and "close".
    std::function<void(const std::string& what, std::string_view bytes)> onTraffic;

    std::int64_t nowMicros() override { return loop_.clock().nowMicros(); }
    std::uint64_t at(std::int64_t micros, std::function<void()> fn) override;
    void cancel(std::uint64_t handle) override { loop_.scheduler().cancel(handle); }
    void send(std::string_view bytes) override;
    bool hostListening() override { return hostOpen_; }

  private:
    void checkHost();
    void setHostOpen(bool open);
    void onReadable(short revents);
    void traffic(const std::string& what, std::string_view bytes) {
        if (onTraffic) onTraffic(what, bytes);
    }

    PollEventLoop& loop_;
    SimDevice& device_;
    int master_ = -1;
    std::string path_;
    bool hostOpen_ = false;
    std::unique_ptr<Timer> hostCheck_;
};

}  // namespace ketrel::sim
