#include <gtest/gtest.h>

#include "core/shutdown.h"
#include "core_fixture.h"

namespace ketrel {
namespace {

using test::StartedApp;
using Stored = std::map<std::string, std::string>;
const std::string kDisplayUnreadable = "Error Evaluating The Current Display Settings";

TEST(Startup, FirstRunWritesTheDefaultsInOrderAndTheSettingsScreenShowsThem) {
    StartedApp t;
    t.start();
    std::string path = t.dir.path().string();
    EXPECT_EQ(t.settings.saveLog(),
              (std::vector<std::string>{"Settings/TimeOut=10000", "Settings/Temp=F",
                                        "Settings/Speed=MPH", "Settings/Pressure=PSI",
                                        "Settings/AppVer=0.77", "Settings/AppPath=" + path}));
    FrmSettings& s = t->frmSettings();
    EXPECT_TRUE(s.loaded() && !s.visible());
    EXPECT_TRUE(s.optFarenheit.value() && s.optMiles.value() && s.optPSI.value());
    EXPECT_EQ(s.cmbPort.text(), "-SELECT-");
    EXPECT_EQ(s.cmbInterface.text(), "-SELECT-");
}

// What the program holds of one setting, in the words the store uses.
std::string Held(App& a, const std::string& key) {
    auto word = [](bool b) { return std::string(b ? "True" : "False"); };
    if (key == "TimeOut") return std::to_string(a.TimeOut);
    if (key == "BR3Delay") return a.BR3Delay;
    if (key == "KESH Start") return std::to_string(a.KeshStart);
    if (key == "BR3 Start") return std::to_string(a.BR3Start);
    if (key == "Temp") return a.Temp;
    if (key == "Speed") return a.Speed;
    if (key == "Pressure") return a.Pressure;
    if (key == "Log File") return word(a.ConnectLogEnabled);
    if (key == "DisplaySet") return word(a.DisplaySet);
    if (key == "BR3SetDelay") return word(a.BR3SetDelay);
    return a.DataStyle;
}

// One stored value per case: what the program holds after start-up, what it wrote back, and
// the timers, menu handlers and settings page that follow what it holds. The time-out keeps to
// 10 to 29 s, rounded down to whole seconds; the request delay to 125 to 500 ms, never saved;
// protocol choices out of range act as the first while the store keeps them; units outside
// their two words fall back, and all three are saved back; booleans take their words or a
// number, else keep the value before; the data style runs the handler of its menu entry.
TEST(Startup, EachStoredValueIsReadOrFallsBackAndEverythingFollowsIt) {
    struct Case {
        const char* key;
        const char* stored;  // nullptr: no key
        const char* held;
        std::vector<std::string> saved;
        const char* handler = "default";  // the data style's menu entry that ran
    } cases[] = {{"TimeOut", "29000", "29000", {}},
                 {"TimeOut", "29001", "10000", {"10000"}},
                 {"TimeOut", "9999", "10000", {"10000"}},
                 {"TimeOut", "28999", "28000", {"28000"}},
                 {"TimeOut", "20000.4", "20000", {}},
                 {"TimeOut", "-15000", "10000", {"10000"}},
                 {"TimeOut", "abc", "10000", {"10000"}},
                 {"TimeOut", nullptr, "10000", {"10000"}},
                 {"BR3Delay", "124", "180", {}},
                 {"BR3Delay", "125", "125", {}},
                 {"BR3Delay", "500", "500", {}},
                 {"BR3Delay", "501", "180", {}},
                 {"BR3Delay", "", "180", {}},
                 {"KESH Start", "3", "3", {}},
                 {"KESH Start", "4", "1", {}},
                 {"KESH Start", "0", "1", {}},
                 {"KESH Start", "abc", "1", {}},
                 {"BR3 Start", "5", "5", {}},
                 {"BR3 Start", "6", "1", {}},
                 {"BR3 Start", "2.4", "2", {}},
                 {"Temp", "C", "C", {"C"}},
                 {"Temp", "c", "F", {"F"}},
                 {"Speed", "KPH", "KPH", {"KPH"}},
                 {"Speed", "", "MPH", {"MPH"}},
                 {"Pressure", "kPa", "kPa", {"kPa"}},
                 {"Pressure", "bar", "PSI", {"PSI"}},
                 {"Log File", nullptr, "True", {}},
                 {"Log File", "0", "False", {}},
                 {"Log File", "junk", "False", {}},
                 {"DisplaySet", "-1", "True", {}},
                 {"DisplaySet", "yes", "False", {}},
                 {"BR3SetDelay", "True", "True", {}},
                 {"BR3SetDelay", "#", "False", {}},
                 {"DataStyle", "2", "2", {}, "grid"},
                 {"DataStyle", "3", "3", {}},
                 {"DataStyle", "5", "5", {}, ""},
                 {"DataStyle", "0", "1", {}},
                 {"DataStyle", "abc", "1", {}}};
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.key) + "=" + (c.stored ? c.stored : "(missing)"));
        Stored stored;
        if (c.stored) stored[c.key] = c.stored;
        StartedApp t(stored);
        t.display.mode = DisplayMode{1280, 1024, 32, 60};
        std::string ran;
        FrmMain& m = t->frmMain();
        m.mnuViewDefault.onClick = [&] { ran += "default"; };
        m.mnuViewStyleGrid.onClick = [&] { ran += "grid"; };
        t.start();
        EXPECT_EQ(Held(*t, c.key), c.held);
        EXPECT_EQ(t.savesOf(c.key), c.saved);
        EXPECT_EQ(ran, c.handler);
        FrmSettings& s = t->frmSettings();
        EXPECT_EQ(m.TimeOutConnect.interval(), t->TimeOut);
        EXPECT_EQ(s.cmbTimedOut.text(), std::to_string(t->TimeOut / 1000));
        EXPECT_EQ(m.BR3Delay.interval(), std::stoi(t->BR3Delay));
        EXPECT_EQ(m.KeshDelay.interval(), std::stoi(t->BR3Delay));
        EXPECT_EQ(s.sldBR3Speed.value(), std::stoi(t->BR3Delay));
        EXPECT_EQ(s.optCelcius.value(), t->Temp == "C");
        EXPECT_EQ(s.optKilometers.value(), t->Speed == "KPH");
        EXPECT_EQ(s.optKPA.value(), t->Pressure == "kPa");
        EXPECT_EQ(s.chConLog.value(), t->ConnectLogEnabled);
        EXPECT_EQ(s.chkSetDelay.value(), t->BR3SetDelay);
        EXPECT_TRUE(t.dialogs.shown().empty());
    }
}

