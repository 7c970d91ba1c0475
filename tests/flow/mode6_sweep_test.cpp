#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>

#include "flow/car_rig.h"
#include "screens/frm_mode6.h"
#include "sweeps/mode6_sweep.h"

namespace ketrel::test {
namespace {

// A session with the Mode 6 screen installed, connected.
struct Mode6Rig : CarRig {
    Mode6Rig(const char* hardware, const std::string& car, int start,
             const std::function<void(sim::SimVehicle&)>& edit = nullptr)
        : CarRig(hardware, car, start, nullptr, edit) {
        InstallMode6(app());
        connect();
    }
    FrmMode6& f() { return *Mode6Screen(app()); }
    Grid& grid() { return f().MSFlexGrid1; }
    // Opens the screen and lets the whole sweep run.
    void sweep() {
        f().show();
        t.loop.runFor(200);
    }
    // How many frames asked Mode 06 for this id.
    long asked(const std::string& id) const {
        return std::count_if(frames().begin(), frames().end(), [&](const std::string& f) {
            return f.find("F1 06 " + id + " ") != std::string::npos;
        });
    }
    // Row r of the grid, columns 0, 1, 3, 4, 7, 8 joined by "|".
    std::string row(int r) {
        std::string out;
        for (int c : {0, 1, 3, 4, 7, 8})
            out += grid().text(r, c) + (c == 8 ? "" : "|");
        return out;
    }
};

// The rows the shipped cars hold: two components of test 01 (pass, fail), a failing 03, a test
// 10 whose second value equals its minimum limit on component 85, and on the cars with tests
// above 32 a failing minimum, a pass near the top of the range and a test in the third block.
const Strings kRowsLow = {"01|11|180|200|MAXIMUM|PASS", "01|21|210|200|MAXIMUM|FAIL",
                          "03|11|450|400|MAXIMUM|FAIL", "10|11|35|64|MAXIMUM|PASS",
                          "10|05|256|256|MINIMUM|PASS"};
Strings Rows(bool high) {
    Strings rows = kRowsLow;
    if (high) {
        for (const char* r : {"21|01|512|768|MINIMUM|FAIL", "27|11|33024|33280|MAXIMUM|PASS",
                              "41|01|16384|12288|MINIMUM|PASS"})
            rows.push_back(r);
    } else {
        rows.push_back("1A|01|512|768|MINIMUM|FAIL");
    }
    return rows;
}

TEST(Mode6Sweep, FillsTheGridOnEveryDeviceAndProtocol) {
    struct Case {
        const char* hardware;
        const char* car;
        int start;
        bool high;      // tests above 32: ids 32 and 64 flagged, counted and stepped over
        int supported;  // ids the support replies mark
        const char* firstSupportFrame;
    } cases[] = {
        {kBr3, "vpw", 1, true, 8, "07 68 6A F1 06 00 EE 01"},
        {kBr3, "pwm", 1, true, 8, "07 61 6A F1 06 00 F3 01"},
        {kBr3, "iso9141", 1, true, 8, "06 68 6A F1 06 00 C9"},
        {kBr3, "iso14230", 5, false, 4, "06 C2 33 F1 06 00 EC"},
        {kKesh, "iso9141", 1, true, 8, "68 6A F1 06 00 C9"},
        {kKesh, "iso14230", 3, false, 4, "C2 33 F1 06 00 EC"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.hardware) + " " + c.car);
        Mode6Rig r(c.hardware, c.car, c.start);
        App& app = r.app();
        ASSERT_TRUE(app.Connected);
        for (std::size_t i = 0; i < 42; ++i)
            app.PidWanted[i] = i % 3 == 0;
        const auto wanted = app.PidWanted;
        bool heldDuringSweep = false;
        r.after(1000, [&] {
            const FrmMain& m = app.frmMain();
            heldDuringSweep = app.Mode6Active && !m.enabled() && !m.BR3Delay.enabled() &&
                              !m.KeshDelay.enabled() && !m.TimeOutConnect.enabled() &&
                              std::none_of(app.PidWanted.begin(), app.PidWanted.begin() + 42,
                                           [](bool b) { return b; });
        });
        r.sweep();

        const Strings rows = Rows(c.high);
        for (std::size_t i = 0; i < rows.size(); ++i)
            EXPECT_EQ(r.row(int(i) + 1), rows[i]) << "row " << i + 1;
        EXPECT_EQ(r.row(int(rows.size()) + 1), "|||||");
        EXPECT_EQ(r.grid().rows(), c.supported + 125);
        EXPECT_EQ(r.f().Panel1.text() + r.f().Panel2.text(), "END OF PROCESS");
        EXPECT_TRUE(heldDuringSweep);
        EXPECT_TRUE(std::equal(wanted.begin(), wanted.begin() + 42, app.PidWanted.begin()));
        EXPECT_TRUE(r.f().cmdFordDef.enabled() && !r.f().cmdCancelMode6.enabled());
        const Strings frames = r.frames();
        EXPECT_EQ(std::count(frames.begin(), frames.end(), c.firstSupportFrame), 1);
        // Ids 32 and 64 are asked only as support requests.
        EXPECT_EQ(r.asked("20") + r.asked("40"), 2);
        // The scan goes on after the sweep; the close is taken and releases the line.
        EXPECT_TRUE(app.frmMain().TimeOutConnect.enabled());
        const std::size_t before = r.frames().size();
        r.t.loop.runFor(2000);
        EXPECT_GT(r.frames().size(), before);
        EXPECT_TRUE(r.f().unload());
        EXPECT_TRUE(!app.Mode6Active && app.frmMain().enabled());
    }
}

// The J1850 components come one per request, the trailing byte stepping through them.
TEST(Mode6Sweep, J1850AsksEachComponentWithTheNextFrameIndex) {
    Mode6Rig r(kBr3, "vpw", 1);
    // In the test phase the event loop turns at least once per request's wait.
    Timer tick(r.t.loop.scheduler(), 10);
    std::int64_t last = 0, longest = 0;
    bool wasTesting = false;
    tick.setHandler([&] {
        const std::int64_t now = r.t.loop.nowMs();
        const bool testing = r.app().Mode6Br3.TestID > 0 && r.f().Panel1.text() != "END OF PROCESS";
        if (testing && wasTesting) longest = std::max(longest, now - last);
        last = now;
        wasTesting = testing;
    });
    tick.start();
    r.sweep();
    tick.stop();
    EXPECT_GT(longest, 200);
    EXPECT_LE(longest, 270);
    const Strings& f = r.frames();
    auto at = std::find(f.begin(), f.end(), "07 68 6A F1 06 01 F3 01");
    ASSERT_GE(f.end() - at, 3);
    EXPECT_EQ(Strings(at, at + 3), (Strings{"07 68 6A F1 06 01 F3 01", "07 68 6A F1 06 01 F3 02",
                                            "07 68 6A F1 06 01 F3 03"}));
    // The support request of base 20, once.
    EXPECT_EQ(std::count(f.begin(), f.end(), "07 68 6A F1 06 20 69 01"), 1);
}

TEST(Mode6Sweep, EdgeCases) {
    struct Case {
        const char* what;
        const char* car;
        std::function<void(sim::SimVehicle&)> edit;
        std::function<void(Mode6Rig&)> during;  // runs before the sweep starts
        std::function<void(Mode6Rig&)> check;
    } cases[] = {
        {"a car that supports nothing, the support list shown", "iso9141",
         [](sim::SimVehicle& v) { v.ecus[0].mode6 = {}; },
         [](Mode6Rig& r) { r.app().Mode6ListVisible = true; },
         [](Mode6Rig& r) {
             EXPECT_TRUE(r.f().List1.visible());
             EXPECT_EQ(r.grid().rows(), 125);
             EXPECT_EQ(r.f().List1.item(255), "PID 256  NOT SUPPORTED");
             EXPECT_EQ(r.asked("01"), 0);
         }},
        {"id 255 supported with no result, 256 flagged", "iso9141",
         [](sim::SimVehicle& v) {
             v.ecus[0].mode6 = {};
             sim::AddMode6Setting(v.ecus[0].mode6, "mode6-support", {"E0", "00", "00", "00", "03"});
         },
         nullptr,
         [](Mode6Rig& r) {
             EXPECT_EQ(r.asked("FF"), 1);
             EXPECT_EQ(r.f().List1.item(254), "PID 255  SUPPORTED");
             EXPECT_EQ(r.f().List1.item(255), "PID 256  SUPPORTED");
             // An ISO reply that never came still makes a row, of marks.
             EXPECT_EQ(r.row(1), "FF|00|||*|*");
             EXPECT_EQ(r.row(2), "|||||");
         }},
        {"No to the cancel question: the sweep goes on", "iso9141", nullptr,
         [](Mode6Rig& r) {
             r.t.dialogs.answerNext(MsgAnswer::No);
             r.after(2700, [&r] { r.f().cmdCancelMode6.click(); });
         },
         [](Mode6Rig& r) {
             ASSERT_EQ(r.t.dialogs.shown().size(), 1u);
             EXPECT_EQ(r.t.dialogs.shown()[0].title + ": " + r.t.dialogs.shown()[0].text,
                       "MODE 6: Are You Sure You Want To Cancel Mode 6?");
             EXPECT_EQ(r.row(8), "41|01|16384|12288|MINIMUM|PASS");
             EXPECT_TRUE(r.app().Mode6Cancel);
         }},
        {"cancel mid-sweep", "iso9141", nullptr,
         [](Mode6Rig& r) { r.after(2700, [&r] { r.f().cmdCancelMode6.click(); }); },
         [](Mode6Rig& r) {
             EXPECT_EQ(r.t.dialogs.shown().size(), 1u);
             EXPECT_EQ(r.row(1), "01|11|180|200|MAXIMUM|PASS");
             EXPECT_EQ(r.asked("41"), 0);
             EXPECT_TRUE(r.app().Mode6Cancel);
             EXPECT_TRUE(r.f().cmdFordDef.enabled() && !r.f().cmdCancelMode6.enabled());
             EXPECT_EQ(r.f().Panel1.text(), "END OF PROCESS");
             EXPECT_TRUE(r.app().PidWanted[1]);
         }},
        {"a second sweep overwrites from the top and grows the grid", "iso9141", nullptr,
         [](Mode6Rig& r) {
             r.sweep();
             ASSERT_TRUE(r.f().unload());
         },
         [](Mode6Rig& r) {
             EXPECT_EQ(r.grid().rows(), 16 + 125);
             EXPECT_EQ(r.row(1), "01|11|180|200|MAXIMUM|PASS");
             EXPECT_EQ(r.row(9), "|||||");
         }},
        {"a close during the sweep is refused but releases the polling", "iso9141", nullptr,
         [](Mode6Rig& r) {
             r.after(2700, [&r] {
                 EXPECT_FALSE(r.f().unload());
                 EXPECT_TRUE(!r.app().Mode6Active && r.app().PidWanted[1]);
             });
         },
         [](Mode6Rig& r) {
             EXPECT_TRUE(r.f().loaded());
             EXPECT_EQ(r.row(8), "41|01|16384|12288|MINIMUM|PASS");
         }},
        {"connection lost mid-sweep", "vpw", nullptr,
         [](Mode6Rig& r) { r.after(2700, [&r] { EndSession(r.app()); }); },
         [](Mode6Rig& r) {
             EXPECT_FALSE(r.app().Connected);
             EXPECT_EQ(r.asked("41"), 0);
             EXPECT_EQ(r.f().Panel1.text(), "STATUS:  REQUESTING IN PROGRESS...");
             EXPECT_TRUE(r.app().Mode6Active);
             EXPECT_TRUE(r.f().unload());  // and the screen closes without a word
             EXPECT_TRUE(r.app().Mode6Active);
         }},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Mode6Rig r(kBr3, c.car, 1, c.edit);
        r.app().PidWanted[1] = true;
        if (c.during) c.during(r);
        r.sweep();
        c.check(r);
    }
}

// On KWP 2000 through a K-line cable the echo text of a support request keeps base 00, so the
// echo of base 20 survives the strip in part and its bytes are read as the bitmap: 7F 11 04 62
// here, while the real test 33 is never asked for.
TEST(Mode6Sweep, KwpKlineSupportOfBase20ReadsTheEchoLeftOver) {
    Mode6Rig r(kKesh, "iso14230", 3, [](sim::SimVehicle& v) {
        sim::AddMode6Setting(v.ecus[0].mode6, "mode6", {"21", "11", "0001", "0002"});
    });
    r.sweep();
    EXPECT_EQ(r.f().List1.item(32), "PID 33  NOT SUPPORTED");
    EXPECT_EQ(r.f().List1.item(33), "PID 34  SUPPORTED");
    EXPECT_EQ(r.f().List1.item(62), "PID 63  SUPPORTED");
    EXPECT_EQ(r.asked("21"), 0);
    EXPECT_EQ(r.asked("22"), 1);
}

}  // namespace
}  // namespace ketrel::test
