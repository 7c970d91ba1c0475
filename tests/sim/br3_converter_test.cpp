#include "sim/br3_converter.h"

#include <gtest/gtest.h>

#include <regex>

#include "platform/virtual_event_loop.h"
#include "sim/sim_test_rig.h"

namespace ketrel::sim {
namespace {

using Bytes = std::vector<std::uint8_t>;

// Hex text as bytes ("0768 6AF1" gives 07 68 6A F1); blanks are only for reading.
Bytes FromHex(std::string text) {
    std::erase(text, ' ');
    Bytes out;
    for (std::size_t i = 0; i + 1 < text.size(); i += 2)
        out.push_back(static_cast<std::uint8_t>(std::stoi(text.substr(i, 2), nullptr, 16)));
    return out;
}

// The program's side reduced to its port: it sends, waits, and reads what has come, the way
// the connect and the request cycle read the converter a fixed time after each request.
struct Rig {
    explicit Rig(const std::string& car) : vehicle(test::LoadCar(car)) {
        port = test::PlugPort(ports, wire, "BR3MSComm", "19200,n,8,1", [this] {
            arrivals.push_back(loop.virtualClock().nowMicros() / 1000.0);
        });
        port->setPortOpen(true);
    }
    // Sends the bytes, waits `ms` and returns what has come as hex text ("0200").
    std::string ask(const Bytes& out, int ms) {
        arrivals.clear();
        sentAt = loop.virtualClock().nowMicros() / 1000.0;
        port->output(std::string(out.begin(), out.end()));
        loop.runFor(ms);
        std::string in = port->input();
        return HexText(Bytes(in.begin(), in.end()));
    }
    // Milliseconds from the last byte of `sent` to the first byte back.
    double firstArrival(const Bytes& sent) const {
        return arrivals.at(0) - sentAt - SimWire::byteMicros(19200, sent.size()) / 1000.0;
    }
    // Wakes the converter and starts the vehicle's protocol as the connect does.
    void link(const std::string& start) {
        ASSERT_EQ(ask({0x20}, 175), "01FF");
        ASSERT_FALSE(ask(FromHex(start), 3000).empty());
    }

    VirtualEventLoop loop;
    SimVehicle vehicle;
    Br3Converter converter{vehicle};
    SimWire wire{loop.scheduler(), converter};
    SimSerialPortFactory ports;
    std::unique_ptr<SerialPort> port;
    std::vector<double> arrivals;
    double sentAt = 0;
};

// Each answer in the columns the program reads and at the time it comes. Asleep, the converter
// takes only a space; awake, the start command of its vehicle's protocol; linked, frames.
TEST(Br3Converter, AnswersArriveInTheColumnsAndAtTheTimesTheProgramReads) {
    struct Case {
        const char *car, *start, *command;  // start "": the command starts a protocol
        const char* answer;                 // '.' where the digit doesn't matter
        double fromMs, toMs;                // the answer's arrival after the command's last byte
    } cases[] = {
        {"vpw", "", "41 00", "0200", 20, 40},
        {"pwm", "", "41 00", "", 0, 0},
        {"pwm", "", "42 02 33", "82", 2000, 2400},  // the 5-baud wake-up found nothing
        {"iso9141", "", "42 02 33", "020808", 2000, 2400},
        {"iso9141", "", "46 03 C1 33 F1 81 66", "", 0, 0},
        {"iso14230", "", "46 03 C1 33 F1 81 66", "02F110C1EF8F", 60, 100},
        // J1850: the converter's byte (the length), then the message the trailing byte picks.
        {"vpw", "41 00", "07 686AF1 0100 17 01", "0A486B104100.{10}", 25, 40},
        {"vpw", "41 00", "07 686AF1 0100 17 02", "0A486B184100.{10}", 25, 40},
        {"vpw", "41 00", "07 686AF1 0100 17 03", "", 0, 0},
        // A wrong check byte (PWM's on the VPW header) is passed on all the same.
        {"vpw", "41 00", "07 686AF1 011C 5B 01", "07486B10411C01..", 25, 40},
        // K-line: every module's messages one behind the other, no byte of the converter.
        {"iso9141", "42 02 33", "06 686AF1 0100 C4", "486B104100.{10}486B1A4100.{10}", 25, 51},
        {"iso14230", "42 02 33", "07 C333F1 020000 E9", "87F110420000.{10}", 25, 51},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.car) + " " + c.command);
        Rig r(c.car);
        const Bytes command = FromHex(c.command);
        if (*c.start) {
            r.link(c.start);
        } else {
            EXPECT_EQ(r.ask(command, 3000), "");
            EXPECT_EQ(r.ask({0x20}, 175), "01FF");
            EXPECT_LT(r.firstArrival({0x20}), 10);
        }
        EXPECT_TRUE(std::regex_match(r.ask(command, 3000), std::regex(c.answer)));
        if (*c.answer) {
            EXPECT_GE(r.firstArrival(command), c.fromMs);
            EXPECT_LE(r.firstArrival(command), c.toMs);
        }
        EXPECT_TRUE(*c.start || r.converter.activeProtocol().has_value() == (c.answer[0] == '0'));
    }
}

