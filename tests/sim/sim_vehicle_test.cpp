#include "sim/sim_vehicle.h"

#include <gtest/gtest.h>

namespace ketrel::sim {
namespace {

const auto hex = HexText;

// The data part of a message: header and check byte cut off.
std::string payload(const SimMessage& m) {
    return hex(std::vector<std::uint8_t>(m.begin() + 3, m.end() - 1));
}

TEST(SimVehicle, HeaderAndCheckByteFollowTheProtocol) {
    struct Case {
        Protocol protocol;
        const char* message;  // 41 00 answer of module 10 with bitmap 80000000
    };
    SimVehicle v;
    SimEcu ecu;
    ecu.mode1 = {0x01};
    v.ecus = {ecu};
    const Case cases[] = {
        {Protocol::J1850Vpw, "486B10410080000000C3"},
        {Protocol::J1850Pwm, "416B10410080000000A9"},
        {Protocol::Iso9141, "486B1041008000000084"},
        {Protocol::Iso14230, "86F11041008000000048"},
    };
    for (const auto& c : cases) {
        v.protocol = c.protocol;
        auto msgs = v.answer({0x01, 0x00}, 0);
        ASSERT_EQ(msgs.size(), 1u);
        EXPECT_EQ(hex(msgs[0]), c.message) << int(c.protocol);
    }
}

// Support bitmaps put PID 01 in the top bit and flag the next range when something lies above.
TEST(SimVehicle, EachModuleAnswersTheSupportPidsItHasAndOnlyThose) {
    SimVehicle v;
    SimEcu engine, trans;
    engine.address = 0x10;
    engine.mode1 = {0x01, 0x05, 0x0C, 0x21, 0x42};
    engine.mode2 = {0x02, 0x0C};
    trans.address = 0x18;
    trans.mode1 = {0x0D};
    v.ecus = {engine, trans};
    struct Case {
        std::vector<std::uint8_t> request;
        std::vector<std::string> data;
    };
    const Case cases[] = {
        {{0x01, 0x00}, {"410088100001", "410000080000"}},
        {{0x01, 0x20}, {"412080000001"}},  // only the engine has PIDs above 20
        {{0x01, 0x40}, {"414040000000"}},
        {{0x01, 0x60}, {}},
        {{0x02, 0x00, 0x00}, {"42000040100000"}},  // frame number 00 before the bitmap
        {{0x02, 0x00, 0x01}, {}},                  // no frame 01 stored
        {{0x01, 0x0D}, {"410D00"}},                // the transmission's PID only
        {{0x01, 0x06}, {}},                        // nobody's
    };
    for (const auto& c : cases) {
        std::vector<std::string> got;
        for (const auto& m : v.answer(c.request, 10))
            got.push_back(payload(m));
        EXPECT_EQ(got, c.data) << hex(c.request);
    }
    EXPECT_EQ(v.answer({0x01, 0x0D}, 10).at(0)[2], 0x18);
}

TEST(SimVehicle, LiveValuesUseTheStandardScaling) {
    EngineState s;
    s.seconds = 300;
    s.rpm = 1726;
    s.kph = 60;
    s.coolantC = 90;
    s.intakeC = 25;
    s.loadPct = 36;
    s.throttlePct = 12;
    s.mafGps = 3.5;
    s.mapKpa = 35;
    s.timingDeg = 10;
    s.o2Upstream = 0.78;
    s.o2Downstream = 0.66;
    s.shortTrim = -2.3;
    s.longTrim = 2.3;
    s.closedLoop = true;
    PidContext c;
    c.mil = true;
    c.storedCount = 2;
    struct Case {
        int pid;
        const char* bytes;
    };
    const Case cases[] = {
        {0x01, "82076500"}, {0x03, "0200"}, {0x04, "5C"},   {0x05, "82"},   {0x06, "7D"},
        {0x07, "83"},       {0x0B, "23"},   {0x0C, "1AF8"}, {0x0D, "3C"},   {0x0E, "94"},
        {0x0F, "41"},       {0x10, "015E"}, {0x11, "1F"},   {0x14, "9C7D"}, {0x15, "84FF"},
        {0x1C, "01"},       {0x1F, "012C"}, {0x33, "65"},   {0x42, "3714"},
    };
    for (const auto& k : cases) {
        auto b = EncodePid(k.pid, s, c);
        ASSERT_TRUE(b.has_value()) << k.pid;
        EXPECT_EQ(hex(*b), k.bytes) << std::hex << k.pid;
        EXPECT_EQ(static_cast<int>(b->size()), PidDataSize(k.pid)) << std::hex << k.pid;
    }
    EXPECT_FALSE(EncodePid(0x00, s, c).has_value());
    EXPECT_FALSE(EncodePid(0x90, s, c).has_value());
}

TEST(SimVehicle, TheEngineIdlesThenDrivesAndWarmsUp) {
    EngineProfile p;
    p.ambientC = 18;
    EngineState cold = EngineAt(p, 5), cruise = EngineAt(p, p.idleSeconds + 25),
                warm = EngineAt(p, p.warmupSeconds);
    EXPECT_EQ(cold.kph, 0);
    EXPECT_NEAR(cold.rpm, p.idleRpm, 20);
    EXPECT_NEAR(EngineAt(p, 0).coolantC, 18, 0.01);
    EXPECT_LT(cold.coolantC, 25);
    EXPECT_FALSE(cold.closedLoop);
    EXPECT_DOUBLE_EQ(cold.o2Upstream, 0.45);
    EXPECT_NEAR(cruise.kph, p.cruiseKph, 3);
    EXPECT_GT(cruise.rpm, 1500);
    EXPECT_GT(cruise.mafGps, cold.mafGps);
    EXPECT_GT(warm.coolantC, 85);
    double last = -100;
    for (int t = 0; t <= 600; t += 30) {
        double c = EngineAt(p, t).coolantC;
        EXPECT_GE(c, last);
        last = c;
    }
    // Warm: the upstream sensor switches between rich and lean within a couple of seconds.
    bool rich = false, lean = false;
    for (double t = 400; t < 402; t += 0.1) {
        double v = EngineAt(p, t).o2Upstream;
        rich = rich || v > 0.6;
        lean = lean || v < 0.3;
    }
    EXPECT_TRUE(rich && lean);
}

TEST(SimVehicle, TroubleCodesTravelThreeToAMessage) {
    SimVehicle v;
    SimEcu ecu;
    v.ecus = {ecu};
    struct Case {
        std::vector<std::string> codes;
        std::vector<std::string> data;
    };
    const Case cases[] = {
        {{}, {"43000000000000"}},
        {{"P0301"}, {"43030100000000"}},
        {{"P0301", "C1234", "B2AB0", "U3FFF"}, {"4303015234AAB0", "43FFFF00000000"}},
    };
    for (const auto& c : cases) {
        v.ecus[0].stored.clear();
        for (const auto& code : c.codes)
            v.ecus[0].stored.push_back(*ParseTroubleCode(code));
        std::vector<std::string> got;
        for (const auto& m : v.answer({0x03}, 0))
            got.push_back(payload(m));
        EXPECT_EQ(got, c.data) << c.codes.size();
    }
    v.ecus[0].pending = {*ParseTroubleCode("p0171")};
    EXPECT_EQ(payload(v.answer({0x07}, 0).at(0)), "47017100000000");
    for (const char* text : {"P4000", "X0301", "P030", "P03G1"})
        EXPECT_FALSE(ParseTroubleCode(text)) << text;
}

TEST(SimVehicle, ClearingWipesCodesFreezeFrameAndTheLamp) {
    SimVehicle v = SimVehicle::Default();
    EXPECT_EQ(payload(v.answer({0x01, 0x01}, 0).at(0)).substr(4, 2), "81");
    EXPECT_EQ(payload(v.answer({0x02, 0x02, 0x00}, 0).at(0)), "4202000301");
    EXPECT_EQ(v.answer({0x02, 0x0C, 0x00}, 0).size(), 1u);

    EXPECT_EQ(v.answer({0x04}, 0), std::vector<SimMessage>{v.frame(v.ecus[0], {0x44})});

    EXPECT_EQ(payload(v.answer({0x01, 0x01}, 0).at(0)).substr(4, 2), "00");
    EXPECT_EQ(payload(v.answer({0x03}, 0).at(0)), "43000000000000");
    EXPECT_EQ(payload(v.answer({0x07}, 0).at(0)), "47000000000000");
    EXPECT_EQ(payload(v.answer({0x02, 0x02, 0x00}, 0).at(0)), "4202000000");
    EXPECT_TRUE(v.answer({0x02, 0x0C, 0x00}, 0).empty());  // no frame stored any more
}

TEST(SimVehicle, FreezeFrameIsTheSnapshotOrTheHeldValue) {
    SimVehicle v = SimVehicle::Default();
    auto snapshot = EncodePid(0x0C, EngineAt(v.engine, v.freezeAtSeconds), PidContext{});
    EXPECT_EQ(payload(v.answer({0x02, 0x0C, 0x00}, 1).at(0)), "420C00" + hex(*snapshot));
    v.ecus[0].freezeFixed[0x0C] = {0x0F, 0xA0};
    EXPECT_EQ(payload(v.answer({0x02, 0x0C, 0x00}, 1).at(0)), "420C000FA0");
}

}  // namespace
}  // namespace ketrel::sim
