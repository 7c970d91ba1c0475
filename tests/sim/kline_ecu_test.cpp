#include "sim/kline_ecu.h"

#include <gtest/gtest.h>

#include <regex>

#include "platform/virtual_event_loop.h"
#include "sim/sim_test_rig.h"

namespace ketrel::sim {
namespace {

// The program's side reduced to its port on a K-line: break edges, baud changes, bytes.
struct Rig {
    explicit Rig(const std::string& car) : vehicle(test::LoadCar(car)) {
        port = test::PlugPort(ports, wire, "KeshMSComm", "10400,n,8,1", [this] {
            std::string in = port->input();
            if (!in.empty()) reads.push_back({loop.virtualClock().nowMicros() / 1000.0, in});
        });
        port->setPortOpen(true);
        port->setBaud(10400);
    }
    // Everything read since the last call as hex text; the handshake drops the 0x00 bytes (a
    // released break reads as one).
    std::string take(bool dropZeros = false) {
        std::string all = peek(dropZeros);
        reads.clear();
        return all;
    }
    std::string peek(bool dropZeros) const {
        std::string all;
        for (auto& r : reads)
            all += r.second;
        if (dropZeros) std::erase(all, '\0');
        return HexText(std::vector<std::uint8_t>(all.begin(), all.end()));
    }
    // Clocks out `address` at 5 baud, `slotMs` for each of the ten slots.
    void fiveBaud(std::uint8_t address, std::array<int, 10> slotMs) {
        int bits = (address << 1) | 0x200;  // start bit 0, data LSB first, stop bit 1
        for (int i = 0; i < 10; ++i) {
            port->setBreak(((bits >> i) & 1) == 0);
            loop.runFor(slotMs[i]);
        }
    }
    // Waits for the sync and key bytes and answers the inverted key byte `delayMs` after them.
    std::string handshake(int delayMs, int inverted = -1) {
        if (!loop.runUntil([&] { return peek(true).size() >= 6; }, 400)) return take(true);
        std::string keys = take(true);
        loop.runFor(delayMs);
        int key2 = std::stoi(keys.substr(4, 2), nullptr, 16);
        port->output(std::string(1, char(inverted >= 0 ? inverted : 0xFF - key2)));
        loop.runFor(100);
        return keys + "/" + take(true);
    }
    void send(const std::string& hex) {
        std::string out;
        for (std::size_t i = 0; i + 1 < hex.size(); i += 3)
            out += char(std::stoi(hex.substr(i, 2), nullptr, 16));
        sentAt = loop.virtualClock().nowMicros() / 1000.0 +
                 SimWire::byteMicros(10400, out.size()) / 1000.0;
        port->output(out);
    }

    VirtualEventLoop loop;
    SimVehicle vehicle;
    KlineEcu ecu{vehicle};
    SimWire wire{loop.scheduler(), ecu};
    SimSerialPortFactory ports;
    std::unique_ptr<SerialPort> port;
    std::vector<std::pair<double, std::string>> reads;
    double sentAt = 0;
};

constexpr std::array<int, 10> kSlots{200, 200, 200, 200, 200, 200, 200, 200, 200, 200};

// A wake-up is taken only at 0x33, with every edge in its 200 ms slot within 10 % and the
// inverted key byte 25 to 50 ms after the key bytes; anything else gets silence.
TEST(KlineEcu, FiveBaudWakeUpTakesOnlyTheRightAddressAndTiming) {
    struct Case {
        const char* car;
        std::uint8_t address;
        int slot, slotMs;  // one slot changed to this length
        int invertedAfterMs;
        const char* heard;  // the key bytes, "/", the echo of the inverted byte and the ack
    } cases[] = {
        {"iso9141", 0x33, 0, 200, 25, "550808/F7CC"},
        {"iso14230", 0x33, 0, 200, 40, "55EF8F/70CC"},
        {"iso9141", 0x33, 4, 215, 25, "550808/F7CC"},  // 15 ms off: inside the tolerance
        {"iso9141", 0x33, 4, 230, 25, ""},             // 30 ms off
        {"iso9141", 0x33, 0, 170, 25, ""},             // a short start bit
        {"iso9141", 0x32, 0, 200, 25, ""},             // not the OBD address
        {"iso9141", 0x33, 0, 200, 60, "550808/F7"},    // inverted key byte too late
        {"iso9141", 0x33, 0, 200, 15, "550808/F7"},    // and too early
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.car) + " slot " + std::to_string(c.slot) + " " +
                     std::to_string(c.slotMs) + " ms, inverted after " +
                     std::to_string(c.invertedAfterMs));
        Rig r(c.car);
        auto slots = kSlots;
        slots[c.slot] = c.slotMs;
        r.fiveBaud(c.address, slots);
        EXPECT_EQ(r.handshake(c.invertedAfterMs), c.heard);
        EXPECT_EQ(r.ecu.linked(), std::string(c.heard).ends_with("CC"));
    }
}

