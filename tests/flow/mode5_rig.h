#pragma once
#include <algorithm>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "core/session.h"
#include "flow/dorvane_rig.h"
#include "screens/frm_mode5.h"
#include "screens/frm_mode5_manuf.h"
#include "sim/br3_converter.h"
#include "sim/kline_ecu.h"
#include "sim/sim_serial_port.h"
#include "sim/sim_wire.h"
#include "sim/vehicle_file.h"
#include "support/test_app.h"
#include "sweeps/mode5_manuf.h"
#include "sweeps/mode5_tests.h"

namespace ketrel::test {

// The two Mode 5 screens over a session with a shipped example car, through the count-byte
// converter or a raw K-line cable, on virtual time.
struct Mode5Rig {
    Mode5Rig(const char* hardware, const std::string& car, int start)
        : t(&ports),
          vehicle(sim::LoadVehicleFile(std::string(KETREL_DATA_DIR) + "/sim/" + car + ".vehicle")
                      .vehicle) {
        if (std::string(hardware) == kBr3) {
            device = std::make_unique<sim::Br3Converter>(vehicle);
        } else {
            device = std::make_unique<sim::KlineEcu>(vehicle);
        }
        wire = std::make_unique<sim::SimWire>(t.loop.scheduler(), *device);
        ports.plug(1, *wire);
        App& app = *t;
        app.BR3SetDelay = true;
        app.BR3Start = app.KeshStart = start;
        app.addScreen(std::make_unique<FrmMode5>(t.loop));
        app.addScreen(std::make_unique<FrmMode5Manuf>(t.loop));
        SetUpSessionRig(t, hardware, "180");
        InstallMode5(app);
        InstallMode5Manuf(app);
        app.hooks.FrameDecoded = [this] { decoded++; };
    }
    App& app() { return *t; }
    FrmMode5& sae() { return *Mode5Screen(app()); }
    FrmMode5Manuf& manuf() { return *Mode5ManufScreen(app()); }
    void connect() {
        t.loop.setLimitMs(t.loop.nowMs() + 400000);  // a hang fails instead of spinning
        ConnectSession(app());
        ASSERT_TRUE(app().Connected);
        t.loop.runFor(1000);
    }
    void run(int ms) { t.loop.runFor(ms); }
    void at(int ms, std::function<void()> fn) {
        t.loop.scheduler().postAt((t.loop.nowMs() + ms) * 1000, fn);
    }
    // Runs the ten tests of the sensor at `index` of cmbO2.
    void runTests(int index) {
        sae().cmbO2.setListIndex(index);
        sae().cmdOk.click();
        run(4000);
    }
    // The Mode 05 requests that reached the vehicle, as spaced hex.
    std::vector<std::string> mode5Requests() const {
        const std::vector<std::string>& all = br3() ? br3()->commands() : kline()->received();
        std::vector<std::string> out;
        std::copy_if(all.begin(), all.end(), std::back_inserter(out),
                     [](const std::string& s) { return s.find("F1 05 ") != std::string::npos; });
        return out;
    }
    sim::Br3Converter* br3() const { return dynamic_cast<sim::Br3Converter*>(device.get()); }
    sim::KlineEcu* kline() const { return dynamic_cast<sim::KlineEcu*>(device.get()); }

    sim::SimSerialPortFactory ports;
    TestApp t;
    sim::SimVehicle vehicle;
    std::unique_ptr<sim::SimDevice> device;
    std::unique_ptr<sim::SimWire> wire;
    int decoded = 0;
};

}  // namespace ketrel::test
