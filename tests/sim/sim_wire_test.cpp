#include "sim/sim_wire.h"

#include <gtest/gtest.h>

#include "platform/virtual_event_loop.h"
#include "sim/sim_serial_port.h"

namespace ketrel::sim {
namespace {

// A device that notes what it sees, with its own time, and answers when told to.
class Recorder : public SimDevice {
  public:
    std::vector<std::string> seen;
    std::function<void(unsigned char)> answer;

    void onHostOpen() override { note("open"); }
    void onHostClose() override { note("close"); }
    void onByte(unsigned char b) override {
        note("byte " + std::to_string(b));
        if (answer) answer(b);
    }
    void onBreak(bool on) override { note(on ? "break on" : "break off"); }
    void onBaud(int rate) override { note("baud " + std::to_string(rate)); }
    DeviceLink& wire() { return link(); }

  private:
    void note(const std::string& what) {
        seen.push_back(std::to_string(link().nowMicros()) + " " + what);
    }
};

struct Rig {
    Rig() {
        ports.plug(1, wire);
        port = ports.create("KeshMSComm");
        port->setCommPort(1);
        port->setSettings("19200,n,8,1");
        port->setOnComm([this] {
            events.push_back(std::to_string(loop.virtualClock().nowMicros()) + " " +
                             std::to_string(port->commEvent()) + " " + port->input());
        });
    }
    VirtualEventLoop loop;
    Recorder device;
    SimWire wire{loop.scheduler(), device};
    SimSerialPortFactory ports;
    std::unique_ptr<SerialPort> port;
    std::vector<std::string> events;
};

TEST(SimWire, BytesReachTheDeviceWhenTheirStopBitEndsAtTheRateInForce) {
    Rig r;
    r.port->setPortOpen(true);
    r.port->output("AB");
    r.loop.runFor(5);  // t = 5 ms
    r.port->setBaud(10400);
    r.port->output(std::string(1, '\xF0'));
    r.loop.runFor(5);
    EXPECT_EQ(r.device.seen, (std::vector<std::string>{"0 open", "521 byte 65", "1042 byte 66",
                                                       "5000 baud 10400", "5962 byte 240"}));
    EXPECT_EQ(r.wire.deviceReceived(), "AB\xF0");
}

TEST(SimWire, BreakEdgesKeepTheirTimesEvenWhenTheProgramNeverPumps) {
    Rig r;
    r.port->setPortOpen(true);
    // A wake-up as the program times it: edges 200 ms apart in blocking waits, then a byte
    // at 10400 baud 25 ms later. Nothing is pumped until the end.
    r.port->setBreak(true);
    r.loop.sleep(200);
    r.port->setBreak(false);
    r.loop.sleep(200);
    r.port->setBreak(true);
    r.loop.sleep(400);
    r.port->setBreak(false);
    r.loop.sleep(25);
    r.port->setBaud(10400);
    r.port->output(std::string(1, '\xC1'));
    EXPECT_EQ(r.device.seen.size(), 0u);  // the device has not run yet
    r.loop.runFor(10);
    EXPECT_EQ(r.device.seen, (std::vector<std::string>{"0 open", "0 break on", "200000 break off",
                                                       "400000 break on", "800000 break off",
                                                       "825000 baud 10400", "825962 byte 193"}));
    int edges = 0;
    for (const auto& e : r.wire.events()) {
        if (e.kind == WireEvent::Kind::BreakOn || e.kind == WireEvent::Kind::BreakOff) ++edges;
    }
    EXPECT_EQ(edges, 4);
}

// While the program is busy, what arrives waits in the buffer; read, it raises no event, and
// unread, the bursts come in one event at the next pump.
TEST(SimWire, AnAnswerWaitsInTheBufferWhileTheProgramIsBusy) {
    Rig r;
    r.port->setRThreshold(1);
    r.port->setPortOpen(true);
    r.device.answer = [&](unsigned char) {
        r.device.wire().after(20'000, [&] { r.device.wire().send("U"); });
    };
    r.port->output("x");
    r.loop.sleep(100);  // busy: no pump, no event
    EXPECT_TRUE(r.events.empty());
    EXPECT_EQ(r.port->inBufferCount(), 1);
    EXPECT_EQ(r.port->input(), "U");
    r.loop.runFor(10);
    EXPECT_TRUE(r.events.empty());  // already read: no event for it
    const WireEvent& burst = r.wire.events().back();
    EXPECT_EQ(burst.kind, WireEvent::Kind::DeviceBurst);
    EXPECT_EQ(burst.atMicros, 521 + 20'000);
    EXPECT_EQ(burst.arriveMicros, 521 + 20'000 + 521);
    r.device.wire().after(1'000, [&] { r.device.wire().send("V486B"); });
    r.device.wire().after(8'000, [&] { r.device.wire().send("S"); });
    r.loop.sleep(20);
    r.loop.runFor(5);
    EXPECT_EQ(r.events, (std::vector<std::string>{"130000 2 V486BS"}));
}

TEST(SimWire, TheReceivedDataEventFiresAtArrivalOnlyWithThresholdOne) {
    for (int threshold : {0, 1}) {
        Rig r;
        r.port->setRThreshold(threshold);
        r.port->setPortOpen(true);
        r.device.wire().at(10'000, [&] { r.device.wire().send(std::string("V1\0.", 4)); });
        r.loop.runFor(50);
        if (threshold == 0) {
            EXPECT_TRUE(r.events.empty());
            EXPECT_EQ(r.port->input(), std::string("V1\0.", 4));
        } else {
            EXPECT_EQ(r.events, (std::vector<std::string>{"12083 2 " + std::string("V1\0.", 4)}));
        }
    }
}

TEST(SimWire, EchoReturnsTheProgramsBytesAndABreakAsANull) {
    Rig r;
    r.wire.setEcho(true);
    r.port->setPortOpen(true);
    r.port->setBreak(true);
    r.loop.sleep(25);
    r.port->setBreak(false);
    r.port->output("\x68\x6A");
    r.loop.runFor(5);
    EXPECT_EQ(r.port->input(), std::string("\0\x68\x6A", 3));
    // A break shorter than one character is not seen.
    r.port->setBreak(true);
    r.port->setBreak(false);
    r.loop.runFor(5);
    EXPECT_EQ(r.port->input(), "");
}

TEST(SimWire, ABaudChangeKeepsTheBufferAndMismatchedRatesGiveNulls) {
    Rig r;
    r.port->setPortOpen(true);
    r.device.wire().send("UU");
    r.loop.runFor(5);
    ASSERT_TRUE(r.port->setBaud(10400));
    EXPECT_EQ(r.port->inBufferCount(), 2);
    r.device.wire().send("\x08\x08");  // device still at 19200
    r.loop.runFor(5);
    EXPECT_EQ(r.port->input(), std::string("UU\0\0", 4));
    r.wire.setDeviceBaud(10400);
    r.device.wire().send("\x08");
    r.loop.runFor(5);
    EXPECT_EQ(r.port->input(), "\x08");
}

TEST(SimWire, OpeningFailsWithTheCodesOfTheDesktopPort) {
    Rig r;
    auto other = r.ports.create("MSComm2");
    auto nowhere = r.ports.create("BR3MSComm");
    nowhere->setCommPort(4);
    r.port->setPortOpen(true);
    other->setCommPort(1);
    struct Case {
        const char* what;
        SerialPort* port;
        int code;
    };
    const Case cases[] = {{"no wire on the number", nowhere.get(), kErrInvalidPort},
                          {"wire taken by another port", other.get(), kErrPortOpen},
                          {"port already open", r.port.get(), kErrPortOpen}};
    for (const auto& c : cases) {
        try {
            c.port->setPortOpen(true);
            ADD_FAILURE() << c.what;
        } catch (const SerialError& e) {
            EXPECT_EQ(e.code(), c.code) << c.what;
        }
    }
    r.port->setPortOpen(false);
    EXPECT_THROW(r.port->output("x"), SerialError);
    other->setPortOpen(true);  // free again
    EXPECT_TRUE(other->portOpen());
}

// Bytes on the line are lost when the port closes or the adapter is pulled; a pulled adapter
// raises an error event and stays gone until restored.
TEST(SimWire, APulledAdapterRaisesAnErrorEventAndStaysGoneUntilRestored) {
    Rig r;
    r.port->setRThreshold(1);
    r.port->setPortOpen(true);
    r.device.wire().send("S");
    r.loop.runFor(1);  // arrived, not read by anything but the handler
    r.events.clear();
    r.device.wire().send("V4");
    r.wire.vanish();
    r.loop.runFor(5);
    ASSERT_EQ(r.events.size(), 1u);
    EXPECT_EQ(r.events[0], "1000 " + std::to_string(kCommEventError) + " ");
    EXPECT_FALSE(r.port->portOpen());
    EXPECT_EQ(r.port->input(), "");
    try {
        r.port->setPortOpen(true);
        ADD_FAILURE() << "opened a vanished device";
    } catch (const SerialError& e) {
        EXPECT_EQ(e.code(), kErrInvalidPort);
    }
    r.wire.restore();
    r.port->setPortOpen(true);
    EXPECT_TRUE(r.port->portOpen());
    r.device.wire().send("0123456789");  // 5.2 ms on the line
    r.loop.runFor(2);
    r.port->setPortOpen(false);
    r.port->setPortOpen(true);
    r.loop.runFor(10);
    EXPECT_EQ(r.port->input(), "");
    EXPECT_EQ(r.device.seen.back().substr(r.device.seen.back().find(' ')), " open");
}

}  // namespace
}  // namespace ketrel::sim