TEST(Br3Converter, KLineBytesComeAsTheyArriveSoAnEarlyReadSplitsTheAnswer) {
    Rig r("iso9141");
    r.link("42 02 33");
    const Bytes support = FromHex("06 686AF1 0100 C4");
    std::string whole = r.ask(support, 225);
    ASSERT_EQ(whole.size(), 40u);
    ASSERT_EQ(r.arrivals.size(), 20u);  // byte by byte, about a millisecond apart
    EXPECT_NEAR(r.arrivals[9] - r.arrivals[0], 9 * 0.96, 0.1);
    EXPECT_GE(r.arrivals[10] - r.arrivals[9], 25);  // P2 between the two modules

    std::string early = r.ask(support, 60);
    EXPECT_GT(early.size(), 0u);
    EXPECT_LT(early.size(), 40u);
    EXPECT_EQ(early + r.ask(support, 225), whole + whole);  // the rest first, then the next

    r.converter.timing.kLineTime = r.converter.timing.lineTime = false;
    EXPECT_EQ(r.ask(support, 225), whole);
    EXPECT_EQ(r.arrivals.size(), 2u);  // one piece a message
    r.converter.timing = Br3Timing::Fast();
    EXPECT_EQ(r.ask(support, 20), whole);  // the wire still takes its time
}

TEST(Br3Converter, InjectedFaults) {
    const Bytes rpm = FromHex("07 686AF1 010C 8B 01");
    struct Case {
        const char* name;
        std::function<void(Rig&)> fault;
        std::size_t digits, thenDigits;  // of the next answer and of the one after
        bool clean;                      // the next answer is the start of a clean one
    } cases[] = {
        {"silent", [](Rig& r) { r.converter.setSilent(true); }, 0, 0, true},
        {"garbled", [](Rig& r) { r.converter.garbleNextAnswers(1); }, 18, 18, false},
        {"cut short", [](Rig& r) { r.converter.cutNextAnswers(1); }, 8, 18, true},
        {"ignition off", [](Rig& r) { r.converter.setVehicleResponding(false); }, 0, 0, true},
        {"port opened again, still awake on its protocol",
         [](Rig& r) {
             r.port->setPortOpen(false);
             r.port->setPortOpen(true);
         },
         18, 18, true},
        {"pause inside a frame, dropped",
         [](Rig& r) {
             r.port->output(std::string("\x07\x68\x6A", 3));
             r.loop.runFor(150);
         },
         18, 18, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Rig r("vpw");
        r.link("41 00");
        std::string clean = r.ask(rpm, 150);
        ASSERT_EQ(clean.size(), 18u);
        c.fault(r);
        std::string got = r.ask(rpm, 150);
        EXPECT_EQ(got.size(), c.digits);
        EXPECT_EQ(got.substr(0, 8) == clean.substr(0, std::min<std::size_t>(8, got.size())),
                  c.clean);
        EXPECT_EQ(r.ask(rpm, 150).size(), c.thenDigits);
    }
    // Silent, it takes no wake-up either; back, it goes on with its protocol.
    Rig r("vpw");
    r.link("41 00");
    r.converter.setSilent(true);
    EXPECT_EQ(r.ask({0x20}, 175), "");
    r.converter.setSilent(false);
    EXPECT_EQ(r.ask(rpm, 150).size(), 18u);
}

}  // namespace
}  // namespace ketrel::sim
