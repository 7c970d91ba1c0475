#include "platform/serial_adapter.h"

#include <fcntl.h>
#include <linux/serial.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <fstream>

namespace ketrel {
namespace fs = std::filesystem;

namespace {

std::string ResolveDevice(const std::string& devicePath) {
    std::error_code ec;
    fs::path resolved = fs::weakly_canonical(devicePath, ec);
    return ec ? devicePath : resolved.string();
}

int ReadNumber(const fs::path& file) {
    std::ifstream in(file);
    int value = -1;
    if (!(in >> value)) return -1;
    return value;
}

// An open descriptor of the device, closed when it goes.
struct DeviceFd {
    explicit DeviceFd(const std::string& path)
        : fd(::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {}
    ~DeviceFd() {
        if (fd >= 0) ::close(fd);
    }
    int fd;
};

}  // namespace

fs::path SysfsSerialAdapterInspector::deviceDir(const std::string& devicePath) const {
    std::string name = fs::path(ResolveDevice(devicePath)).filename().string();
    return root_ / "class" / "tty" / name / "device";
}

SerialAdapterInfo SysfsSerialAdapterInspector::inspect(const std::string& devicePath) {
    SerialAdapterInfo info;
    info.device = ResolveDevice(devicePath);
    fs::path dir = deviceDir(devicePath);
    std::error_code ec;
    fs::path real = fs::weakly_canonical(dir, ec);
    // Newer kernels put a generic serial port device ("port", under a "ctrl") between a
    // built-in tty and its driver: the driver that tells something is further up.
    fs::path at = real;
    for (int up = 0; !ec && up < 4 && info.driver.empty(); ++up, at = at.parent_path()) {
        fs::path driver = fs::weakly_canonical(at / "driver", ec);
        if (ec || !fs::exists(driver, ec)) continue;
        std::string name = driver.filename().string();
        if (name != "port" && name != "ctrl") info.driver = name;
    }
    ec.clear();
    info.usb = !ec && real.string().find("/usb") != std::string::npos;
    info.ftdi = info.driver == "ftdi_sio";
    info.usb = info.usb || info.ftdi;
    info.latencyTimerMs = ReadNumber(dir / "latency_timer");
    return info;
}

LowLatencyResult SysfsSerialAdapterInspector::requestLowLatency(const std::string& devicePath) {
    LowLatencyResult result;
    fs::path timer = deviceDir(devicePath) / "latency_timer";
    if (fs::exists(timer)) {
        std::ofstream(timer) << "1\n";
        result.latencyTimerMs = ReadNumber(timer);
        result.latencyTimerSet = result.latencyTimerMs == 1;
    }
    DeviceFd dev(ResolveDevice(devicePath));
    result.asyncLowLatency = SetAsyncLowLatency(dev.fd);
    return result;
}

bool SetAsyncLowLatency(int fd) {
    serial_struct ser{};
    if (fd < 0 || ::ioctl(fd, TIOCGSERIAL, &ser) != 0) return false;
    ser.flags |= ASYNC_LOW_LATENCY;
    return ::ioctl(fd, TIOCSSERIAL, &ser) == 0;
}

BreakSupport SysfsSerialAdapterInspector::probeBreak(const std::string& devicePath) {
    DeviceFd dev(ResolveDevice(devicePath));
    if (dev.fd < 0) return BreakSupport::Unknown;
    if (::ioctl(dev.fd, TIOCSBRK) != 0) return BreakSupport::Refused;
    ::ioctl(dev.fd, TIOCCBRK);
    return BreakSupport::Works;
}

std::string DescribeAdapter(const SerialAdapterInfo& info) {
    if (info.driver.empty())
        return fs::path(info.device).filename().string() + ": no adapter driver found";
    std::string text = info.driver + (info.ftdi ? " (FTDI)" : info.usb ? " (USB)" : "");
    if (info.latencyTimerMs >= 0)
        text += ", latency timer " + std::to_string(info.latencyTimerMs) + " ms";
    return text;
}

std::string BreakRefusedText(const SerialAdapterInfo& info) {
    return "THE ADAPTER DRIVER REFUSES A BREAK:  " +
           (info.driver.empty() ? fs::path(info.device).filename().string() : info.driver);
}

}  // namespace ketrel
