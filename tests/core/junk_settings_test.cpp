// A settings file that holds junk: the program still starts, takes the defaults where a value
// is unusable, and keeps every other setting, also across the rewrite of its first saves.
#include <gtest/gtest.h>

#include "core/application.h"
#include "core/startup.h"
#include "platform/ini_settings_store.h"
#include "support/test_app.h"

namespace ketrel::test {
namespace {

// The application started from a real INI file holding `text`.
struct IniStartedApp {
    explicit IniStartedApp(const std::string& text) {
        WriteFile(ini.fileFor(kAppName), text);
        InstallApplication(app);
        StartApplication(app);
    }
    TestApp t;
    std::vector<std::string> warnings;
    IniSettingsStore ini{t.dir.path() / "config",
                         [this](const std::string& w) { warnings.push_back(w); }};
    App app{Platform{t.loop, t.dialogs, ini, t.launcher, t.display, t.nullPorts, t.dir.path()}};
};

std::string Binary(std::size_t n) {
    std::string s;
    for (std::size_t i = 0; i < n; ++i)
        s += char((i * 151 + 7) % 256);  // every byte value, NUL and ']' and '=' among them
    return s;
}

TEST(JunkSettings, StartsWithDefaultsForUnusableValuesAndKeepsTheRest) {
    struct Case {
        const char* name;
        std::string file;
        const char *temp, *speed, *pressure, *port;
        long timeOut, keshStart;
        const char* delay;
    };
    const std::string kept = "ConnectPort=3\nOBDIIHardware=KESH PROTOCOL CONVERTER\n";
    const Case cases[] = {
        {"binary garbage only", Binary(5000), "F", "MPH", "PSI", "", 10000, 1, "180"},
        {"garbage around the section, numbers out of range",
         Binary(700) + "\n[Settings]\r\n" + kept + "TimeOut=99999999999999999999999\r\n" +
             "BR3Delay=-7\nKESH Start=1e400\nTemp=C\n" + Binary(300) + "\n",
         "C", "MPH", "PSI", "3", 10000, 1, "180"},
        {"an overlong line between good ones",
         "[Settings]\n" + kept + "Junk=" + std::string(3'000'000, '9') + "\nSpeed=KPH\n" +
             "TimeOut=" + std::string(400, '1') + "\nBR3Delay=250\n",
         "F", "KPH", "PSI", "3", 10000, 1, "250"},
        {"no section Settings", "[Other]\nTemp=C\n" + kept, "F", "MPH", "PSI", "", 10000, 1, "180"},
        {"keys repeated, within a section and in a second head of it",
         "[Settings]\n" + kept + "Temp=F\nTemp=C\nPressure=PSI\nKESH Start=2\n[Settings]\n" +
             "Pressure=kPa\nTimeOut=15000\nKESH Start=7\n",
         "C", "MPH", "kPa", "3", 15000, 1, "180"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        IniStartedApp s(c.file);
        App& app = s.app;
        EXPECT_EQ(app.Temp, c.temp);
        EXPECT_EQ(app.Speed, c.speed);
        EXPECT_EQ(app.Pressure, c.pressure);
        EXPECT_EQ(app.ConnectPort, c.port);
        EXPECT_EQ(app.TimeOut, c.timeOut);
        EXPECT_EQ(app.KeshStart, c.keshStart);
        EXPECT_EQ(app.BR3Delay, c.delay);
        EXPECT_EQ(app.frmMain().BR3Delay.interval(), std::stoi(c.delay));
        EXPECT_TRUE(s.t.dialogs.shown().empty());
        EXPECT_TRUE(s.warnings.empty());
        // What start-up wrote back reads the same in a fresh store.
        IniSettingsStore again(s.t.dir.path() / "config");
        EXPECT_EQ(again.get(kAppName, kSection, "Temp"), c.temp);
        EXPECT_EQ(again.get(kAppName, kSection, "ConnectPort"), c.port);
        EXPECT_EQ(again.get(kAppName, kSection, "TimeOut"), std::to_string(c.timeOut));
    }
}

}  // namespace
}  // namespace ketrel::test
