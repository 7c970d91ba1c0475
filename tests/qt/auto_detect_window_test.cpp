#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <utility>

#include "link/auto_detect.h"
#include "qt_fixture.h"
#include "screens/frm_auto_detect.h"

namespace ketrel {
namespace {

// A port on which a text converter on port 2 answers the firmware request.
class FirmwarePort : public NullSerialPort {
  public:
    explicit FirmwarePort(Scheduler*& sched) : sched_(sched) {}
    bool portOpen() const override { return open_; }
    void setPortOpen(bool open) override { open_ = open; }
    std::string input() override { return std::exchange(rx_, {}); }
    int commEvent() const override { return kCommEventReceive; }
    void output(std::string_view bytes) override {
        if (!open_ || commPort() != 2 || bytes != "900504") return;
        sched_->post([this] {
            rx_ = "V1.23";
            fireOnComm();
        });
    }

  private:
    Scheduler*& sched_;
    bool open_ = false;
    std::string rx_;
};

struct FirmwarePorts : SerialPortFactory {
    std::unique_ptr<SerialPort> create(const std::string&) override {
        return std::make_unique<FirmwarePort>(sched);
    }
    Scheduler* sched = nullptr;
};

TEST(AutoDetectWindow, ShowsTheSweepWithItsDebugBufferThenTheFindAndConnect) {
    FirmwarePorts ports;
    test::GuiApp g(&ports);
    ports.sched = &g.desktop->loop().scheduler();
    int connects = 0;
    g.app().hooks.Connect = [&] { connects++; };
    g.app().DetectPanelEnabled = true;
    FrmAutoDetect& d = *AutoDetectScreen(g.app());
    QWidget* window = nullptr;
    auto w = [&](const char* name) {
        window = g.desktop->windows().windowOf("frmAutoDetect");
        QWidget* found = window ? window->findChild<QWidget*>(name) : nullptr;
        EXPECT_NE(found, nullptr) << name;
        return found;
    };
    auto text = [&](const char* name) { return static_cast<QLabel*>(w(name))->text(); };
    bool checked = false;
    // Half way through port 1 of the sweep, which runs inside show().
    QTimer::singleShot(250, [&] {
        EXPECT_EQ(text("Label1(0)"), "Please Wait Detection In Progress...");
        EXPECT_EQ(text("ProgrammerStatus"), "1.1");
        EXPECT_TRUE(w("txtBuffer")->isVisible());
        EXPECT_FALSE(w("cmdConnectAD")->isVisible());
        test::Screenshot(window, "auto_detect_sweep");
        checked = true;
    });
    d.show();
    QApplication::processEvents();
    EXPECT_TRUE(checked);
    EXPECT_EQ(text("Label1(0)"), "DORVANE PROTOCOL CONVERTER FOUND");
    EXPECT_EQ(text("ProgrammerStatus"), "1.2");
    auto* connect = static_cast<QPushButton*>(w("cmdConnectAD"));
    EXPECT_TRUE(connect->isVisible());
    test::Screenshot(window, "auto_detect_found");
    connect->click();
    QApplication::processEvents();
    EXPECT_EQ(connects, 1);
    EXPECT_FALSE(d.loaded());
}

}  // namespace
}  // namespace ketrel
