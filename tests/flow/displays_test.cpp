// The data displays on a simulated count-byte converter and a VPW pick-up: each one narrows the
// polling to what it shows and gives it back when it closes.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <iterator>
#include <memory>
#include <set>
#include <sstream>

#include "core/main_screen.h"
#include "display/displays.h"
#include "display/fuel_economy.h"
#include "flow/car_rig.h"
#include "platform/sqlite_db.h"
#include "screens/frm_custom_data.h"
#include "screens/frm_mpg.h"
#include "screens/frm_real_display.h"

namespace ketrel::test {
namespace {

// Makes System/MPGAve1.db and its template from the shipped schema.
void MakeMpgStore(const std::filesystem::path& appPath) {
    const std::string schema = ReadFile(std::string(KETREL_DATA_DIR) + "/db/MPGAve1.sql");
    std::filesystem::create_directories(appPath / "System");
    for (const auto& p : {MpgStorePath(appPath), MpgTemplatePath(appPath)}) {
        SqliteDb db;
        ASSERT_TRUE(db.open(p, true) && db.execScript(schema)) << db.error();
    }
}

// The program's session and displays joined to a simulated count-byte converter and a VPW
// pick-up on port 1, or with `kline` to a K-line cable and a KWP 2000 car woken up fast.
struct DisplayRig : CarRig {
    explicit DisplayRig(bool kline = false)
        : CarRig(kline ? kKesh : kBr3, kline ? "iso14230" : "vpw", kline ? 3 : 1) {
        App& app = *t;
        app.Speed = "MPH";
        MakeMpgStore(t.dir.path());
        InstallDisplays(app);
        InstallMainScreen(app);
        connect(MsgAnswer::Cancel);
    }
    const Strings& sent() const { return frames(); }
    // The Mode 01 PIDs asked for during `ms` from now: the byte after "F1 01" of each request.
    std::set<int> polled(int ms) {
        const std::size_t from = sent().size();
        run(ms);
        std::set<int> pids;
        for (std::size_t i = from; i < sent().size(); ++i) {
            std::istringstream in(sent()[i]);
            std::vector<std::string> bytes{std::istream_iterator<std::string>(in), {}};
            for (std::size_t b = 0; b + 2 < bytes.size(); ++b)
                if (bytes[b] == "F1" && bytes[b + 1] == "01") {
                    pids.insert(std::stoi(bytes[b + 2], nullptr, 16));
                    break;
                }
        }
        return pids;
    }
    template <class S>
    S& screen(const char* name) {
        return *dynamic_cast<S*>(app().screenByName(name));
    }
};

TEST(Displays, ExtendedListPollsItsPidsAndGivesTheCycleBackOneTickAfterClosing) {
    struct Case {
        bool kline;
        std::set<int> extended;  // the support PIDs 20 and 40, then what the car has
    } cases[] = {{false, {0x20, 0x21, 0x2F, 0x33, 0x40}}, {true, {0x20, 0x21, 0x2F, 0x40}}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.kline ? "K-line" : "count-byte");
        DisplayRig r(c.kline);
        App& app = r.app();
        ASSERT_TRUE(app.Connected);
        r.run(2000);
        app.GridStyle = c.kline;  // the K-line case in grid style
        app.frmMain().mnuOptionData.click();
        ASSERT_TRUE(app.frmNewPids().visible());
        EXPECT_FALSE(app.frmMain().enabled());
        EXPECT_EQ(r.polled(5000), c.extended);
        EXPECT_NE(app.frmNewPids().lblDisMilOn.text(), "");
        EXPECT_TRUE(app.frmNewPids().lblDisMilOn.enabled());
        EXPECT_EQ(app.frmNewPids().Image1[1].picture(), kImgGreen);
        // A value that goes to "N/A" greys with its caption and comes back with a value; the
        // grid style mirrors it.
        FrmNewPids& x = app.frmNewPids();
        x.lblVolt.setText("N/A");
        EXPECT_FALSE(x.lblVolt.enabled() || x.Label1[1].enabled());
        x.lblVolt.setText("13.8");
        EXPECT_TRUE(x.lblVolt.enabled() && x.Label1[1].enabled());
        EXPECT_EQ(x.GridData.text(12, 1), c.kline ? "13.8" : "");
        EXPECT_EQ(x.GridData.text(12, 0), c.kline ? "CONTROL MODULE VOLTAGE" : "");
        // With the override on, a status picture forces a PID the car did not report.
        app.frmMain().mnuEditPidsOver.click();
        x.Image1[0x42 - 32].click();
        EXPECT_TRUE(app.Mode1Supported[0x42] && app.PidWanted[0x42]);
        EXPECT_TRUE(r.polled(3000).count(0x42));
        // The close waits one tick of Timer1.
        EXPECT_FALSE(app.frmNewPids().unload());
        EXPECT_FALSE(app.CustomListActive);
        r.run(150);
        EXPECT_FALSE(app.frmNewPids().loaded());
        EXPECT_TRUE(app.frmMain().enabled());
        const std::set<int> after = r.polled(3000);
        EXPECT_TRUE(after.count(0x0C));
        EXPECT_EQ(after.lower_bound(0x21), after.end());
    }
}

TEST(Displays, CustomListPollsOnlyTheChosenPids) {
    DisplayRig r;
    App& app = r.app();
    r.run(2000);
    auto& c = r.screen<FrmCustomData>("frmCustomData");
    const auto wantedBefore = app.PidWanted;
    std::vector<std::string> words;
    // PID 21 is not known before the extended list asks for PID 20. First nothing chosen:
    // refused. Then RPM and speed only.
    r.after(100, [&] {
        for (int pid : {0x02, 0x0C, 0x21})
            words.push_back(c.Check1[pid].caption());
        c.Check2.setValue(true);
        c.Check2.setValue(false);
        c.cmdOk.click();
        words.push_back(c.Panel1.text());
        EXPECT_EQ(app.PidWanted, wantedBefore);
        c.Check1[0x0C].click();
        c.Check1[0x0D].click();
        words.push_back(c.Check1[0x0C].caption());
        c.cmdOk.click();
    });
    app.frmMain().mnuOptionList.click();  // modal: returns when the list closes
    EXPECT_EQ(words, (std::vector<std::string>{
                         "N/A", "ENABLED", "N/A",
                         "YOU MUST HAVE AT LEAST 1 OF THE PIDS SELECTED IN EACH TAB SECTION!",
                         "ENABLED"}));
    EXPECT_FALSE(c.loaded());
    EXPECT_EQ(app.frmMain().Image1[5].picture(), kImgYellow);
    EXPECT_EQ(r.polled(3000), (std::set<int>{0x0C, 0x0D}));
}

TEST(Displays, LargeDisplayFollowsTheMainFieldAndBlinksWhenNotPolled) {
    DisplayRig r;
    App& app = r.app();
    r.run(3000);
    app.frmMain().mnuViewRPM.click();
    auto& d = r.screen<FrmRealDisplay>("frmRealDisplay");
    ASSERT_TRUE(d.visible());
    EXPECT_EQ(d.lblMax.text(), "8000 RPM");
    r.run(2000);
    const std::string rpm = app.frmMain().lblRPM.text();
    EXPECT_EQ(d.lblValue.text(), rpm);
    EXPECT_EQ(d.ProgressBar1.value(), std::stoi(rpm));
    EXPECT_FALSE(d.lblDisabled[0].visible());
    // A value the cycle does not poll: the warning blinks every 500 ms.
    app.PidWanted[0x0B] = false;
    app.frmMain().mnuViewMAP.click();
    EXPECT_EQ(d.lblDisplayPID.text(), "MAP");
    std::vector<bool> seen;
    for (int i = 0; i < 4; ++i) {
        r.run(500);
        seen.push_back(d.lblDisabled[0].visible());
    }
    EXPECT_EQ(seen, (std::vector<bool>{true, false, true, false}));
}

TEST(Displays, FuelEconomyNarrowsThePollingAndItsAverageSurvivesARestart) {
    std::string average;
    const auto copy = std::filesystem::temp_directory_path() / "ketrel-displays-mpg.db";
    {
        DisplayRig r;
        App& app = r.app();
        r.run(2000);
        const auto wanted = app.PidWanted;
        app.frmMain().mnuViewRPM.click();  // the fuel economy closes the large display
        app.frmMain().mnuViewMPG.click();
        auto& s = r.screen<FrmMPG>("frmMPG");
        ASSERT_TRUE(s.visible());
        EXPECT_FALSE(app.screenByName("frmRealDisplay")->loaded());
        EXPECT_EQ(r.polled(30000), (std::set<int>{0x07, 0x09, 0x0D, 0x10}));
        EXPECT_NE(s.lblInstMPG.text(), "-");  // moving by now
        EXPECT_NE(s.lblMPGAve.text(), "");
        r.run(10000);
        average = s.lblMPGAve.text();
        s.unload();
        EXPECT_EQ(app.PidWanted, wanted);
        EXPECT_TRUE(app.frmMain().enabled());
        std::filesystem::copy_file(MpgStorePath(r.t.dir.path()), copy,
                                   std::filesystem::copy_options::overwrite_existing);
    }
    // A new run of the program finds the samples and shows the same average, not connected.
    TestApp t;
    MakeMpgStore(t.dir.path());
    std::filesystem::copy_file(copy, MpgStorePath(t.dir.path()),
                               std::filesystem::copy_options::overwrite_existing);
    std::filesystem::remove(copy);
    InstallDisplays(*t);
    auto& s = *dynamic_cast<FrmMPG*>(t->screenByName("frmMPG"));
    s.show();
    t.loop.runFor(10500);
    EXPECT_EQ(s.lblMPGAve.text(), average);
    // The reset empties the table: the average is no longer taken.
    ResetMpg(*t);
    s.lblMPGAve.setText("");
    t.loop.runFor(10000);
    EXPECT_EQ(s.lblMPGAve.text(), "");
}

}  // namespace
}  // namespace ketrel::test
