#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include "link/auto_detect.h"
#include "qt_fixture.h"
#include "screens/frm_auto_detect.h"

namespace ketrel {
namespace {

using test::EnsureQApp;

// A port on which a text converter answers the firmware request, on port 1 only, when told to.
class FirmwarePort : public NullSerialPort {
  public:
    FirmwarePort(Scheduler*& sched, bool& answers) : sched_(sched), answers_(answers) {}
    bool portOpen() const override { return open_; }
    void setPortOpen(bool open) override { open_ = open; }
    std::string input() override { return std::exchange(rx_, {}); }
    int commEvent() const override { return kCommEventReceive; }
    void output(std::string_view bytes) override {
        if (!open_ || !answers_ || commPort() != 1 || bytes != "900504") return;
        sched_->post([this] {
            rx_ = "V1.23";
            fireOnComm();
        });
    }

  private:
    Scheduler*& sched_;
    bool& answers_;
    bool open_ = false;
    std::string rx_;
};

struct FirmwarePorts : SerialPortFactory {
    std::unique_ptr<SerialPort> create(const std::string&) override {
        return std::make_unique<FirmwarePort>(sched, answers);
    }
    Scheduler* sched = nullptr;
    bool answers = true;
};

// The desktop program with the auto-detect screen over those ports.
struct DetectGui {
    DetectGui() {
        EnsureQApp();
        DesktopOptions o;
        o.appPath = dir.path();
        o.configRoot = dir.path() / "config";
        o.dialogs = &dialogs;
        o.settings = &settings;
        o.ports = &ports;
        desktop = std::make_unique<DesktopApp>(o);
        ports.sched = &desktop->loop().scheduler();
        desktop->app().hooks.Connect = [this] { connects++; };
    }
    ~DetectGui() {
        desktop.reset();
        QApplication::processEvents();
    }
    FrmAutoDetect& d() { return *AutoDetectScreen(desktop->app()); }
    QWidget* window() { return desktop->windows().windowOf("frmAutoDetect"); }
    template <class W>
    W* w(const char* name) {
        W* found = window() ? window()->findChild<W*>(name) : nullptr;
        EXPECT_NE(found, nullptr) << name;
        return found;
    }

    test::TempDir dir;
    ScriptedDialogs dialogs;
    MemorySettingsStore settings;
    FirmwarePorts ports;
    std::unique_ptr<DesktopApp> desktop;
    int connects = 0;
};

TEST(AutoDetectWindow, ShowsTheFindAndItsConnectButton) {
    DetectGui g;
    g.d().show();
    QApplication::processEvents();
    ASSERT_NE(g.window(), nullptr);
    EXPECT_EQ(g.w<QLabel>("Label1(0)")->text(), "DORVANE PROTOCOL CONVERTER FOUND");
    EXPECT_EQ(g.w<QLabel>("ProgrammerStatus")->text(), "1.1");
    EXPECT_FALSE(g.w<QLineEdit>("txtBuffer")->isVisible());
    auto* connect = g.w<QPushButton>("cmdConnectAD");
    EXPECT_TRUE(connect->isVisible());
    test::Screenshot(g.window(), "auto_detect_found");
    connect->click();
    QApplication::processEvents();
    EXPECT_EQ(g.connects, 1);
    EXPECT_FALSE(g.d().loaded());
}

TEST(AutoDetectWindow, TheDebugViewShowsTheBufferAndClosingAsksFirst) {
    DetectGui g;
    g.ports.answers = false;
    g.desktop->app().DetectPanelEnabled = true;
    g.dialogs.answerNext(MsgAnswer::Yes);
    bool checked = false;
    // Half way through port 2 of the sweep, which runs inside show().
    QTimer::singleShot(650, [&] {
        EXPECT_EQ(g.w<QLabel>("Label1(0)")->text(), "Please Wait Detection In Progress...");
        EXPECT_EQ(g.w<QLabel>("ProgrammerStatus")->text(), "1.2");
        EXPECT_TRUE(g.w<QLineEdit>("txtBuffer")->isVisible());
        EXPECT_FALSE(g.w<QPushButton>("cmdConnectAD")->isVisible());
        test::Screenshot(g.window(), "auto_detect_sweep");
        g.window()->close();
        checked = true;
    });
    g.d().show();
    EXPECT_TRUE(checked);
    ASSERT_EQ(g.dialogs.shown().size(), 1u);
    EXPECT_EQ(g.dialogs.shown()[0].title, "Detection Still In Progress!");
    EXPECT_FALSE(g.d().loaded());
    QApplication::processEvents();
    EXPECT_EQ(g.window(), nullptr);
}

}  // namespace
}  // namespace ketrel
