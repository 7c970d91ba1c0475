// Faults of the far end on each link device, on virtual time: a converter that floods the line
// without pause, and a vehicle that refuses every request. Each case ends in the program's own
// message or in a session that goes on; none in a crash, a wait without end or a growing buffer.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>

#include "core/session.h"
#include "flow/dorvane_rig.h"
#include "sim/br3_converter.h"
#include "sim/kline_ecu.h"
#include "sim/vehicle_file.h"

namespace ketrel::test {
namespace {

using Strings = std::vector<std::string>;

const char* const kWatchdogTitle = "Communication Not Found";

// One link device and the simulated car behind it.
struct Device {
    const char* name;
    const char* hardware;
    const char* car;  // a file of data/sim; "" for the default car
    int start;        // BR3 Start or KESH Start
    int baud;         // the rate of the line between converter and program
};

const Device kDorvaneVpw{"DORVANE", kDorvane, "", 1, 19200};
const Device kBr3Vpw{"BR3 VPW", kBr3, "vpw", 1, 19200};
const Device kBr3Pwm{"BR3 PWM", kBr3, "pwm", 1, 19200};
const Device kBr3Iso{"BR3 ISO 9141", kBr3, "iso9141", 1, 19200};
const Device kBr3Kwp{"BR3 KWP", kBr3, "iso14230", 1, 19200};
const Device kKeshIso{"KESH ISO 9141", kKesh, "iso9141", 1, 10400};
const Device kTactrixKwp{"TACTRIX KWP", kTactrix, "iso14230", 1, 10400};

// The application joined to a simulated device on port 1, on virtual time, watching the
// texts of every receive buffer and the frames it decodes.
struct DeviceRig {
    explicit DeviceRig(const Device& d) : t(&ports), device(d) {
        vehicle =
            *d.car
                ? sim::LoadVehicleFile(std::string(KETREL_DATA_DIR) + "/sim/" + d.car + ".vehicle")
                      .vehicle
                : sim::SimVehicle::Default();
        if (d.hardware == std::string(kDorvane))
            sim = std::make_unique<sim::DorvaneConverter>(vehicle);
        else if (d.hardware == std::string(kBr3))
            sim = std::make_unique<sim::Br3Converter>(vehicle);
        else
            sim = std::make_unique<sim::KlineEcu>(vehicle);
        wire = std::make_unique<sim::SimWire>(t.loop.scheduler(), *sim);
        ports.plug(1, *wire);
        App& app = *t;
        app.BR3SetDelay = true;
        app.BR3Start = app.KeshStart = d.start;
        SetUpSessionRig(t, d.hardware, "225");
        FrmMain& m = app.frmMain();
        for (Field* f : {&m.txtInputDORVANE, &m.txtInputBR3, &m.Text2, &m.txtKesh,
                         &app.frmConnecting().txtConnectingInput})
            f->observe([this, f] { longest = std::max(longest, f->text().size()); });
        app.hooks.FrameDecoded = [this] { longest = std::max(longest, t->RawFrame.size()); };
    }
    App& app() { return *t; }
    void connect() {
        t.loop.setLimitMs(t.loop.nowMs() + 200000);  // a hang fails instead of spinning
        ConnectSession(app());
    }
    void run(int ms) { t.loop.runFor(ms); }
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
        t.loop.scheduler().postAt((lastTick + 100) * 1000, [this] { tick(); });
    }

    sim::SimSerialPortFactory ports;
    TestApp t;
    Device device;
    sim::SimVehicle vehicle;
    std::unique_ptr<sim::SimDevice> sim;
    std::unique_ptr<sim::SimWire> wire;
    bool flooding = false;
    std::function<std::string()> floodChunk;
    std::size_t longest = 0;
    long long lastTick = -1, longestGap = 0;
};

// A repeatable stream of bytes of any value.
std::string Rubbish(std::uint32_t& state, std::size_t n) {
    std::string s;
    for (std::size_t i = 0; i < n; ++i) {
        state = state * 1664525u + 1013904223u;
        s += char(state >> 24);
    }
    return s;
}

// A good answer of the engine to Mode 01 PID 0C as the device puts it on the line.
std::string GoodAnswer(DeviceRig& r) {
    sim::SimMessage m = r.vehicle.frame(r.vehicle.ecus[0], {0x41, 0x0C, 0x1A, 0xF8});
    std::string bytes(m.begin(), m.end());
    if (r.device.hardware == std::string(kDorvane)) return "V" + sim::HexText(m);
    if (r.device.hardware == std::string(kBr3) && r.vehicle.protocol <= sim::Protocol::J1850Pwm)
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
    for (const Device& d : {kDorvaneVpw, kBr3Vpw, kBr3Iso, kKeshIso, kTactrixKwp})
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
        ASSERT_TRUE(app.Connected);
        for (auto& wanted : app.PidWanted)
            wanted = false;
        app.PidWanted[0x0C] = true;
        r.run(1000);
        r.tick();
        std::uint32_t seed = 5;
        // A line's worth of bytes every 20 ms: what the rate lets through, no more.
        const std::size_t perChunk = std::size_t(c.device.baud / 10 / 50);
        const std::string good = GoodAnswer(r);
        r.flood([&] {
            if (c.rubbish) return Rubbish(seed, perChunk);
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

        EXPECT_LE(r.longest, 8192u);   // a driver's buffer, in hex digits: never more
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
        {kTactrixKwp, false, kConnectFailed},
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
