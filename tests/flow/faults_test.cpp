// Faults of the far end on each link device, on virtual time: a converter that floods the line
// without pause, and a vehicle that refuses every request. Each case ends in the program's own
// message or in a session that goes on; none in a crash, a wait without end or a growing buffer.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "flow/car_rig.h"

namespace ketrel::test {
namespace {

const char* const kWatchdogTitle = "Communication Not Found";

// One link device and the simulated car behind it.
struct Device {
    const char* name;
    const char* hardware;
    const char* car;  // a file of data/sim, or "default"
    int baud;         // the rate of the line between converter and program
};

const Device kDorvaneVpw{"DORVANE", kDorvane, "default", 19200};
const Device kBr3Vpw{"BR3 VPW", kBr3, "vpw", 19200};
const Device kBr3Pwm{"BR3 PWM", kBr3, "pwm", 19200};
const Device kBr3Iso{"BR3 ISO 9141", kBr3, "iso9141", 19200};
const Device kBr3Kwp{"BR3 KWP", kBr3, "iso14230", 19200};
const Device kKeshIso{"KESH ISO 9141", kKesh, "iso9141", 10400};
const Device kKeshKwp{"KESH KWP", kKesh, "iso14230", 10400};

// A session rig on the device that can flood the line and time the turns of the event loop.
struct DeviceRig : CarRig {
    explicit DeviceRig(const Device& d) : CarRig(d.hardware, d.car, 1, "225"), device(d) {}
    // `chunk()` goes out on the line every 20 ms from now until `flooding` is cleared.
    void flood(std::function<std::string()> chunk) {
        flooding = true;
        floodChunk = std::move(chunk);
        floodStep();
    }
    void floodStep() {
        if (!flooding) return;
        wire->send(floodChunk());
        wire->after(20'000, [this] { floodStep(); });
    }
    // Marks the turns of the event loop every 100 ms; the longest gap between two turns.
    void tick() {
        if (lastTick >= 0) longestGap = std::max(longestGap, t.loop.nowMs() - lastTick);
        lastTick = t.loop.nowMs();
        after(100, [this] { tick(); });
    }

    Device device;
    bool flooding = false;
    std::function<std::string()> floodChunk;
    long long lastTick = -1, longestGap = 0;
};

// A good answer of the engine to Mode 01 PID 0C as the device puts it on the line.
std::string GoodAnswer(DeviceRig& r) {
    sim::SimMessage m = r.vehicle.frame(r.vehicle.ecus[0], {0x41, 0x0C, 0x1A, 0xF8});
    std::string bytes(m.begin(), m.end());
    if (r.dorvane) return "V" + sim::HexText(m);
    if (r.br3 && r.vehicle.protocol <= sim::Protocol::J1850Pwm)
        return char(m.size()) + bytes;  // the converter's own byte in front
    return bytes;
}

// True while any scanning port of the main screen is open.
bool PortsOpen(App& app) {
    FrmMain& m = app.frmMain();
    return m.MSComm->portOpen() || m.BR3MSComm->portOpen() || m.KeshMSComm->portOpen();
}

TEST(LinkFaults, AFloodingConverterLeavesTheBuffersBoundedAndTheProgramTurning) {
    struct Case {
        Device device;
        bool rubbish;      // else good answers without pause
        int disconnectAt;  // ms into the flood the user disconnects; 0: never
    };
    std::vector<Case> cases;
    for (const Device& d : {kDorvaneVpw, kBr3Vpw, kBr3Iso, kKeshIso, kKeshKwp})
        for (bool rubbish : {true, false})
            for (int at : {0, 3000})
                cases.push_back({d, rubbish, at});
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.device.name) + (c.rubbish ? ", rubbish" : ", good answers") +
                     (c.disconnectAt ? ", disconnect" : ""));
        DeviceRig r(c.device);
        App& app = r.app();
        r.vehicle.ecus[0].fixed[0x0C] = {0x1A, 0x28};
        r.connect();
        BufferWatch w(app);
        ASSERT_TRUE(app.Connected);
        for (auto& wanted : app.PidWanted)
            wanted = false;
        app.PidWanted[0x0C] = true;
        r.run(1000);
        r.tick();
        Noise noise{5};
        // A line's worth of bytes every 20 ms: what the rate lets through, no more.
        const std::size_t perChunk = std::size_t(c.device.baud / 10 / 50);
        const std::string good = GoodAnswer(r);
        r.flood([&] {
            if (c.rubbish) return noise.bytes(perChunk);
            std::string s = good;
            while (s.size() + good.size() <= perChunk)
                s += good;
            return s;
        });
        if (c.disconnectAt) {
            r.run(c.disconnectAt);
            app.frmMain().mnuVehicleDisconnect.click();
            EXPECT_FALSE(app.Connected);
        }
        r.run(15000 - c.disconnectAt);
        r.flooding = false;
        r.run(1000);
        app.frmMain().lblRPM.setText("");
        r.run(3000);

