#pragma once
#include <filesystem>
#include <string>

namespace ketrel {

// What the system tells about the adapter behind a serial device.
struct SerialAdapterInfo {
    std::string device;       // the device with links resolved, such as /dev/ttyUSB0
    std::string driver;       // the kernel driver ("ftdi_sio", "pl2303"); empty when unknown
    bool usb = false;         // a USB serial adapter
    bool ftdi = false;        // an FTDI chip, whose latency timer holds received bytes back
    int latencyTimerMs = -1;  // the FTDI latency timer; -1 when there is none to read
};

// What a request for low latency achieved.
struct LowLatencyResult {
    bool latencyTimerSet = false;  // the latency timer now reads 1 ms
    int latencyTimerMs = -1;       // the latency timer after the request; -1 when none
    bool asyncLowLatency = false;  // the driver took the low-latency flag
};

// Whether the driver drives a break; some adapters' drivers refuse it, and then the K-line
// cannot be woken up.
enum class BreakSupport { Works, Refused, Unknown };

// Looks at the adapter of a serial device before a K-line wake-up: the kernel's facts, a
// request for low latency, and whether a break is accepted.
class SerialAdapterInspector {
  public:
    virtual ~SerialAdapterInspector() = default;
    virtual SerialAdapterInfo inspect(const std::string& devicePath) = 0;
    // Asks for the lowest receive latency: the FTDI latency timer at 1 ms where it may be
    // written, and the driver's low-latency flag.
    virtual LowLatencyResult requestLowLatency(const std::string& devicePath) = 0;
    // Sets and clears a break on the device (a pulse of a few microseconds); Unknown when the
    // device cannot be opened beside the program's own port.
    virtual BreakSupport probeBreak(const std::string& devicePath) = 0;
};

// The Linux inspector, reading sysfs under `sysfsRoot` (a folder of a fake tree in tests).
class SysfsSerialAdapterInspector : public SerialAdapterInspector {
  public:
    explicit SysfsSerialAdapterInspector(std::filesystem::path sysfsRoot = "/sys")
        : root_(std::move(sysfsRoot)) {}
    SerialAdapterInfo inspect(const std::string& devicePath) override;
    LowLatencyResult requestLowLatency(const std::string& devicePath) override;
    BreakSupport probeBreak(const std::string& devicePath) override;

  private:
    std::filesystem::path deviceDir(const std::string& devicePath) const;
    std::filesystem::path root_;
};

// Sets the driver's low-latency flag on an open tty descriptor; false where it is refused.
bool SetAsyncLowLatency(int fd);

// The adapter in one line, for the settings page, the connecting log and the status line:
// "ftdi_sio (FTDI), latency timer 16 ms", "pl2303 (USB)", "ttyS0: no adapter driver found".
std::string DescribeAdapter(const SerialAdapterInfo& info);

// The line that says a driver refused the break.
std::string BreakRefusedText(const SerialAdapterInfo& info);

}  // namespace ketrel
