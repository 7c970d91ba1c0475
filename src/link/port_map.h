#pragma once
#include <string>
#include <vector>

#include "platform/serial_devices.h"
#include "platform/settings_store.h"

namespace ketrel {

// The settings section that maps port numbers to device paths ("1=/dev/ttyUSB0").
inline constexpr const char* kPortsSection = "Ports";

// One numbered port as the settings page lists it.
struct PortChoice {
    int number = 0;
    std::string path;
    std::string description;
    bool fromSettings = false;  // typed in by the user rather than found
};

// The devices present in the order they are numbered: USB adapters first, then the others,
// each group by path with numbers compared as numbers (ttyUSB2 before ttyUSB10).
std::vector<SerialDeviceInfo> OrderedSerialDevices(std::vector<SerialDeviceInfo> devices);

// The device path behind port `number`: the [Ports] entry if one is stored, else the
// number-th device present, counted from 1. Empty when the number maps to nothing.
std::string PortDevicePath(SettingsStore& settings, SerialDeviceLister& lister, int number);

// Stores a device path for a port number; an empty path removes the mapping, so the number
// goes back to the devices present.
void SavePortDevicePath(SettingsStore& settings, int number, const std::string& path);

// Every port number that maps to a device, with where the mapping comes from, for the settings
// page's list. Numbers run from 1 to the highest mapped one; gaps are left out.
std::vector<PortChoice> ListPortChoices(SettingsStore& settings, SerialDeviceLister& lister);

// The device path of port `number`, or SerialError 8002 when it maps to nothing.
std::string RequirePortDevicePath(SettingsStore& settings, SerialDeviceLister& lister, int number);

}  // namespace ketrel
