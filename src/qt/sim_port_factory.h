#pragma once
#include <map>
#include <memory>
#include <string>

#include "platform/event_loop.h"
#include "platform/serial_adapter.h"
#include "platform/serial_devices.h"
#include "platform/serial_port.h"
#include "platform/settings_store.h"

namespace ketrel {

// The device paths that lead to an in-process simulated car instead of a serial device:
// "sim:" and "sim:FILE" (a vehicle file; the built-in car when none is named).
inline constexpr const char* kSimPortPrefix = "sim:";
// True for a "sim:" device path.
bool IsSimPortPath(const std::string& path);

struct SimCars;

// Hands out ports that decide at each opening what stands behind them: a "sim:" device path
// gives a simulated car behind the converter OBDIIHardware names (the text converter, the
// count-byte converter, or the bare ECU on a K-line for the two plain cables), running in real
// time on the event loop's scheduler; any other path gives the serial device. A pseudo-terminal
// carries no break and no baud rate, so only this way reaches a K-line car from the program.
class SimPortFactory : public SerialPortFactory {
  public:
    SimPortFactory(EventLoop& loop, SettingsStore& settings, SerialDeviceLister& devices);
    ~SimPortFactory() override;
    std::unique_ptr<SerialPort> create(const std::string& objectName) override;
    SerialDeviceLister* deviceLister() override { return &devices_; }
    // The serial devices' adapters (a "sim:" path has none to tell of).
    SerialAdapterInspector* adapterInspector() override { return &adapters_; }

  private:
    SerialDeviceLister& devices_;
    SysfsSerialAdapterInspector adapters_;
    std::shared_ptr<SimCars> cars_;
};

}  // namespace ketrel
