// The auto-detect sweep of the desktop program over real Qt serial ports, against ketrel-sim on
// a pseudo-terminal mapped to one port number while the others map to missing devices. Real
// time: a few seconds per case.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <string>

#include "link/auto_detect.h"
#include "link/port_map.h"
#include "platform/ini_settings_store.h"
#include "qt/qt_fixture.h"
#include "screens/frm_auto_detect.h"
#include "system/child_process.h"

namespace ketrel {
namespace {

struct Case {
    const char* converter;
    const char* vehicle;
    int port;
    const char* found;
};

TEST(AutoDetectPorts, FindsTheSimulatedConverterOnItsPortAndSavesIt) {
    const Case cases[] = {
        {"dorvane", "idle_then_drive.vehicle", 3, "DORVANE PROTOCOL CONVERTER FOUND"},
        {"br3", "pwm.vehicle", 2, "BR3 PROTOCOL CONVERTER FOUND"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.converter);
        // Stopped by its destructor, whichever assertion ends the case.
        test::ChildProcess sim(KETREL_SIM_BINARY,
                               {"--converter", c.converter, "--vehicle",
                                std::string(KETREL_DATA_DIR) + "/sim/" + c.vehicle});
        std::string pty = sim.firstLine();
        ASSERT_EQ(pty.rfind("/dev/pts/", 0), 0u) << pty << sim.errors();

        test::EnsureQApp();
        test::TempDir dir;
        IniSettingsStore settings(dir.path() / "config");
        for (int n = 1; n <= 4; ++n)
            SavePortDevicePath(settings, n,
                               n == c.port ? pty : (dir.path() / "missing-tty").string());
        ScriptedDialogs dialogs;
        for (int i = 0; i < 3; ++i)
            dialogs.answerNext(MsgAnswer::Cancel);  // a failed sweep ends instead of retrying
        DesktopOptions o;
        o.appPath = dir.path();
        o.configRoot = dir.path() / "config";
        o.dialogs = &dialogs;
        o.settings = &settings;
        DesktopApp desktop(o);
        App& app = desktop.app();
        FrmAutoDetect& d = *AutoDetectScreen(app);

        QElapsedTimer clock;
        clock.start();
        d.show();  // the text-converter sweep runs inside
        bool found = test::WaitFor([&] { return d.cmdConnectAD.visible(); },
                                   8000 - static_cast<int>(clock.elapsed()));
        ASSERT_TRUE(found) << d.Label1[0].text() << " after " << clock.elapsed() << " ms, "
                           << dialogs.shown().size() << " questions";
        EXPECT_EQ(d.Label1[0].text(), c.found);
        EXPECT_TRUE(dialogs.shown().empty());

        // What the program finds on its next start.
        IniSettingsStore reread(dir.path() / "config");
        EXPECT_EQ(reread.get(kAppName, kSection, "ConnectPort"), std::to_string(c.port));
        EXPECT_EQ(reread.get(kAppName, kSection, "OBDIIHardware"),
                  std::string(c.found).substr(0, std::string(c.found).size() - 6));
        d.unload();
    }
}

}  // namespace
}  // namespace ketrel