        // A driver's buffer, in hex digits: never more.
        EXPECT_LE(std::max({w.longestInput, w.longestOther, w.longestFrame}), 8192u);
        EXPECT_LE(r.longestGap, 400);  // other events kept running
        const Strings titles = r.t.dialogs.titles();
        if (c.disconnectAt || !app.Connected) {
            EXPECT_FALSE(app.Connected);
            EXPECT_FALSE(PortsOpen(app));
            EXPECT_EQ(titles, c.disconnectAt ? Strings{} : Strings{kWatchdogTitle});
        } else {
            EXPECT_TRUE(titles.empty());
            EXPECT_EQ(app.frmMain().lblRPM.text(), "1674");  // the scan goes on once quiet
        }
    }
}

TEST(LinkFaults, AVehicleThatRefusesEveryRequestEndsInTheMessageOfItsDevice) {
    struct Case {
        Device device;
        bool connects;   // a refusal is an answer to the converter's probe
        Strings titles;  // every message shown, in order
    };
    const Strings kConnectFailed{"No Communication"};
    const Strings kSessionLost{"Confirmation", "Code Clear Unsuccessfull", kWatchdogTitle};
    const Case cases[] = {
        {kDorvaneVpw, false, kConnectFailed}, {kBr3Vpw, true, kSessionLost},
        {kBr3Pwm, true, kSessionLost},        {kBr3Iso, true, kSessionLost},
        {kBr3Kwp, true, kSessionLost},        {kKeshIso, false, kConnectFailed},
        {kKeshKwp, false, kConnectFailed},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.device.name);
        DeviceRig r(c.device);
        r.vehicle.refusal = 0x12;  // sub-function not supported
        App& app = r.app();
        FrmMain& m = app.frmMain();
        if (!c.connects) r.t.dialogs.answerNext(MsgAnswer::Cancel);
        r.connect();
        ASSERT_EQ(app.Connected, c.connects);
        if (c.connects) {  // the codes screen asks, and asks to clear
            m.mnuVehicleRequestTC.click();
            r.t.dialogs.answerNext(MsgAnswer::Yes);
            m.cmdClearCodes.click();
            r.run(30000);
        }
        EXPECT_FALSE(app.Connected);
        EXPECT_FALSE(PortsOpen(app));
        EXPECT_EQ(m.lstCodes.count(), 0);
        EXPECT_TRUE(m.lblRPM.text().empty() || m.lblRPM.text() == "N/A") << m.lblRPM.text();
        EXPECT_EQ(r.t.dialogs.titles(), c.titles);
        const std::string asked = r.wire->deviceReceived();
        r.run(10000);
        EXPECT_EQ(r.wire->deviceReceived(), asked);  // nothing goes on asking
    }
}

}  // namespace
}  // namespace ketrel::test
