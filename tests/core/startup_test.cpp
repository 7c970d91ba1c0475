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
    EXPECT_EQ(s.sldBR3Speed.value(), 180);
    EXPECT_EQ(s.cmbPort.text(), "-SELECT-");
    EXPECT_EQ(s.cmbInterface.text(), "-SELECT-");
}

TEST(Startup, TimeOutFallsBackOutsideItsLimitsAndIsRoundedToWholeSeconds) {
    struct Case {
        const char* stored;  // nullptr: no key
        long expected;
        std::vector<std::string> saved;
    } cases[] = {
        {"29000", 29000, {}},        {"29001", 10000, {"10000"}}, {"12345", 12000, {"12000"}},
        {"15500", 15000, {"15000"}}, {"10000", 10000, {}},        {"9999", 10000, {"10000"}},
        {"10001", 10000, {"10000"}}, {"28999", 28000, {"28000"}}, {"abc", 10000, {"10000"}},
        {nullptr, 10000, {"10000"}}, {"20000.4", 20000, {}},      {"-15000", 10000, {"10000"}},
    };
    for (const Case& c : cases) {
        std::map<std::string, std::string> stored;
        if (c.stored) stored["TimeOut"] = c.stored;
        StartedApp t(stored);
        t.start();
        SCOPED_TRACE(c.stored ? c.stored : "(missing)");
        EXPECT_EQ(t->TimeOut, c.expected);
        EXPECT_EQ(t.savesOf("TimeOut"), c.saved);
        EXPECT_EQ(t->frmMain().TimeOutConnect.interval(), c.expected);
        EXPECT_EQ(t->frmSettings().cmbTimedOut.text(), std::to_string(c.expected / 1000));
    }
}

TEST(Startup, RequestDelayKeepsTo125Through500AndIsNotSaved) {
    struct Case {
        const char* stored;
        const char* expected;
        int interval;
    } cases[] = {
        {"124", "180", 180}, {"125", "125", 125}, {"500", "500", 500}, {"501", "180", 180},
        {"300", "300", 300}, {"abc", "180", 180}, {"", "180", 180},    {nullptr, "180", 180},
    };
    for (const Case& c : cases) {
        std::map<std::string, std::string> stored;
        if (c.stored) stored["BR3Delay"] = c.stored;
        StartedApp t(stored);
        t.start();
        SCOPED_TRACE(c.stored ? c.stored : "(missing)");
        EXPECT_EQ(t->BR3Delay, c.expected);
        EXPECT_EQ(t->frmMain().BR3Delay.interval(), c.interval);
        EXPECT_EQ(t->frmMain().KeshDelay.interval(), c.interval);
        EXPECT_TRUE(t.savesOf("BR3Delay").empty());
    }
}

TEST(Startup, ProtocolChoicesOutsideTheirRangeActAsTheFirstWhileTheStoreKeepsThem) {
    struct Case {
        const char* kesh;
        const char* br3;
        int keshExpected, br3Expected;
    } cases[] = {
        {"4", "6", 1, 1},  {"3", "5", 3, 5},   {"0", "0", 1, 1},
        {"abc", "", 1, 1}, {"2", "2.4", 2, 2}, {"-1", "1", 1, 1},
    };
    for (const Case& c : cases) {
        StartedApp t(Stored{{"KESH Start", c.kesh}, {"BR3 Start", c.br3}});
        t.start();
        SCOPED_TRACE(std::string(c.kesh) + "/" + c.br3);
        EXPECT_EQ(t->KeshStart, c.keshExpected);
        EXPECT_EQ(t->BR3Start, c.br3Expected);
        EXPECT_EQ(t.settings.get(kAppName, kSection, "KESH Start"), c.kesh);
        EXPECT_EQ(t.settings.get(kAppName, kSection, "BR3 Start"), c.br3);
    }
}

TEST(Startup, UnitsOutsideTheirTwoWordsFallBackAndAreSavedBack) {
    struct Case {
        const char *temp, *speed, *pressure;
        const char *t, *s, *p;
    } cases[] = {
        {"C", "KPH", "kPa", "C", "KPH", "kPa"},
        {"c", "kph", "KPA", "F", "MPH", "PSI"},
        {"", "", "", "F", "MPH", "PSI"},
        {"Kelvin", "MPH", "bar", "F", "MPH", "PSI"},
    };
    for (const Case& c : cases) {
        StartedApp t(Stored{{"Temp", c.temp}, {"Speed", c.speed}, {"Pressure", c.pressure}});
        t.start();
        EXPECT_EQ(t->Temp, c.t);
        EXPECT_EQ(t->Speed, c.s);
        EXPECT_EQ(t->Pressure, c.p);
        EXPECT_EQ(t.savesOf("Temp"), std::vector<std::string>{c.t});
        EXPECT_EQ(t.savesOf("Speed"), std::vector<std::string>{c.s});
        EXPECT_EQ(t.savesOf("Pressure"), std::vector<std::string>{c.p});
        EXPECT_EQ(t->frmSettings().optCelcius.value(), std::string(c.t) == "C");
        EXPECT_EQ(t->frmSettings().optKilometers.value(), std::string(c.s) == "KPH");
        EXPECT_EQ(t->frmSettings().optKPA.value(), std::string(c.p) == "kPa");
    }
}

TEST(Startup, DataStyleRunsTheHandlerOfItsMenuEntry) {
    struct Case {
        const char* stored;
        const char* expected;
        const char* handler;
    } cases[] = {
        {"", "1", "default"},  {"0", "1", "default"},     {"abc", "1", "default"},
        {"1", "1", "default"}, {"2", "2", "grid"},        {"3", "3", "default"},
        {"5", "5", ""},        {nullptr, "1", "default"},
    };
    for (const Case& c : cases) {
        std::map<std::string, std::string> stored;
        if (c.stored) stored["DataStyle"] = c.stored;
        StartedApp t(stored);
        std::string ran;
        t->frmMain().mnuViewDefault.onClick = [&] { ran += "default"; };
        t->frmMain().mnuViewStyleGrid.onClick = [&] { ran += "grid"; };
        t.start();
        SCOPED_TRACE(c.stored ? c.stored : "(missing)");
        EXPECT_EQ(t->DataStyle, c.expected);
        EXPECT_EQ(ran, c.handler);
    }
}

TEST(Startup, BooleansThatDoNotConvertKeepTheirValue) {
    struct Case {
        const char* logFile;  // nullptr: no key
        const char* displaySet;
        const char* setDelay;
        bool log, display, delay;
    } cases[] = {
        {nullptr, nullptr, nullptr, true, false, false},
        {"False", "True", "True", false, true, true},
        {"junk", "yes", "#", false, false, false},
        {"0", "1", "-1", false, true, true},
        {"TRUE", "false", "", true, false, false},
    };
    for (const Case& c : cases) {
        std::map<std::string, std::string> stored;
        if (c.logFile) stored["Log File"] = c.logFile;
        if (c.displaySet) stored["DisplaySet"] = c.displaySet;
        if (c.setDelay) stored["BR3SetDelay"] = c.setDelay;
        StartedApp t(stored);
        t.display.mode = DisplayMode{1280, 1024, 32, 60};
        t.start();
        EXPECT_EQ(t->ConnectLogEnabled, c.log);
        EXPECT_EQ(t->DisplaySet, c.display);
        EXPECT_EQ(t->BR3SetDelay, c.delay);
        EXPECT_EQ(t->frmSettings().chConLog.value(), c.log);
        EXPECT_EQ(t->frmSettings().chkSetDelay.value(), c.delay);
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