// The fast initialisation: 25 ms low and 25 ms high, by a break or by 0xF0 at 200 baud, then
// StartCommunication, answered with the key bytes; only an ISO 14230 vehicle takes it.
TEST(KlineEcu, FastInitialisationByBreakOrByTheByteAt200Baud) {
    struct Case {
        const char* car;
        int lowMs;  // 0: the byte 0xF0 at 200 baud
        bool linked;
    } cases[] = {{"iso14230", 0, true},
                 {"iso14230", 25, true},
                 {"iso14230", 40, false},
                 {"iso14230", 20, false},
                 {"iso9141", 0, false}};
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.car) + " low " + std::to_string(c.lowMs));
        Rig r(c.car);
        if (c.lowMs == 0) {
            r.port->setBaud(200);
            r.port->output("\xF0");
        } else {
            r.port->setBreak(true);
            r.loop.runFor(c.lowMs);
            r.port->setBreak(false);
        }
        r.loop.runFor(250);
        r.port->setBaud(10400);
        r.take();
        r.send("C1 33 F1 81 66");
        r.loop.runFor(100);
        EXPECT_EQ(r.take(), c.linked ? "C133F1816683F110C1EF8FC3" : "C133F18166");
        EXPECT_EQ(r.ecu.linked(), c.linked);
    }
}

// Linked: the echo of the request at once, each module's message P2 (25..50 ms) after the
// request or the message before it; no request for 5 s drops the link.
TEST(KlineEcu, EchoThenEveryModuleAnswersInTimeUntilFiveSecondsPassWithoutARequest) {
    Rig r("iso9141");
    r.fiveBaud(0x33, kSlots);
    ASSERT_EQ(r.handshake(25), "550808/F7CC");
    r.loop.runFor(250);
    r.send("68 6A F1 01 00 C4");
    r.loop.runFor(200);
    ASSERT_EQ(r.reads.size(), 3u);
    EXPECT_EQ(HexText({r.reads[0].second.begin(), r.reads[0].second.end()}), "686AF10100C4");
    EXPECT_NEAR(r.reads[0].first, r.sentAt, 0.1);
    // A burst is read when its last byte is in: take its own ten bytes off to get its start.
    double message = SimWire::byteMicros(10400, 10) / 1000.0;
    double p2First = r.reads[1].first - message - r.sentAt;
    double p2Second = r.reads[2].first - message - r.reads[1].first;
    EXPECT_TRUE(p2First >= 25 && p2First <= 50) << p2First;
    EXPECT_TRUE(p2Second >= 25 && p2Second <= 50) << p2Second;
    EXPECT_TRUE(
        std::regex_match(r.take(), std::regex("686AF10100C4486B104100.{10}486B1A4100.{10}")));
    r.loop.runFor(4700);
    EXPECT_TRUE(r.ecu.linked());
    r.loop.runFor(200);  // 5 s from the last request byte
    r.send("68 6A F1 01 0C 0E");
    r.loop.runFor(200);
    EXPECT_EQ(r.take(), "686AF1010C0E");
    EXPECT_FALSE(r.ecu.linked());
}

// Faults for the program's bad-input handling: rubbish, no echo, two answers at once, silence.
TEST(KlineEcu, FaultsChangeOnlyWhatTheyShould) {
    const std::string echo = "C233F10100E7", answer = "86F1104100.{10}",
                      two = answer + "86F118.{14}";
    struct Case {
        const char* name;
        std::function<void(KlineEcu&)> fault;
        std::string heard;
        std::size_t reads;
    } cases[] = {
        {"none", [](KlineEcu&) {}, echo + two, 3},
        {"garble", [](KlineEcu& e) { e.garbleNextAnswers(1); }, echo + "(?!86F110).{20}.{20}", 3},
        {"no echo", [](KlineEcu& e) { e.setEcho(false); }, two, 2},
        {"double", [](KlineEcu& e) { e.doubleNextAnswers(1); }, echo + two + two, 2},
        {"silent", [](KlineEcu& e) { e.setSilent(true); }, echo, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Rig r("iso14230");
        r.port->setBaud(200);
        r.port->output("\xF0");
        r.loop.runFor(250);
        r.port->setBaud(10400);
        r.send("C1 33 F1 81 66");
        r.loop.runFor(250);
        ASSERT_TRUE(r.ecu.linked());
        r.take();
        c.fault(r.ecu);
        r.send("C2 33 F1 01 00 E7");
        r.loop.runFor(300);
        EXPECT_EQ(r.reads.size(), c.reads);
        std::string heard = r.take();
        EXPECT_TRUE(std::regex_match(heard, std::regex(c.heard))) << heard;
    }
}

}  // namespace
}  // namespace ketrel::sim
