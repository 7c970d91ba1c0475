#include <gtest/gtest.h>

#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <fstream>

#include "platform/ini_settings_store.h"
#include "qt/app_folder.h"
#include "qt_fixture.h"

namespace ketrel {
namespace {

TEST(QtEventLoop, RunsTimersInDeadlineOrderAndWaitsForThem) {
    test::EnsureQApp();
    QtEventLoop loop;
    std::string order;
    Timer late(loop.scheduler(), 60), early(loop.scheduler(), 20);
    late.setHandler([&] {
        late.stop();
        order += "L";
    });
    early.setHandler([&] {
        early.stop();
        order += "E";
    });
    late.start();
    early.start();
    std::int64_t started = loop.clock().nowMicros();
    while (order.size() < 2)
        loop.waitAndPump();
    EXPECT_EQ(order, "EL");
    EXPECT_GE(loop.clock().nowMicros() - started, 60'000);
    // sleep() lets time pass without running anything.
    Timer once(loop.scheduler(), 1);
    int fired = 0;
    once.setHandler([&] { ++fired; });
    once.start();
    loop.sleep(20);
    EXPECT_EQ(fired, 0);
    loop.pump();
    EXPECT_EQ(fired, 1);
}

TEST(QtEventLoop, TimersArmedFromQtEventsFireUnderQtsOwnLoop) {
    test::EnsureQApp();
    QtEventLoop loop;
    Timer t(loop.scheduler(), 30);
    bool fired = false;
    t.setHandler([&] {
        t.stop();
        fired = true;
    });
    QTimer::singleShot(0, [&] { t.start(); });  // armed from inside a Qt event
    EXPECT_TRUE(test::WaitFor([&] { return fired; }, 10000));
}

TEST(QtDialogs, MapsButtonsAndAnswersWithThePressedOne) {
    test::EnsureQApp();
    struct Case {
        MsgButtons buttons;
        QMessageBox::StandardButton press;
        MsgAnswer answer;
    } cases[] = {
        {MsgButtons::YesNo, QMessageBox::No, MsgAnswer::No},
        {MsgButtons::YesNo, QMessageBox::Yes, MsgAnswer::Yes},
        {MsgButtons::OkCancel, QMessageBox::Cancel, MsgAnswer::Cancel},
        {MsgButtons::Ok, QMessageBox::Ok, MsgAnswer::Ok},
        {MsgButtons::AbortRetryIgnore, QMessageBox::Ignore, MsgAnswer::Ignore},
    };
    for (const Case& c : cases) {
        QString title, text;
        QTimer::singleShot(0, [&] {
            for (QWidget* w : QApplication::topLevelWidgets()) {
                auto* box = qobject_cast<QMessageBox*>(w);
                if (!box || !box->isVisible()) continue;
                title = box->windowTitle();
                text = box->text();
                box->button(c.press)->click();
            }
        });
        QtDialogs dialogs;
        MsgAnswer a = dialogs.show(
            MessageBox{"Confirm", "Are You Sure?", c.buttons, MsgIcon::Question, true});
        EXPECT_EQ(a, c.answer);
        EXPECT_EQ(title, "Confirm");
        EXPECT_EQ(text, "Are You Sure?");
    }
}

TEST(QtDisplayInfo, ReportsTheCurrentModeOnlyAndRefusesChanges) {
    test::EnsureQApp();
    QtDisplayInfo display;
    auto mode = display.current();
    ASSERT_TRUE(mode.has_value());
    EXPECT_GT(mode->width, 0);
    EXPECT_GT(mode->depth, 0);
    ASSERT_EQ(display.modes().size(), 1u);
    EXPECT_EQ(display.modes()[0].width, mode->width);
    EXPECT_FALSE(display.change(*mode));
}

TEST(AppFolder, UsesTheProgramFolderWhenWritableElseASeededUserFolder) {
    test::TempDir dir;
    auto program = dir.path() / "bin";
    std::filesystem::create_directories(program / "System");
    std::ofstream(program / "System" / "Requirement.txt") << "installed";
    // The databases the build makes are installed under share/ketrel/System.
    std::filesystem::create_directories(dir.path() / "share" / "ketrel" / "System");
    std::ofstream(dir.path() / "share" / "ketrel" / "System" / "LogRecords.db") << "empty";
    auto user = dir.path() / "user" / "Ketrel";

    EXPECT_EQ(ResolveAppFolder(program, true, user), program);
    EXPECT_TRUE(std::filesystem::is_directory(program / "Log"));
    EXPECT_TRUE(std::filesystem::is_directory(program / "Help"));
    EXPECT_FALSE(std::filesystem::exists(user));

    std::filesystem::create_directories(user / "System");
    std::ofstream(user / "System" / "KetrelHistory.txt") << "mine";
    std::ofstream(user / "System" / "LogRecords.db") << "saved";
    EXPECT_EQ(ResolveAppFolder(program, false, user), user);
    EXPECT_TRUE(std::filesystem::exists(user / "System" / "Requirement.txt"));
    EXPECT_TRUE(std::filesystem::is_directory(user / "Log"));
    std::ifstream kept(user / "System" / "KetrelHistory.txt");
    std::string text;
    kept >> text;
    EXPECT_EQ(text, "mine");
    EXPECT_EQ(test::ReadFile(user / "System" / "LogRecords.db"), "saved");
    std::filesystem::remove(user / "System" / "LogRecords.db");
    ResolveAppFolder(program, false, user);
    EXPECT_EQ(test::ReadFile(user / "System" / "LogRecords.db"), "empty");
}

// A settings file of junk takes the defaults; a config folder that cannot be written is told
// on the error stream. Either way the program starts.
TEST(DesktopProgram, StartsWithAJunkSettingsFileAndWithAnUnwritableConfigFolder) {
    test::EnsureQApp();
    test::TempDir dir;
    for (const char* content : {"[Settings]\nTimeOut=abc\nKESH Start=\x01\x02\nTemp=Kelvin\n",
                                static_cast<const char*>(nullptr)}) {
        const auto root = dir.path() / (content ? "junk" : "file");
        if (content) {
            std::filesystem::create_directories(root / "Ketrel");
            std::ofstream(root / "Ketrel" / "Ketrel.ini") << content;
        } else {
            std::ofstream(root) << "not a folder";
        }
        ScriptedDialogs dialogs;
        DesktopOptions o;
        o.appPath = dir.path();
        o.configRoot = root;
        o.dialogs = &dialogs;
        testing::internal::CaptureStderr();
        {
            DesktopApp desktop(o);
            desktop.start();
            EXPECT_TRUE(desktop.app().frmMain().visible());
            EXPECT_EQ(desktop.app().TimeOut, 10000);
            EXPECT_EQ(desktop.app().Temp, "F");
            EXPECT_EQ(desktop.app().KeshStart, 1);
        }
        QApplication::processEvents();
        const std::string err = testing::internal::GetCapturedStderr();
        if (content) {
            EXPECT_EQ(IniSettingsStore(root).get("Ketrel", "Settings", "TimeOut"), "10000");
        } else {
            EXPECT_NE(err.find("cannot write the settings file"), std::string::npos) << err;
        }
    }
}

// The screens whose windows the other tests draw on a rig of their own: the program gives each
// its layout (a layout names its window after its screen; the generic window does not).
TEST(DesktopProgram, GivesEachScreenItsOwnLayout) {
    test::GuiApp g;
    g.startPastSplash();
    for (const char* name : {"frmMode5", "frmMode5Manuf", "frmMode6", "frmScope", "frmGuage",
                             "frmMultGuage", "frmRealDisplay", "frmMPG", "frmNewPids"}) {
        Screen* s = g.app().screenByName(name);
        ASSERT_NE(s, nullptr) << name;
        s->show();
        QApplication::processEvents();
        QWidget* w = g.desktop->windows().windowOf(name);
        EXPECT_TRUE(w && w->objectName() == name) << name;
        s->unload();
    }
}

}  // namespace
}  // namespace ketrel
