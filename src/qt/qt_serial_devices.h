#pragma once
#include "platform/serial_devices.h"

namespace ketrel {

// The serial devices of the machine as Qt Serial Port finds them, USB adapters marked.
class QtSerialDeviceLister : public SerialDeviceLister {
  public:
    std::vector<SerialDeviceInfo> devices() override;
};

}  // namespace ketrel
