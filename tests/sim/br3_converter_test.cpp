#include "sim/br3_converter.h"

#include <gtest/gtest.h>

#include "platform/virtual_event_loop.h"
#include "sim/sim_serial_port.h"
#include "sim/vehicle_file.h"

namespace ketrel::sim {
namespace {

using Bytes = std::vector<std::uint8_t>;

SimVehicle Car(const std::string& name) {
    return LoadVehicleFile(std::string(KETREL_DATA_DIR) + "/sim/" + name + ".vehicle").vehicle;
}

// The program's side reduced to its port: it sends, waits, and reads what has come, the way
// the connect and the request cycle read the converter a fixed time after each request.
struct Rig {
    explicit Rig(const std::string& car) : vehicle(Car(car)) {
        ports.plug(1, wire);
        port = ports.create("BR3MSComm");
        port->setCommPort(1);
        port->setSettings("19200,n,8,1");
        port->setRThreshold(1);
        port->setOnComm([this] { arrivals.push_back(loop.virtualClock().nowMicros() / 1000.0); });
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
    // Wakes the converter and starts the vehicle's protocol as the connect does.
    void link(const Bytes& start, int ms) {
        ASSERT_EQ(ask({0x20}, 175), "01FF");
        ASSERT_FALSE(ask(start, ms).empty());
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

const Bytes kVpw{0x41, 0x00}, kPwm{0x41, 0x01}, kSlow{0x42, 0x02, 0x33},
    kFast{0x46, 0x03, 0xC1, 0x33, 0xF1, 0x81, 0x66};

TEST(Br3Converter, WakesOnASpaceThenAnswersTheStartCommandOfItsVehiclesProtocol) {
    struct Case {
        const char* car;
        Bytes command;
        int readMs;  // when the connect reads
        const char* answer;
        double fromMs, toMs;  // the answer's arrival after the command's last byte
    };
    const Case cases[] = {
        {"vpw", kVpw, 175, "0200", 20, 40},
        {"vpw", kPwm, 175, "", 0, 0},
        {"vpw", kSlow, 3000, "82", 2000, 2400},
        {"vpw", kFast, 300, "", 0, 0},
        {"pwm", kVpw, 175, "", 0, 0},
        {"pwm", kPwm, 175, "0201", 20, 40},
        {"pwm", kSlow, 3000, "82", 2000, 2400},
        {"iso9141", kVpw, 175, "", 0, 0},
        {"iso9141", kSlow, 3000, "020808", 2000, 2400},
        {"iso9141", kFast, 300, "", 0, 0},
        {"iso14230", kPwm, 175, "", 0, 0},
        {"iso14230", kSlow, 3000, "02EF8F", 2000, 2400},
        {"iso14230", kFast, 300, "02F110C1EF8F", 60, 100},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.car) + " " + SpacedHex(c.command));
        Rig r(c.car);
        EXPECT_EQ(r.ask(c.command, c.readMs), "");  // asleep: only a space wakes it
        EXPECT_EQ(r.ask({0x20}, 175), "01FF");
        ASSERT_EQ(r.arrivals.size(), 1u);
        EXPECT_LT(r.arrivals[0] - r.sentAt, 10);
        EXPECT_EQ(r.ask(c.command, c.readMs), c.answer);
        double last = r.sentAt + SimWire::byteMicros(19200, c.command.size()) / 1000.0;
        if (*c.answer) {
            ASSERT_FALSE(r.arrivals.empty());
            EXPECT_GE(r.arrivals[0] - last, c.fromMs);
            EXPECT_LE(r.arrivals[0] - last, c.toMs);
        }
        EXPECT_EQ(r.converter.activeProtocol().has_value(), c.answer[0] == '0');
    }
}

// Hex text as bytes ("0768 6AF1" gives 07 68 6A F1); blanks are only for reading.
Bytes FromHex(std::string text) {
    std::erase(text, ' ');
    Bytes out;
    for (std::size_t i = 0; i + 1 < text.size(); i += 2)
        out.push_back(static_cast<std::uint8_t>(std::stoi(text.substr(i, 2), nullptr, 16)));
    return out;
}

// True when `text` has the pattern's length and its digits wherever the pattern has no '.'.
bool Matches(const std::string& text, const std::string& pattern) {
    if (text.size() != pattern.size()) return false;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (pattern[i] != '.' && pattern[i] != text[i]) return false;
    return true;
}

TEST(Br3Converter, CountByteFramesAreAnsweredInTheColumnsTheProgramReads) {
    struct Case {
        const char* car;
        Bytes start;
        const char* frame;
        int readMs;
        const char* answer;  // '.' where the digit doesn't matter
    };
    const Case cases[] = {
        // J1850: the converter's byte (the length), then the message the trailing byte picks;
        // Mode 02 and 09 answers carry the frame number, Mode 03 has no PID.
        {"vpw", kVpw, "07 686AF1 0100 17 01", 150, "0A486B104100.........."},
        {"vpw", kVpw, "07 686AF1 0100 17 02", 150, "0A486B184100.........."},
        {"vpw", kVpw, "07 686AF1 0100 17 03", 150, ""},
        {"vpw", kVpw, "07 686AF1 0202 F9 01", 150, "09486B104202000300.."},
        {"vpw", kVpw, "06 686AF1 03 CD 03", 150, "0B486B18430740.........."},
        {"vpw", kVpw, "07 686AF1 0902 77 03", 150, "0B486B10490203.........."},
        // A wrong check byte (PWM's on the VPW header) is passed on all the same.
        {"vpw", kVpw, "07 686AF1 011C 5B 01", 150, "07486B10411C01.."},
        {"pwm", kPwm, "07 616AF1 0100 0A 01", 150, "0A416B104100.........."},
        // K-line: every module's messages one behind the other, no byte of the converter.
        {"iso9141", kSlow, "06 686AF1 0100 C4", 225, "486B104100..........486B1A4100.........."},
        {"iso9141", kSlow, "07 686AF1 020200 C7", 225, "486B104202000130.."},
        {"iso9141", kSlow, "05 686AF1 03 C6", 225, "486B1043013001330420..486B1A430731.........."},
        {"iso14230", kFast, "06 C233F1 0100 E7", 225, "86F1104100..........86F1184100.........."},
        {"iso14230", kSlow, "07 C333F1 020000 E9", 225, "87F110420000.........."},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.car) + " " + c.frame);
        Rig r(c.car);
        r.link(c.start, 3000);
        EXPECT_TRUE(Matches(r.ask(FromHex(c.frame), c.readMs), c.answer)) << c.answer;
        EXPECT_EQ(r.converter.commands().back(), SpacedHex(FromHex(c.frame)));
    }
}

TEST(Br3Converter, TheVinOfTheKLineComesInOneAnswerOfFiveMessages) {
    Rig r("iso9141");
    r.link(kSlow, 3000);
    std::string got = r.ask(FromHex("06 686AF1 0902 CE"), 325);
    ASSERT_EQ(got.size(), 110u) << got;
    std::string vin;
    for (int n = 0; n < 5; ++n) {
        ASSERT_EQ(got.substr(10 + 22 * n, 2), "0" + std::to_string(n + 1));
        for (int k = n == 0 ? 3 : 0; k < 4; ++k)
            vin += static_cast<char>(std::stoi(got.substr(12 + 22 * n + 2 * k, 2), nullptr, 16));
    }
    EXPECT_EQ(vin, r.vehicle.vin);
}

TEST(Br3Converter, KLineBytesComeAsTheyArriveSoAnEarlyReadSplitsTheAnswer) {
    Rig r("iso9141");
    r.link(kSlow, 3000);
    const Bytes support = FromHex("06 686AF1 0100 C4");
    std::string whole = r.ask(support, 225);
    ASSERT_EQ(whole.size(), 40u);
    ASSERT_EQ(r.arrivals.size(), 20u);  // byte by byte, about a millisecond apart
    double last = r.sentAt + SimWire::byteMicros(19200, support.size()) / 1000.0;
    EXPECT_GE(r.arrivals[0] - last, 25);
    EXPECT_LE(r.arrivals[0] - last, 51);
    EXPECT_NEAR(r.arrivals[9] - r.arrivals[0], 9 * 0.96, 0.1);
    EXPECT_GE(r.arrivals[10] - r.arrivals[9], 25);  // P2 between the two modules

    std::string early = r.ask(support, 60);
    EXPECT_EQ(early, whole.substr(0, early.size()));
    EXPECT_GT(early.size(), 0u);
    EXPECT_LT(early.size(), 40u);
    std::string next = r.ask(support, 225);  // the rest first, then the next answer
    EXPECT_EQ(early + next, whole + whole);

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
    };
    const Case cases[] = {
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
        r.link(kVpw, 175);
        std::string clean = r.ask(rpm, 150);
        ASSERT_EQ(clean.size(), 18u);
        c.fault(r);
        std::string got = r.ask(rpm, 150);
        EXPECT_EQ(got.size(), c.digits);
        EXPECT_EQ(got.substr(0, 8) == clean.substr(0, std::min<std::size_t>(8, got.size())),
                  c.clean);
        EXPECT_EQ(r.ask(rpm, 150).size(), c.thenDigits);
        EXPECT_EQ(r.converter.commands().back(), SpacedHex(rpm));
    }
    // Silent, it takes no wake-up either; back, it goes on with its protocol.
    Rig r("vpw");
    r.link(kVpw, 175);
    r.converter.setSilent(true);
    EXPECT_EQ(r.ask({0x20}, 175), "");
    r.converter.setSilent(false);
    EXPECT_EQ(r.ask(rpm, 150).size(), 18u);
}

}  // namespace
}  // namespace ketrel::sim
