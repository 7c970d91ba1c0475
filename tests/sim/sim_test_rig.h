#pragma once
#include <functional>
#include <memory>
#include <string>

#include "sim/sim_serial_port.h"
#include "sim/vehicle_file.h"

namespace ketrel::sim::test {

// A shipped example vehicle from data/sim by its name ("vpw", "iso9141").
inline SimVehicle LoadCar(const std::string& name) {
    return LoadVehicleFile(std::string(KETREL_DATA_DIR) + "/sim/" + name + ".vehicle").vehicle;
}

// The program's port `name` on `wire` at `settings`, raising onComm from the first byte in.
inline std::unique_ptr<SerialPort> PlugPort(SimSerialPortFactory& ports, SimWire& wire,
                                            const std::string& name, const std::string& settings,
                                            std::function<void()> onComm) {
    ports.plug(1, wire);
    auto port = ports.create(name);
    port->setCommPort(1);
    port->setSettings(settings);
    port->setRThreshold(1);
    port->setOnComm(std::move(onComm));
    return port;
}

}  // namespace ketrel::sim::test
