#include <gtest/gtest.h>

#include "platform/ini_settings_store.h"
#include "platform/overlay_settings_store.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

using test::ReadFile;
using test::WriteFile;

TEST(IniSettingsStore, WritesKeysAndValuesAsWrittenAndReadsThemBack) {
    test::TempDir dir;
    {
        IniSettingsStore store(dir.path());
        store.save("Ketrel", "Settings", "KESH Start", "4");
        store.save("Ketrel", "Settings", "Log File", "True");
        store.save("Ketrel", "Settings", "AppPath", "/opt/my apps, v2/ketrel");
        store.save("Ketrel", "Settings", "KESH Start", "2");
        store.save("Ketrel", "Settings", "Note", "two\nlines");
    }
    auto path = dir.path() / "Ketrel" / "Ketrel.ini";
    EXPECT_EQ(ReadFile(path),
              "[Settings]\nKESH Start=2\nLog File=True\nAppPath=/opt/my apps, v2/ketrel\n"
              "Note=two lines\n");
    IniSettingsStore again(dir.path());
    EXPECT_EQ(again.get("Ketrel", "Settings", "KESH Start"), "2");
    EXPECT_EQ(again.get("Ketrel", "Settings", "AppPath"), "/opt/my apps, v2/ketrel");
    EXPECT_EQ(again.get("Ketrel", "Settings", "Missing", "dflt"), "dflt");
    EXPECT_FALSE(again.contains("Ketrel", "Settings", "Missing"));
    EXPECT_FALSE(std::filesystem::exists(path.string() + ".new"));
}

TEST(IniSettingsStore, HandEditedAndDamagedFilesReadWhatCanBeRead) {
    struct Case {
        const char* text;
        const char* key;
        const char* expected;  // nullptr: missing
    } cases[] = {
        {"[Settings]\n  TimeOut = 15000  \r\n", "TimeOut", "15000"},
        {"[settings]\ntimeout=12000\n", "TimeOut", "12000"},
        {"; comment\n[Settings]\n# other\nTimeOut=1\nTimeOut=2\n", "TimeOut", "2"},
        {"TimeOut=11000\n[Settings]\n", "TimeOut", nullptr},
        {"[Settings]\nAppPath=a=b\n", "AppPath", "a=b"},
        {"[Settings]\n\x01\xff\xfe garbage\n=novalue\nTemp=C\n", "Temp", "C"},
        {"", "Temp", nullptr},
    };
    for (const Case& c : cases) {
        test::TempDir dir;
        WriteFile(dir.path() / "Ketrel" / "Ketrel.ini", c.text);
        IniSettingsStore store(dir.path());
        std::string got = store.get("Ketrel", "Settings", c.key, "<none>");
        EXPECT_EQ(got, c.expected ? c.expected : "<none>") << c.text;
        store.save("Ketrel", "Settings", "Temp", "F");  // rewriting never fails on junk
        EXPECT_EQ(IniSettingsStore(dir.path()).get("Ketrel", "Settings", "Temp"), "F");
    }
}

TEST(IniSettingsStore, AnUnwritableFolderIsReportedOnceAndValuesLiveInMemory) {
    test::TempDir dir;
    auto blocker = dir.path() / "blocked";
    WriteFile(blocker, "a file where the folder should be");
    std::vector<std::string> warnings;
    IniSettingsStore store(blocker, [&](const std::string& w) { warnings.push_back(w); });
    store.save("Ketrel", "Settings", "Temp", "C");
    store.save("Ketrel", "Settings", "Speed", "KPH");
    EXPECT_EQ(store.get("Ketrel", "Settings", "Temp"), "C");
    ASSERT_EQ(warnings.size(), 1u);
    EXPECT_NE(warnings[0].find("Ketrel.ini"), std::string::npos);
}

TEST(OverlaySettingsStore, ReadsThroughKeepsSavesInMemoryAndNeverWritesTheFile) {
    test::TempDir dir;
    const std::string file = "[Settings]\nConnectPort=3\nTemp=C\n[Ports]\n3=/dev/ttyUSB0\n";
    WriteFile(dir.path() / "Ketrel" / "Ketrel.ini", file);
    IniSettingsStore ini(dir.path());
    OverlaySettingsStore store(ini);
    store.save("Ketrel", "Settings", "connectport", "1");
    store.save("Ketrel", "Ports", "1", "/tmp/car");
    store.save("Ketrel", "Settings", "Speed", "KPH");

    struct Case {
        const char *section, *key, *def, *expected;
        bool contained;
    };
    const Case cases[] = {
        {"Settings", "ConnectPort", "", "1", true},       // a save hides the file's value
        {"Settings", "CONNECTPORT", "", "1", true},       // found in any case
        {"Settings", "Temp", "F", "C", true},             // the file's value shows through
        {"Ports", "3", "", "/dev/ttyUSB0", true},         // in another section too
        {"Ports", "1", "", "/tmp/car", true},             // a key the file lacks
        {"Settings", "Speed", "MPH", "KPH", true},        // likewise
        {"Settings", "Pressure", "PSI", "PSI", false},    // neither: the default
        {"Other", "ConnectPort", "none", "none", false},  // a save is for its section only
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.section) + "/" + c.key);
        EXPECT_EQ(store.get("Ketrel", c.section, c.key, c.def), c.expected);
        EXPECT_EQ(store.contains("Ketrel", c.section, c.key), c.contained);
    }
    EXPECT_EQ(ReadFile(dir.path() / "Ketrel" / "Ketrel.ini"), file);
    EXPECT_EQ(IniSettingsStore(dir.path()).get("Ketrel", "Settings", "ConnectPort"), "3");
}

}  // namespace
}  // namespace ketrel
