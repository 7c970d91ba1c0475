#include "link/kline_adapter.h"

namespace ketrel {

AdapterCheck CheckAdapterBeforeWakeUp(SerialAdapterInspector* adapters, SerialPort& port,
                                      const std::string& devicePath) {
    AdapterCheck check;
    check.info.device = devicePath;
    if (adapters) {
        check.info = adapters->inspect(devicePath);
        check.logLines.push_back("ADAPTER:  " + DescribeAdapter(check.info));
        check.lowLatency = adapters->requestLowLatency(devicePath);
    }
    check.portLowLatency = port.setLowLatency();
    if (check.info.ftdi) {
        check.logLines.push_back(check.lowLatency.latencyTimerSet
                                     ? std::string("LATENCY TIMER SET:  1 mS")
                                     : "LATENCY TIMER NOT CHANGED:  " +
                                           std::to_string(check.info.latencyTimerMs) + " mS");
    }
    check.logLines.push_back(check.portLowLatency || check.lowLatency.asyncLowLatency
                                 ? "LOW LATENCY:  ON"
                                 : "LOW LATENCY:  NOT AVAILABLE");
    // A pulse of a few microseconds, followed by the idle time of the wake-up.
    port.setBreak(true);
    port.setBreak(false);
    check.breakRefused = port.breakRefused();
    if (check.breakRefused) {
        check.logLines.push_back(BreakRefusedText(check.info));
        check.status = "The adapter's driver refuses a break: no K-line wake-up possible";
    } else if (check.info.ftdi && check.info.latencyTimerMs > 1 &&
               !check.lowLatency.latencyTimerSet) {
        check.status = "Adapter latency timer " + std::to_string(check.info.latencyTimerMs) +
                       " ms: answers may come late";
    }
    return check;
}

}  // namespace ketrel
