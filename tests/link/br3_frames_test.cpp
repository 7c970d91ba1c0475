#include "link/br3_frames.h"

#include <gtest/gtest.h>

#include <functional>

#include "link/br3_request.h"
#include "link/br3_test_port.h"

namespace ketrel {
namespace {

using test::Br3Session;

// Raises the custom list with one PID (0x21) wanted and offered.
void RaiseCustomList(App& a) {
    a.CustomListActive = true;
    a.ExtendedPIDCount = 1;
    a.PidWanted[0x21] = a.Mode1Supported[0x21] = true;
}

// The frame each request sends on each protocol. A J1850 request of frame n carries n as its
// trailing byte; the first request of a series asks for frame 1.
TEST(Br3Frames, EveryRequestOfTheFrameSetOnEveryProtocol) {
    struct Row {
        const char* request;
        std::function<void(App&)> raise;
        std::array<const char*, 4> frames;  // PWM, VPW, ISO 9141, KWP 2000
    };
    const Row rows[] = {
        {"Mode 04",
         [](App& a) { a.RequestClearCodes = true; },
         {"06 61 6A F1 04 9F 01", "06 68 6A F1 04 9E 01", "05 68 6A F1 04 C7",
          "05 C1 33 F1 04 E9"}},
        {"Mode 03",
         [](App& a) { a.RequestTroubleCodes = true; },
         {"06 61 6A F1 03 CC 01", "06 68 6A F1 03 CD 01", "05 68 6A F1 03 C6",
          "05 C1 33 F1 03 E8"}},
        {"Mode 07",
         [](App& a) { a.RequestPendingCodes = true; },
         {"06 61 6A F1 07 B8 01", "06 68 6A F1 07 B9 01", "05 68 6A F1 07 CA",
          "05 C1 33 F1 07 EC"}},
        {"Mode 02 PID 00",
         [](App& a) { a.RequestFFData = true; },
         {"07 61 6A F1 02 00 DE 01", "07 68 6A F1 02 00 C3 01", "07 68 6A F1 02 00 00 C5",
          "07 C3 33 F1 02 00 00 E9"}},
        {"Mode 02 PID 02",
         [](App& a) { a.RequestFFCode = true; },
         {"07 61 6A F1 02 02 E4 01", "07 68 6A F1 02 02 F9 01", "07 68 6A F1 02 02 00 C7",
          "07 C3 33 F1 02 02 00 EB"}},
        {"Mode 01 PID 20",
         [](App& a) { a.RequestPid20 = true; },
         {"07 61 6A F1 01 20 8D 01", "07 68 6A F1 01 20 90 01", "06 68 6A F1 01 20 E4",
          "06 C2 33 F1 01 20 07"}},
        {"Mode 01 PID 40",
         [](App& a) { a.RequestPid40 = true; },
         {"07 61 6A F1 01 40 19 01", "07 68 6A F1 01 40 04 01", "06 68 6A F1 01 40 04",
          "06 C2 33 F1 01 40 27"}},
        {"Mode 09 PID 02",
         [](App& a) { a.RequestInfo = true; },
         {"07 61 6A F1 09 02 6A 01", "07 68 6A F1 09 02 77 01", "06 68 6A F1 09 02 CE",
          "06 C2 33 F1 09 02 F1"}},
        {"freeze frame PID 03",
         [](App& a) { a.RequestFFData = a.FFPidsKnown = a.Mode2Supported[3] = true; },
         {"07 61 6A F1 02 03 F9 01", "07 68 6A F1 02 03 E4 01", "07 68 6A F1 02 03 00 C8",
          "07 C3 33 F1 02 03 00 EC"}},
        {"PID 0C of the cycle",
         [](App& a) { a.PidWanted[0x0C] = a.Mode1Supported[0x0C] = true; },
         {"07 61 6A F1 01 0C 96 01", "07 68 6A F1 01 0C 8B 01", "06 68 6A F1 01 0C D0",
          "06 C2 33 F1 01 0C F3"}},
        // J1850 serves the custom list before the freeze code and the codes, ISO and KWP last.
        {"custom list, freeze code and codes",
         [](App& a) {
             RaiseCustomList(a);
             a.RequestFFCode = a.RequestTroubleCodes = a.RequestPendingCodes = true;
         },
         {"07 61 6A F1 01 21 90 01", "07 68 6A F1 01 21 8D 01", "07 68 6A F1 02 02 00 C7",
          "07 C3 33 F1 02 02 00 EB"}},
    };
    const char* codes[] = {"02", "01", "03", "04"};
    const char* headers[] = {"\x61\x6A\xF1", "\x68\x6A\xF1", "\x68\x6A\xF1", "\xC2\x33\xF1"};
    for (const Row& row : rows) {
        for (std::size_t p = 0; p < 4; ++p) {
            Br3Session s(codes[p]);
            App& app = s.app();
            app.FrameHeader = headers[p];
            app.FrameHeader3 = "\xC3\x33\xF1";
            row.raise(app);
            BR3Request(app, Br3LineFor(codes[p]));
            EXPECT_EQ(s.sentHex(), std::vector<std::string>{row.frames[p]}) << row.request;
            EXPECT_TRUE(app.frmMain().BR3Delay.enabled()) << row.request;
        }
    }
}

// J1850 asks for trouble-code frames 1 to 3 in turn while the list holds three codes, else for
// frame 1 every time.
TEST(Br3Frames, J1850TroubleCodeFramesCountOnAcrossTicks) {
    for (int codes : {0, 3}) {
        Br3Session s("02");
        for (int i = 0; i < codes; ++i)
            s.app().frmMain().lstCodes.addItem("P0300");
        for (int i = 0; i < 4; ++i) {
            s.app().RequestTroubleCodes = true;
            BR3Request(s.app(), Br3Line::Pwm);
        }
        std::string trailing;
        for (const std::string& frame : s.sentHex())
            trailing += frame.back();
        EXPECT_EQ(trailing, codes ? "1231" : "1111") << codes;
    }
}

}  // namespace
}  // namespace ketrel
