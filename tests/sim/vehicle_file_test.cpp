#include "sim/vehicle_file.h"

#include <gtest/gtest.h>

#include <sstream>

namespace ketrel::sim {
namespace {

SimSetup read(const std::string& text) {
    std::istringstream in(text);
    return ReadVehicleFile(in);
}

TEST(VehicleFile, ReadsVehicleSettingsAndModules) {
    SimSetup s = read(R"(# a test car
protocol  iso14230
vin       1KTRL23T5SM000417
keybytes  E9 8F
firmware  2.07
ambient   -5        # a cold morning
idle-rpm  900
freeze-at 42
ignition  off

ecu 10 engine
mode1   01 0C 0D 21
mode2   02 0C
stored  P0301 C1234
pending P0171
freeze  P0301
mil     on
fix     0C 1A F8
fix-freeze 0D 3C
monitors 07 E5 00
obd     06
ecu 1A abs
mode1 01
)");
    const SimVehicle& v = s.vehicle;
    EXPECT_EQ(v.protocol, Protocol::Iso14230);
    EXPECT_EQ(v.vin, "1KTRL23T5SM000417");
    EXPECT_EQ(v.keyBytes[0], 0xE9);
    EXPECT_EQ(v.keyBytes[1], 0x8F);
    EXPECT_EQ(s.firmware, "2.07");
    EXPECT_EQ(v.engine.ambientC, -5);
    EXPECT_EQ(v.engine.idleRpm, 900);
    EXPECT_EQ(v.freezeAtSeconds, 42);
    EXPECT_FALSE(v.responding);
    ASSERT_EQ(v.ecus.size(), 2u);
    const SimEcu& e = v.ecus[0];
    EXPECT_EQ(e.address, 0x10);
    EXPECT_EQ(e.name, "engine");
    EXPECT_EQ(e.mode1, (std::set<int>{0x01, 0x0C, 0x0D, 0x21}));
    EXPECT_EQ(e.mode2, (std::set<int>{0x02, 0x0C}));
    EXPECT_EQ(e.stored, (std::vector<std::uint16_t>{0x0301, 0x5234}));
    EXPECT_EQ(e.pending, (std::vector<std::uint16_t>{0x0171}));
    EXPECT_EQ(e.freezeCode, 0x0301);
    EXPECT_TRUE(e.mil);
    EXPECT_EQ(e.fixed.at(0x0C), (std::vector<std::uint8_t>{0x1A, 0xF8}));
    EXPECT_EQ(e.freezeFixed.at(0x0D), (std::vector<std::uint8_t>{0x3C}));
    EXPECT_EQ(e.monitors[1], 0xE5);
    EXPECT_EQ(e.obdStandard, 0x06);
    EXPECT_EQ(v.ecus[1].address, 0x1A);
    EXPECT_TRUE(v.ecus[1].stored.empty());
    EXPECT_FALSE(v.ecus[1].mil);
}

TEST(VehicleFile, MistakesAreReportedWithTheirLine) {
    struct Case {
        const char* text;
        const char* message;
    };
    const Case cases[] = {
        {"protocol can", "line 1: unknown protocol"},
        {"\nmode1 01", "line 2: mode1 comes before any ecu line"},
        {"ecu 10\nstored P9999", "line 2: \"P9999\" is not a trouble code"},
        {"ecu 10\nmode1 01 1G", "line 2: \"1G\" is not a hex byte"},
        {"ecu 100", "line 1: \"100\" is not a hex byte"},
        {"ecu 10\nmil maybe", "line 2: mil takes on or off"},
        {"idle-rpm fast", "line 1: \"fast\" is not a number"},
        {"colour red", "line 1: unknown setting \"colour\""},
        {"ecu 10\nfix 0C", "line 2: fix takes a PID and its data bytes"},
        {"keybytes 08", "line 1: keybytes takes two hex bytes"},
        {"ecu 10\nmode6 20 11 0001 0002", "line 2: mode6 takes hex numbers and a test id"},
        {"ecu 10\nmode6 01 11 00001 0002", "line 2: mode6 takes hex numbers"},
        {"ecu 10\nmode6-support 10 00 00 00 01", "line 2: mode6-support takes a base"},
    };
    for (const auto& c : cases) {
        try {
            read(c.text);
            ADD_FAILURE() << c.text << ": accepted";
        } catch (const VehicleFileError& e) {
            EXPECT_EQ(std::string(e.what()).rfind(c.message, 0), 0u)
                << c.text << " gave: " << e.what();
        }
    }
    EXPECT_THROW(LoadVehicleFile("/nonexistent/car.vehicle"), VehicleFileError);
}

}  // namespace
}  // namespace ketrel::sim
