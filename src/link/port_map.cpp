#include "link/port_map.h"

#include <algorithm>
#include <cctype>

#include "platform/serial_port.h"
#include "state/app.h"

namespace ketrel {

namespace {

// Compares device paths so that runs of digits order by value: ttyS2 < ttyS10.
bool naturalLess(const std::string& a, const std::string& b) {
    std::size_t i = 0, j = 0;
    while (i < a.size() && j < b.size()) {
        if (std::isdigit(static_cast<unsigned char>(a[i])) &&
            std::isdigit(static_cast<unsigned char>(b[j]))) {
            std::size_t ei = i, ej = j;
            while (ei < a.size() && std::isdigit(static_cast<unsigned char>(a[ei])))
                ++ei;
            while (ej < b.size() && std::isdigit(static_cast<unsigned char>(b[ej])))
                ++ej;
            std::string na = a.substr(i, ei - i), nb = b.substr(j, ej - j);
            na.erase(0, std::min(na.find_first_not_of('0'), na.size()));
            nb.erase(0, std::min(nb.find_first_not_of('0'), nb.size()));
            if (na.size() != nb.size()) return na.size() < nb.size();
            if (na != nb) return na < nb;
            i = ei;
            j = ej;
        } else {
            if (a[i] != b[j]) return a[i] < b[j];
            ++i;
            ++j;
        }
    }
    return a.size() - i < b.size() - j;
}

std::string storedPath(SettingsStore& settings, int number) {
    return settings.get(kAppName, kPortsSection, std::to_string(number), "");
}

// Highest number that can carry a stored mapping; port numbers are 16-bit in the program.
constexpr int kMaxPortNumber = 255;

}  // namespace

std::vector<SerialDeviceInfo> OrderedSerialDevices(std::vector<SerialDeviceInfo> devices) {
    std::stable_sort(devices.begin(), devices.end(),
                     [](const SerialDeviceInfo& a, const SerialDeviceInfo& b) {
                         if (a.usb != b.usb) return a.usb;
                         return naturalLess(a.path, b.path);
                     });
    devices.erase(std::unique(devices.begin(), devices.end(),
                              [](const SerialDeviceInfo& a, const SerialDeviceInfo& b) {
                                  return a.path == b.path;
                              }),
                  devices.end());
    return devices;
}

std::string PortDevicePath(SettingsStore& settings, SerialDeviceLister& lister, int number) {
    if (number < 1) return {};
    std::string stored = storedPath(settings, number);
    if (!stored.empty()) return stored;
    auto devices = OrderedSerialDevices(lister.devices());
    if (static_cast<std::size_t>(number) > devices.size()) return {};
    return devices[number - 1].path;
}

void SavePortDevicePath(SettingsStore& settings, int number, const std::string& path) {
    settings.save(kAppName, kPortsSection, std::to_string(number), path);
}

std::vector<PortChoice> ListPortChoices(SettingsStore& settings, SerialDeviceLister& lister) {
    auto devices = OrderedSerialDevices(lister.devices());
    int highest = static_cast<int>(devices.size());
    for (int n = highest + 1; n <= kMaxPortNumber; ++n) {
        if (!storedPath(settings, n).empty()) highest = n;
    }
    std::vector<PortChoice> out;
    for (int n = 1; n <= highest; ++n) {
        PortChoice c;
        c.number = n;
        c.path = storedPath(settings, n);
        c.fromSettings = !c.path.empty();
        if (c.path.empty() && static_cast<std::size_t>(n) <= devices.size())
            c.path = devices[n - 1].path;
        if (c.path.empty()) continue;
        for (const auto& d : devices) {
            if (d.path == c.path) c.description = d.description;
        }
        out.push_back(std::move(c));
    }
    return out;
}

std::string RequirePortDevicePath(SettingsStore& settings, SerialDeviceLister& lister, int number) {
    std::string path = PortDevicePath(settings, lister, number);
    if (path.empty()) throw SerialError(kErrInvalidPort, "Invalid Port Number");
    return path;
}

}  // namespace ketrel
