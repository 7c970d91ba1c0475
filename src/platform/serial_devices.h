#pragma once
#include <string>
#include <utility>
#include <vector>

namespace ketrel {

// One serial device the system offers, as the port numbering sees it.
struct SerialDeviceInfo {
    std::string path;         // device path, such as /dev/ttyUSB0
    std::string description;  // what the system says the device is ("USB-Serial Controller")
    bool usb = false;         // a USB adapter (numbered before the built-in ports)
};

// Lists the serial devices present, so that port numbers can be given to them.
class SerialDeviceLister {
  public:
    virtual ~SerialDeviceLister() = default;
    virtual std::vector<SerialDeviceInfo> devices() = 0;
};

// A lister with a fixed list: tests, and systems where devices are only typed in by hand.
class FixedSerialDeviceLister : public SerialDeviceLister {
  public:
    FixedSerialDeviceLister() = default;
    explicit FixedSerialDeviceLister(std::vector<SerialDeviceInfo> list) : list_(std::move(list)) {}
    std::vector<SerialDeviceInfo> devices() override { return list_; }
    void setDevices(std::vector<SerialDeviceInfo> list) { list_ = std::move(list); }

  private:
    std::vector<SerialDeviceInfo> list_;
};

}  // namespace ketrel
