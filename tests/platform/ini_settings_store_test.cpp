#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "platform/ini_settings_store.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

std::string readFile(const std::filesystem::path& p) {
    std::ifstream in(p, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

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
    EXPECT_EQ(readFile(path),
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
        {"[Other]\nTimeOut=11000\n", "TimeOut", nullptr},
        {"[Settings]\nAppPath=a=b\n", "AppPath", "a=b"},
        {"[Settings]\n\x01\xff\xfe garbage\n=novalue\nTemp=C\n", "Temp", "C"},
        {"\x89PNG\r\n\x1a\n\0\0\0", "Temp", nullptr},
        {"", "Temp", nullptr},
    };
    for (const Case& c : cases) {
        test::TempDir dir;
        std::filesystem::create_directories(dir.path() / "Ketrel");
        std::ofstream(dir.path() / "Ketrel" / "Ketrel.ini", std::ios::binary) << c.text;
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
    std::ofstream(blocker) << "a file where the folder should be";
    std::vector<std::string> warnings;
    IniSettingsStore store(blocker, [&](const std::string& w) { warnings.push_back(w); });
    store.save("Ketrel", "Settings", "Temp", "C");
    store.save("Ketrel", "Settings", "Speed", "KPH");
    EXPECT_EQ(store.get("Ketrel", "Settings", "Temp"), "C");
    ASSERT_EQ(warnings.size(), 1u);
    EXPECT_NE(warnings[0].find("Ketrel.ini"), std::string::npos);
}

}  // namespace
}  // namespace ketrel
