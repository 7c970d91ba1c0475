#include "link/br3_receive.h"

#include <gtest/gtest.h>

#include "link/br3_test_port.h"

namespace ketrel {
namespace {

using test::Br3Session;

// One answer (hex text) through the live path: in the port, read when BR3Delay ticks. The next
// request finds PID 0D to send.
void Receive(Br3Session& s, const std::string& hex) {
    s.app().PidWanted[0x0D] = s.app().Mode1Supported[0x0D] = true;
    s.scan->buffer.clear();
    s.scan->putHex(hex);
    BR3DelayTick(s.app());
}

TEST(Br3Receive, CellsAreCutFromTheColumnsOfTheirFamilyAndMode) {
    struct Case {
        const char* protocol;
        const char* hex;
        const char* key;     // RxMode/RxPID
        const char* values;  // ByteValue(1..4)
        const char* hexes;   // ByteHex(1..4)
        bool secondFrame = false;
    } cases[] = {
        {"01", "07486B10410C1AF8C5", "01/0C", "26 248 197 -", "|||"},
        {"02", "08486B10420C001AF8AA", "02/0C", "26 248 170 -", "1A|F8||"},
        {"01", "0A486B1043013301340000CC", "03/01", "1 51 1 52", "01|33|01|34"},
        {"03", "486B10410C1AF8C5", "01/0C", "26 248 197 -", "|||"},
        {"04", "486B10420C001AF8AA", "02/0C", "26 248 170 -", "1A|F8||"},
        {"03", "486B1047013301340000CC", "07/01", "1 51 1 52", "01|33|01|34"},
        // A clear answer has no PID; the answer byte itself is kept.
        {"02", "05486B1044B0", "04/B0", "- - - -", "44|||"},
        {"04", "486B1044B0", "04/B0", "- - - -", "44|||"},
        // Too short for the answer byte: nothing is cut.
        {"01", "07486B10", "/", "- - - -", "|||"},
        // A negative answer has the mode digit F and is not decoded.
        {"03", "486B107F0112", "0F/01", "18 - - -", "|||"},
        // With SecondFrameConnect an ISO Mode 01 answer over 24 digits is cut to its second half.
        {"03", "486B10410C1AF8000011486B18410C2B11000022", "01/0C", "43 17 0 0", "|||", true},
        {"03", "486B10410C1AF8000011", "01/0C", "26 248 0 0", "|||", true},
        {"01", "07486B10410C1AF800001107486B18410C", "01/0C", "26 248 0 0", "|||", true},
    };
    for (const Case& c : cases) {
        Br3Session s(c.protocol);
        App& app = s.app();
        app.SecondFrameConnect = c.secondFrame;
        Receive(s, c.hex);
        std::string got = app.RxMode + "/" + app.RxPID + " ";
        for (std::size_t n = 1; n <= 4; ++n)
            got +=
                (app.ByteValue[n] ? std::to_string(*app.ByteValue[n]) : "-") + (n < 4 ? " " : "");
        for (std::size_t n = 1; n <= 4; ++n)
            got += (n > 1 ? "|" : " ") + app.ByteHex[n];
        EXPECT_EQ(got, std::string(c.key) + " " + c.values + " " + c.hexes) << c.hex;
    }
}

TEST(Br3Receive, TroubleCodeAnswersFillThreeFramesOfCodes) {
    // Three J1850 frames of 28 digits, three ISO frames of 22.
    const std::string j =
        "0A486B1043010102020303CC0000"
        "0A486B1043040405050606CC0000"
        "0A486B1043070708080909CC";
    const std::string i =
        "486B10430101020203039C"
        "486B10430404050506069D"
        "486B10430707080809099E";
    for (auto [protocol, hex] : {std::pair{"02", j}, std::pair{"04", i}}) {
        Br3Session s(protocol);
        Receive(s, hex);
        std::string cells;
        for (std::size_t n = 1; n <= 18; ++n)
            cells += s.app().ByteHex[n];
        EXPECT_EQ(cells, "010102020303040405050606070708080909") << protocol;
    }
}

// ISO and KWP send the five VIN frames in one answer; a frame out of place ends the rule.
TEST(Br3Receive, AKLineVinFrameOutOfPlaceLeavesTheVinUnshown) {
    const std::string all =
        "486B1049020100000031CC"
        "486B104902024743454BCC"
        "486B1049020331395434CC"
        "486B1049020458453132CC"
        "486B1049020533343536CC";
    for (bool broken : {false, true}) {
        Br3Session s("04");
        std::string hex = all;
        if (broken) hex[55] = '9';  // frame 3 names itself 9
        Receive(s, hex);
        EXPECT_EQ(s.app().VinText, broken ? "1GCEK" : "1GCEK19T4XE123456");
        EXPECT_EQ(s.app().frmMain().txtVin.text(), broken ? "" : "1GCEK19T4XE123456");
    }
}

}  // namespace
}  // namespace ketrel
