#include "sim/dorvane_converter.h"

#include <gtest/gtest.h>

#include "platform/virtual_event_loop.h"
#include "sim/sim_serial_port.h"
#include "sim/sim_test_rig.h"

namespace ketrel::sim {
namespace {

// The program's side reduced to its port: every received-data event reads what has arrived
// and keeps it as one chunk, with the time in ms.
struct Rig {
    Rig() {
        vehicle.ecus[0].fixed[0x0C] = {0x1A, 0xF8};
        port = test::PlugPort(ports, wire, "MSComm", "19200,n,8,1", [this] {
            chunks.push_back(port->input());
            times.push_back(loop.virtualClock().nowMicros() / 1000.0);
        });
        port->setPortOpen(true);
        loop.runUntil([&] { return !chunks.empty(); }, 1000);
        chunks.clear();
        times.clear();
    }
    // Sends a command and runs until the next "S" (or `ms` passed); returns the chunks.
    std::vector<std::string> ask(const std::string& command, int ms = 1000) {
        chunks.clear();
        times.clear();
        port->output(command);
        loop.runUntil([&] { return !chunks.empty() && chunks.back() == "S"; }, ms);
        return chunks;
    }
    std::string frame(std::uint8_t address, std::vector<std::uint8_t> data) {
        SimEcu ecu;
        ecu.address = address;
        return "V" + HexText(vehicle.frame(ecu, data));
    }