TEST(Startup, SplashHandsOverToTheMainWindowAfter1500Milliseconds) {
    StartedApp t;
    t.start();
    FrmSplash& splash = t->frmSplash();
    FrmMain& m = t->frmMain();
    EXPECT_TRUE(splash.visible() && !splash.enabled() && m.visible());
    EXPECT_FALSE(m.button(3).enabled() || m.button(5).enabled() || m.button(12).enabled());
    EXPECT_TRUE(m.button(2).enabled());
    EXPECT_EQ(m.panel(4).text(), "Display Setting:  1280 X 1024, TRUE COLOR,  60 HZ");
    t.loop.runFor(1499);
    EXPECT_TRUE(splash.loaded());
    EXPECT_FALSE(m.enabled());
    t.loop.runFor(2);
    EXPECT_FALSE(splash.loaded());
    EXPECT_TRUE(m.enabled());
    EXPECT_FALSE(m.SplashScreen.enabled());
}

TEST(Startup, DisplayCheckWarnsOnceAboutTheFirstShortfall) {
    struct Case {
        const char* displaySet;
        int width, height, depth;  // width 0: the display can't be read
        const std::string* warning;
    } cases[] = {
        {"True", 0, 0, 0, &kDisplayUnreadable},
        {"True", 1024, 768, 16, nullptr},
        {"True", 1024, 767, 32, &kDisplaySizeWarning},
        {"True", 1023, 768, 32, &kDisplaySizeWarning},
        {"True", 800, 600, 8, &kDisplaySizeWarning},
        {"True", 1280, 1024, 8, &kDisplayColorWarning},
        {"False", 800, 600, 8, nullptr},
        {nullptr, 800, 600, 8, nullptr},
    };
    for (const Case& c : cases) {
        std::map<std::string, std::string> stored;
        if (c.displaySet) stored["DisplaySet"] = c.displaySet;
        StartedApp t(stored);
        t.display.mode = DisplayMode{c.width, c.height, c.depth, 60};
        if (c.width == 0) t.display.mode.reset();
        t.start();
        SCOPED_TRACE(std::to_string(c.width) + "x" + std::to_string(c.height));
        if (c.width == 0) {
            EXPECT_EQ(t->frmMain().panel(4).text(), "Display Setting:  ");
        }
        if (!c.warning) {
            EXPECT_TRUE(t.dialogs.shown().empty());
            continue;
        }
        ASSERT_EQ(t.dialogs.shown().size(), 1u);
        const MessageBox& box = t.dialogs.shown()[0];
        EXPECT_EQ(box.text, *c.warning);
        if (c.width == 0) continue;  // told plainly, and the check is left out
        EXPECT_EQ(box.title, "Attention User");
        EXPECT_EQ(box.icon, MsgIcon::Exclamation);
        EXPECT_TRUE(box.systemModal);
    }
}

