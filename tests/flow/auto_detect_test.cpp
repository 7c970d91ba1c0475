#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "core/settings_screen.h"
#include "link/auto_detect.h"
#include "screens/frm_auto_detect.h"
#include "sim/sim_serial_port.h"
#include "sim/sim_wire.h"
#include "support/test_app.h"

namespace ketrel::test {
namespace {

// The application with the auto-detect screen on virtual time, and on one of the simulated
// ports 1 to 4 a device that sends its chunks 50 ms apart once opened and answers each 0x20.
struct DetectRig : sim::SimDevice {
    explicit DetectRig(int port) : t(&ports), wire(t.loop.scheduler(), *this) {
        t->addScreen(std::make_unique<FrmAutoDetect>(t.loop, ports));
        InstallAutoDetect(*t);
        ports.plug(port, wire);
        d().ProgrammerStatus.onChange = [this] { statuses.push_back(d().ProgrammerStatus.text()); };
    }
    void onHostOpen() override {
        for (std::size_t i = 0; i < chunks.size(); ++i)
            link().after(50'000 * (i + 1), [this, c = chunks[i]] { link().send(c); });
    }
    void onByte(unsigned char byte) override {
        if (byte == 0x20 && !probeReply.empty()) link().send(probeReply);
    }
    FrmAutoDetect& d() { return *AutoDetectScreen(*t); }

    sim::SimSerialPortFactory ports;
    TestApp t;
    sim::SimWire wire;
    std::vector<std::string> chunks, statuses;
    std::string probeReply;
};

TEST(AutoDetect, TheVersionAnswerIsGatheredAndStatusChunksAreDroppedWhole) {
    const struct {
        std::vector<std::string> chunks;
        bool found;
    } cases[] = {
        {{"V1.23"}, true},       {{"V1", ".2"}, true},
        {{"P", "V1.23"}, true},  {{"T", "V1.23"}, true},
        {{"I", "V1.23"}, true},  {{"PV1.23"}, false},
        {{"x", "V1.23"}, false}, {{"V1."}, false},
        {{"S"}, false},  // a sync with nothing behind
    };
    const std::vector<std::string> swept{"1.1", "1.2", "1.3", "1.4", "2.1"};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.chunks.front());
        DetectRig r(2);
        r.chunks = c.chunks;
        InstallSettingsScreen(*r.t);
        r.t->frmSettings().load();
        r.t->frmSettings().cmdAutoDetect.click();  // returns when the text sweep has ended
        EXPECT_FALSE(r.t->frmSettings().loaded());
        EXPECT_EQ(r.t->OBDIIHardware == kDorvane, c.found);
        EXPECT_EQ(r.statuses, c.found ? std::vector<std::string>({"1.1", "1.2"}) : swept);
        // Each port without an answer is given 500 ms.
        EXPECT_NEAR(r.t.loop.clock().nowMicros() / 1000, c.found ? 600 : 2100, 150);
    }
}

TEST(AutoDetect, AProbeAnswerNotEndingInFFIsNoConverterAndRetriesEndInTooMany) {
    DetectRig r(3);
    r.probeReply = std::string("\xFF\x01", 2);
    std::vector<std::string> labels;
    r.t.dialogs.onShow = [&](const MessageBox&) { labels.push_back(r.d().Label1[0].text()); };
    for (MsgAnswer a : {MsgAnswer::Retry, MsgAnswer::Retry, MsgAnswer::Retry, MsgAnswer::Cancel})
        r.t.dialogs.answerNext(a);
    r.d().show();
    r.t.loop.runFor(60000);

    const std::string none = "No Communication Or Interface Device Found";
    const std::string tooMany = "Too Many Unsuccessful Attempts!";
    EXPECT_EQ(r.t.dialogs.titles(), (std::vector<std::string>{none, none, none, tooMany}));
    EXPECT_EQ(labels, std::vector<std::string>(4, "Detection Failed"));
    EXPECT_EQ(r.t.dialogs.shown().front().icon, MsgIcon::Stop);
    EXPECT_EQ(r.t.dialogs.shown().back().icon, MsgIcon::Exclamation);
    EXPECT_FALSE(r.d().loaded());                                             // Cancel closed it
    EXPECT_EQ(r.t.settings.get(kAppName, kSection, "ConnectPort", "?"), "");  // none left saved

    // Cancel closed the screen; the count of retries outlives it: the next failed sweep is
    // "too many" at once.
    r.t.dialogs.clear();
    r.t.dialogs.answerNext(MsgAnswer::Cancel);
    r.d().show();
    r.t.loop.runFor(10000);
    EXPECT_EQ(r.t.dialogs.titles(), std::vector<std::string>{tooMany});
}

TEST(AutoDetect, ClosingDuringTheSweepAsksWhetherToAbort) {
    for (MsgAnswer answer : {MsgAnswer::No, MsgAnswer::Yes}) {
        DetectRig r(2);  // a silent device: its port stays open through the wait
        bool closed = false;
        r.t.loop.scheduler().postAt(600'000, [&] {
            r.t.dialogs.answerNext(answer);
            closed = r.d().requestClose();
        });
        r.d().show();
        ASSERT_EQ(r.t.dialogs.titles(), std::vector<std::string>{"Detection Still In Progress!"});
        EXPECT_EQ(closed, answer == MsgAnswer::Yes);
        // No: the sweep went on to the count-byte probe; Yes: it stopped on port 2.
        EXPECT_EQ(r.statuses.back(), closed ? "1.2" : "2.1");
        EXPECT_FALSE(r.d().MSComm2->portOpen());
        // The main window's menus are held off while the screen is up.
        EXPECT_EQ(r.t->frmMain().mnuOption.enabled(), closed);
    }
}

}  // namespace
}  // namespace ketrel::test
