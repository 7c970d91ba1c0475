#pragma once
#include <string>
#include <vector>

#include "platform/serial_adapter.h"
#include "platform/serial_port.h"

namespace ketrel {

// What the look at the adapter before a wake-up found, with what to tell the user.
struct AdapterCheck {
    SerialAdapterInfo info;
    LowLatencyResult lowLatency;
    bool portLowLatency = false;  // the open port's driver took the low-latency flag
    bool breakRefused = false;
    std::vector<std::string> logLines;  // for the connecting log, in order
    std::string status;                 // for the status line; empty when all is well
};

// Looks at the adapter behind the open port before a K-line wake-up: its driver and FTDI
// latency timer, a request for low latency, and a short break pulse to learn whether the
// driver drives a break at all. Call it before the idle time of the wake-up, which lets the
// line settle after the pulse. `adapters` may be null (no system facts, the port checks only).
AdapterCheck CheckAdapterBeforeWakeUp(SerialAdapterInspector* adapters, SerialPort& port,
                                      const std::string& devicePath);

}  // namespace ketrel
