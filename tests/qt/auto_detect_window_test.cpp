#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include "link/auto_detect.h"
#include "qt_fixture.h"
#include "screens/frm_auto_detect.h"

namespace ketrel {
namespace {

// Ports on which a text converter on port 2 answers the firmware request.
struct FirmwarePort : NullSerialPort {
    bool portOpen() const override { return open; }
    void setPortOpen(bool o) override { open = o; }
    int commEvent() const override { return kCommEventReceive; }
    std::string input() override { return "V1.23"; }
    void output(std::string_view bytes) override {
        if (open && commPort() == 2 && bytes == "900504")
            QTimer::singleShot(0, [this] { fireOnComm(); });
    }
    bool open = false;
};

struct FirmwarePorts : SerialPortFactory {
    std::unique_ptr<SerialPort> create(const std::string&) override {
        return std::make_unique<FirmwarePort>();
    }
};

TEST(AutoDetectWindow, ShowsTheSweepWithItsDebugBufferThenTheFindAndConnect) {
    FirmwarePorts ports;
    test::GuiApp g(&ports);
    int connects = 0;
    g.app().hooks.Connect = [&] { connects++; };
    g.app().DetectPanelEnabled = true;
    FrmAutoDetect& d = *AutoDetectScreen(g.app());
    auto w = [&](const char* name) { return g.find("frmAutoDetect", name); };
    auto text = [&](const char* name) { return static_cast<QLabel*>(w(name))->text(); };
    auto shot = [&](const char* file) {
        test::Screenshot(g.desktop->windows().windowOf("frmAutoDetect"), file);
    };
    bool checked = false;
    // Half way through port 1 of the sweep, which runs inside show().
    QTimer::singleShot(250, [&] {
        EXPECT_EQ(text("Label1(0)"), "Please Wait Detection In Progress...");
        EXPECT_EQ(text("ProgrammerStatus"), "1.1");
        EXPECT_TRUE(w("txtBuffer")->isVisible());
        EXPECT_FALSE(w("cmdConnectAD")->isVisible());
        shot("auto_detect_sweep");
        checked = true;
    });
    d.show();
    QApplication::processEvents();
    ASSERT_TRUE(checked);
    EXPECT_EQ(text("Label1(0)"), "DORVANE PROTOCOL CONVERTER FOUND");
    EXPECT_EQ(text("ProgrammerStatus"), "1.2");
    auto* connect = static_cast<QPushButton*>(w("cmdConnectAD"));
    ASSERT_TRUE(connect->isVisible());
    shot("auto_detect_found");
    // Connect leaves the screen without a question and starts the connect.
    connect->click();
    QApplication::processEvents();
    EXPECT_EQ(connects, 1);
    EXPECT_FALSE(d.loaded());
    EXPECT_TRUE(g.dialogs.shown().empty());
}

}  // namespace
}  // namespace ketrel
