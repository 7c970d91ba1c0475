#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "platform/ini_settings_store.h"
#include "platform/overlay_settings_store.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

std::string readFile(const std::filesystem::path& p) {
    std::ifstream in(p, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

TEST(OverlaySettingsStore, ReadsThroughKeepsSavesInMemoryAndNeverWritesTheFile) {
    test::TempDir dir;
    const std::string file = "[Settings]\nConnectPort=3\nTemp=C\n[Ports]\n3=/dev/ttyUSB0\n";
    std::filesystem::create_directories(dir.path() / "Ketrel");
    std::ofstream(dir.path() / "Ketrel" / "Ketrel.ini", std::ios::binary) << file;
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
    EXPECT_EQ(readFile(dir.path() / "Ketrel" / "Ketrel.ini"), file);
    EXPECT_EQ(IniSettingsStore(dir.path()).get("Ketrel", "Settings", "ConnectPort"), "3");
}

}  // namespace
}  // namespace ketrel
