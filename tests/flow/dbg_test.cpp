#include <gtest/gtest.h>
#include <iostream>
#include "core/scan_cycle.h"
#include "flow/dorvane_rig.h"
namespace ketrel::test {
TEST(Dbg, X) {
    DorvaneRig r;
    r.vehicle.ecus[0].fixed[0x0C] = {0x1A, 0xF8};
    r.t.loop.setLimitMs(60000);
    r.connect();
    App& app = r.app();
    std::cerr << "after connect t=" << r.t.loop.nowMs() << " connected=" << app.Connected << " cmds=" << r.commands().size() << "\n";
    for (int i = 0; i < 97; ++i) if (app.Mode1Supported[i]) std::cerr << i << " ";
    std::cerr << "\n";
    for (auto& w : app.PidWanted) w = false;
    app.PidWanted[0x0C] = true;
    try { r.run(1500); } catch (std::exception& e) { std::cerr << e.what() << "\n"; }
    std::cerr << "t=" << r.t.loop.nowMs() << " connected=" << app.Connected << "\n";
    for (auto& c : r.commands()) std::cerr << c << " ";
    std::cerr << "\n" << app.frmMain().lblRPM.text() << "\n";
    for (auto& b : r.t.dialogs.shown()) std::cerr << "BOX " << b.title << "\n";
}
}