TEST(Shutdown, CloseIsRefusedInSilenceWhileASessionOrAReplayRuns) {
    struct Case {
        bool connected, playing, refused;
    } cases[] = {
        {true, false, true}, {false, true, true}, {true, true, true}, {false, false, false}};
    for (const Case& c : cases) {
        StartedApp t(Stored{{"DataStyle", "2"}});
        t.start();
        t.loop.runFor(1500);
        t->Connected = c.connected;
        t->PlayingLog = c.playing;
        t.settings.clearSaveLog();
        bool closed = t->frmMain().requestClose();
        EXPECT_EQ(closed, !c.refused);
        EXPECT_EQ(t->frmMain().loaded(), c.refused);
        EXPECT_TRUE(t->AppClosing);
        EXPECT_EQ(t.savesOf("DataStyle"), std::vector<std::string>{"2"});
        EXPECT_TRUE(t.dialogs.shown().empty());
        if (!c.refused) {
            EXPECT_FALSE(t->Connected);
        }
    }
}

// A port that can be opened, and remembers every close it was given.
struct FakePort : NullSerialPort {
    bool isOpen = false;
    int closes = 0;
    bool portOpen() const override { return isOpen; }
    void setPortOpen(bool open) override {
        closes += !open;
        isOpen = open;
    }
};

struct FakePorts : SerialPortFactory {
    std::map<std::string, FakePort*> byName;
    std::unique_ptr<SerialPort> create(const std::string& name) override {
        auto p = std::make_unique<FakePort>();
        byName[name] = p.get();
        return p;
    }
};

TEST(Shutdown, ClosesTheScanningPortsAndAnswersTheKLinePortWithMSComm) {
    struct Case {
        bool main, br3, kesh;       // open before the close
        int mainCloses, br3Closes;  // closes each got
        bool keshOpenAfter;
    } cases[] = {
        {true, true, false, 1, 1, false},
        {false, false, true, 1, 0, true},
        {true, false, true, 2, 0, true},
        {false, false, false, 0, 0, false},
    };
    for (const Case& c : cases) {
        FakePorts ports;
        StartedApp t({}, &ports);
        t.start();
        FrmMain& m = t->frmMain();
        if (c.main) m.MSComm->setPortOpen(true);
        if (c.br3) m.BR3MSComm->setPortOpen(true);
        if (c.kesh) m.KeshMSComm->setPortOpen(true);
        EXPECT_TRUE(m.requestClose());
        EXPECT_EQ(ports.byName["MSComm"]->closes, c.mainCloses);
        EXPECT_EQ(ports.byName["BR3MSComm"]->closes, c.br3Closes);
        EXPECT_EQ(ports.byName["KeshMSComm"]->closes, 0);
        EXPECT_EQ(m.KeshMSComm->portOpen(), c.keshOpenAfter);
        EXPECT_FALSE(m.MSComm->portOpen());
    }
}

TEST(Shutdown, UnloadTakesTheOtherScreensDownInTheirOrderSkippingThoseNotMade) {
    StartedApp t;
    std::vector<std::string> order;
    for (const char* name : kShutdownOrder) {
        std::string n = name;
        if (!t->screenByName(n)) t->addScreen(std::make_unique<Screen>(t.loop, n, n));
        Screen* s = t->screenByName(n);
        s->onUnload = [&order, n] { order.push_back(n); };
    }
    // The auto-detect screen's load holds the menus off, Exit among them.
    t->screenByName("frmAutoDetect")->onLoad = nullptr;
    t.start();
    // Several screens close the large display as they open: it opens last.
    Screen* large = t->screenByName("frmRealDisplay");
    for (Screen* s : t->screens())
        if (s != &t->frmMain() && s != large) s->load();
    large->load();
    t->Connected = false;
    t->frmMain().mnuFileExit.click();
    EXPECT_FALSE(t->frmMain().loaded());
    std::vector<std::string> expected;
    for (const char* name : kShutdownOrder)
        expected.push_back(name);
    EXPECT_EQ(order, expected);
    for (const std::string& n : expected)
        EXPECT_FALSE(t->screenByName(n)->loaded()) << n;
}

TEST(MainMenus, StatusBarAndToolbarEntriesToggleTheirBarAndCheckMark) {
    StartedApp t;
    t.start();
    FrmMain& m = t->frmMain();
    struct Case {
        MenuItem* entry;
        Field* bar;
    } cases[] = {{&m.mnuOptionStatusBar, &m.StatusBar1}, {&m.mnuOptionToolbar, &m.Toolbar1}};
    for (const Case& c : cases) {
        EXPECT_TRUE(c.entry->checked());
        c.entry->click();
        EXPECT_FALSE(c.entry->checked());
        EXPECT_FALSE(c.bar->visible());
        c.entry->click();
        EXPECT_TRUE(c.entry->checked());
        EXPECT_TRUE(c.bar->visible());
    }
}

}  // namespace
}  // namespace ketrel