    VirtualEventLoop loop;
    SimVehicle vehicle = SimVehicle::Default();
    DorvaneConverter converter{vehicle};
    SimWire wire{loop.scheduler(), converter};
    SimSerialPortFactory ports;
    std::unique_ptr<SerialPort> port;
    std::vector<std::string> chunks;
    std::vector<double> times;
};

TEST(DorvaneConverter, ItsAnswersHaveTheLayoutTheReceivePathCutsBytesFrom) {
    Rig r;
    SimEcu trans;
    trans.address = 0x18;
    trans.mode1 = {0x0D};
    r.vehicle.ecus.push_back(trans);
    struct Case {
        const char* command;
        std::vector<std::string> chunks;
    };
    const std::vector<Case> cases = {
        {"010009",
         {r.frame(0x10, {0x41, 0x00, 0xBE, 0x3F, 0xB8, 0x13}),
          r.frame(0x18, {0x41, 0x00, 0x00, 0x08, 0x00, 0x00}), "S"}},
        {"020208", {r.frame(0x10, {0x42, 0x02, 0x00, 0x03, 0x01}), "S"}},
        {"03000A",
         {r.frame(0x10, {0x43, 0x03, 0x01, 0, 0, 0, 0}), r.frame(0x18, {0x43, 0, 0, 0, 0, 0, 0}),
          "S"}},
        {"900504", {"V1.23", "S"}},
        {"040004", {r.frame(0x10, {0x44}), r.frame(0x18, {0x44}), "S"}},
        {"03000A",
         {r.frame(0x10, {0x43, 0, 0, 0, 0, 0, 0}), r.frame(0x18, {0x43, 0, 0, 0, 0, 0, 0}), "S"}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(r.ask(c.command), c.chunks) << c.command;
    }
    // The frames above are built the converter's way; this one is spelt out.
    EXPECT_EQ(r.ask("010C07")[0].substr(0, 15), "V486B10410C1AF8");
}

// Its own commands are taken in silence; busy, it ignores characters.
TEST(DorvaneConverter, ItsOwnCommandsAreTakenInSilenceAndBusyItIgnoresCharacters) {
    Rig r;
    EXPECT_EQ(r.ask("800204"), std::vector<std::string>{"S"});
    const std::string retry("\x01\x06\x64\x10\xF1\x22\x16\x67\x00\x00\x00\x00\x00", 13);
    EXPECT_EQ(r.ask(retry + "F0646A"), std::vector<std::string>{"S"});
    EXPECT_EQ(r.ask("010C07010D06").size(), 2u);  // the second command lands while it is busy
    EXPECT_EQ(r.converter.commands(),
              (std::vector<std::string>{"800204", "RETRY FRAME", "F0646A", "010C07"}));
}

TEST(DorvaneConverter, FastTimingAnswersAtOnceAndSyncsAsSoonAsTheLineIsFree) {
    struct Case {
        const char* name;
        DorvaneTiming timing;
        double answerAfterMs;  // from the command's last byte to the answer's first
        double syncAfterMs;    // from the answer's last byte on the line to the "S"
        double idleSyncMs;
    };
    const Case cases[] = {
        {"real timing", DorvaneTiming{}, 40, 10, 250},
        // The wire still takes its time per character, so "S" follows the answer's end.
        {"fast", DorvaneTiming::Fast(), 0, 0, 50},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Rig r;
        r.converter.timing = c.timing;
        r.wire.clearEvents();
        ASSERT_EQ(r.ask("010C07").size(), 2u);
        std::vector<WireEvent> bursts;
        std::int64_t lastHostByte = 0;
        for (const WireEvent& e : r.wire.events()) {
            if (e.kind == WireEvent::Kind::HostByte) lastHostByte = e.atMicros;
            if (e.kind == WireEvent::Kind::DeviceBurst) bursts.push_back(e);
        }
        ASSERT_EQ(bursts.size(), 2u);
        std::int64_t answerEnd =
            bursts[0].atMicros + SimWire::byteMicros(19200, bursts[0].bytes.size());
        EXPECT_NEAR((bursts[0].atMicros - lastHostByte) / 1000.0, c.answerAfterMs, 0.01);
        EXPECT_NEAR((bursts[1].atMicros - answerEnd) / 1000.0, c.syncAfterMs, 0.01);
        r.chunks.clear();
        r.times.clear();
        r.loop.runUntil([&] { return r.chunks.size() == 2; }, 3000);
        ASSERT_EQ(r.chunks.size(), 2u);
        EXPECT_NEAR(r.times[1] - r.times[0], c.idleSyncMs, 0.01);
    }
}

TEST(DorvaneConverter, APauseInsideACommandThrowsThePartAway) {
    Rig r;
    r.port->output("010");
    r.loop.sleep(150);
    auto chunks = r.ask("C07", 300);
    for (const std::string& c : chunks)
        EXPECT_EQ(c, "S");  // "C07" alone is no command
    r.loop.runFor(150);
    r.chunks.clear();
    EXPECT_EQ(r.ask("010D06", 300).size(), 2u);
    EXPECT_EQ(r.converter.commands(), std::vector<std::string>{"010D06"});
}

TEST(DorvaneConverter, SilenceGarbleAndSplitPieces) {
    Rig r;
    r.converter.setSilent(true);
    r.port->output("010C07");
    r.loop.runFor(5000);
    EXPECT_TRUE(r.chunks.empty());
    r.converter.setSilent(false);
    r.loop.runFor(10);
    EXPECT_EQ(r.chunks, std::vector<std::string>{"S"});

    std::string clean = r.ask("010C07")[0];
    r.converter.garbleNextAnswers(1);
    std::string garbled = r.ask("010C07")[0];
    EXPECT_EQ(garbled.size(), clean.size());
    EXPECT_NE(garbled, clean);
    EXPECT_EQ(r.ask("010C07")[0], clean);

    r.converter.setSplitPoints({1, 9});
    auto pieces = r.ask("010C07");
    ASSERT_EQ(pieces.size(), 4u);
    EXPECT_EQ(pieces[0], "V");
    EXPECT_EQ(pieces[1], "486B1041");
    EXPECT_EQ(pieces[0] + pieces[1] + pieces[2], clean);
    EXPECT_EQ(pieces[3], "S");
}

TEST(DorvaneConverter, StatusChunksWhenTheVehicleIsSilent) {
    Rig r;
    r.vehicle.responding = false;  // one request the car does not answer
    EXPECT_EQ(r.ask("010C07"), (std::vector<std::string>{"T", "S"}));

    r.chunks.clear();
    r.converter.setVehicleResponding(false);  // ignition off: it searches
    r.port->output("010C07");
    r.loop.runFor(2500);
    EXPECT_EQ(r.chunks, (std::vector<std::string>{"P", "P", "P"}));
    r.chunks.clear();
    r.converter.setVehicleResponding(true);
    r.loop.runFor(50);
    EXPECT_EQ(r.chunks, (std::vector<std::string>{"I", "S"}));
    EXPECT_EQ(r.converter.commands().size(), 1u);  // nothing taken while it searched
}

TEST(DorvaneConverter, OpeningThePortAgainRestartsIt) {
    Rig r;
    EXPECT_EQ(r.converter.sent().front(), "S");
    r.loop.runFor(500);
    r.port->setPortOpen(false);
    r.loop.runFor(3000);
    r.chunks.clear();
    r.times.clear();
    double opened = r.loop.virtualClock().nowMicros() / 1000.0;
    r.port->setPortOpen(true);
    r.loop.runUntil([&] { return !r.chunks.empty(); }, 1000);
    ASSERT_EQ(r.chunks, std::vector<std::string>{"S"});
    EXPECT_NEAR(r.times[0] - opened, 200.5, 0.1);
}

}  // namespace
}  // namespace ketrel::sim
