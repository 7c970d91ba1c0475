#include "qt/sim_port_factory.h"

#include <gtest/gtest.h>

#include "link/port_map.h"
#include "link/serial_timing.h"
#include "platform/virtual_event_loop.h"
#include "state/app.h"

namespace ketrel {
namespace {

// A port opened on a sim: path reaches the car behind the converter OBDIIHardware names at
// that moment; any other path stays a serial device (here one that isn't there).
TEST(SimPortFactory, ASimPathOpensTheCarBehindTheChosenConverter) {
    struct Case {
        const char* hardware;
        const char* path;
        std::string send;
        const char* heard;  // hex; "8002" when opening fails with that code
    } cases[] = {
        {kBr3, "sim:", " ", "01FF"},                          // the count-byte wake-up
        {kKesh, "sim:", std::string("\x68\x00", 2), "6800"},  // a K-line hears itself
        {kTactrix, "sim:" KETREL_DATA_DIR "/sim/iso14230.vehicle", "\x01", "01"},
        {kDorvane, "sim:", "\x01", ""},  // no echo, nothing to say
        {kBr3, "sim:/no/such.vehicle", " ", "8002"},
        {kBr3, "/dev/no-such-tty", " ", "8002"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.hardware) + " " + c.path);
        VirtualEventLoop loop;
        MemorySettingsStore settings;
        FixedSerialDeviceLister devices;
        settings.save(kAppName, kSection, "OBDIIHardware", c.hardware);
        SavePortDevicePath(settings, 3, c.path);
        SimPortFactory factory(loop, settings, devices);
        auto port = factory.create("TestMSComm");
        port->setCommPort(3);
        port->setSettings(c.hardware == std::string(kKesh) ? "10400,n,8,1" : "19200,n,8,1");
        int events = 0;
        port->setRThreshold(1);
        port->setOnComm([&] { ++events; });
        try {
            port->setPortOpen(true);
        } catch (const SerialError& e) {
            EXPECT_EQ(std::to_string(e.code()), c.heard);
            continue;
        }
        port->output(c.send);
        loop.runFor(50);
        const std::string hex = BytesToHex(port->input());
        EXPECT_EQ(hex, c.heard);
        EXPECT_EQ(events > 0, !hex.empty());
        port->setPortOpen(false);
    }
}

}  // namespace
}  // namespace ketrel
