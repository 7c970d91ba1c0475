#pragma once
#include <algorithm>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "flow/car_rig.h"
#include "screens/frm_mode5.h"
#include "screens/frm_mode5_manuf.h"
#include "sweeps/mode5_manuf.h"
#include "sweeps/mode5_tests.h"

namespace ketrel::test {

// The two Mode 5 screens over a session with a shipped example car, connected by connect().
struct Mode5Rig : CarRig {
    Mode5Rig(const char* hardware, const std::string& car, int start)
        : CarRig(hardware, car, start, "180") {
        app().addScreen(std::make_unique<FrmMode5>(t.loop));
        app().addScreen(std::make_unique<FrmMode5Manuf>(t.loop));
        InstallMode5(app());
        InstallMode5Manuf(app());
    }
    FrmMode5& sae() { return *Mode5Screen(app()); }
    FrmMode5Manuf& manuf() { return *Mode5ManufScreen(app()); }
    void connect() {
        CarRig::connect();
        ASSERT_TRUE(app().Connected);
        t.loop.runFor(1000);
    }
    // Runs the ten tests of the sensor at `index` of cmbO2.
    void runTests(int index) {
        sae().cmbO2.setListIndex(index);
        sae().cmdOk.click();
        run(4000);
    }
    // The Mode 05 requests that reached the vehicle, as spaced hex.
    Strings mode5Requests() const {
        Strings out;
        std::copy_if(frames().begin(), frames().end(), std::back_inserter(out),
                     [](const std::string& s) { return s.find("F1 05 ") != std::string::npos; });
        return out;
    }
};

}  // namespace ketrel::test
