#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/settings_screen.h"
#include "link/auto_detect.h"
#include "screens/frm_auto_detect.h"
#include "sim/dorvane_converter.h"
#include "sim/sim_serial_port.h"
#include "sim/sim_wire.h"
#include "support/test_app.h"

namespace ketrel::test {
namespace {

// A device that sends fixed chunks after the port opens and answers each 0x20 with a reply.
class ScriptedDevice : public sim::SimDevice {
  public:
    std::vector<std::pair<int, std::string>> onOpen;  // (ms after opening, chunk)
    std::string probeReply;

    void onHostOpen() override {
        for (const auto& [ms, chunk] : onOpen)
            link().after(ms * 1000, [this, chunk] { link().send(chunk); });
    }
    void onByte(unsigned char byte) override {
        if (byte == 0x20 && !probeReply.empty()) link().send(probeReply);
    }
};

// The application with the auto-detect screen and simulated ports 1 to 4 (nothing plugged in
// until a test plugs a device), on virtual time.
struct DetectRig {
    DetectRig() : t(&ports) {
        app().addScreen(std::make_unique<FrmAutoDetect>(t.loop, ports));
        InstallAutoDetect(app());
        app().hooks.Connect = [this] { connects++; };
        d().ProgrammerStatus.onChange = [this] { statuses.push_back(d().ProgrammerStatus.text()); };
    }
    App& app() { return *t; }
    FrmAutoDetect& d() { return *AutoDetectScreen(app()); }
    void plug(int port, std::unique_ptr<sim::SimDevice> device) {
        wires.push_back(std::make_unique<sim::SimWire>(t.loop.scheduler(), *device));
        devices.push_back(std::move(device));
        ports.plug(port, *wires.back());
    }
    std::string saved(const std::string& key) {
        return t.settings.get(kAppName, kSection, key, "<none>");
    }
    std::vector<std::string> titles() const { return t.dialogs.titles(); }

    sim::SimSerialPortFactory ports;
    TestApp t;
    sim::SimVehicle vehicle = sim::SimVehicle::Default();
    std::vector<std::unique_ptr<sim::SimDevice>> devices;
    std::vector<std::unique_ptr<sim::SimWire>> wires;
    std::vector<std::string> statuses;
    int connects = 0;
};

TEST(AutoDetect, TextConverterOnPort2IsFoundFromTheSettingsButtonAndSaved) {
    DetectRig r;
    App& app = r.app();
    r.plug(2, std::make_unique<sim::DorvaneConverter>(r.vehicle));
    app.ConnectPort = "3";
    app.OBDIIHardware = kKesh;
    InstallSettingsScreen(app);
    app.frmSettings().load();
    ASSERT_TRUE(app.frmSettings().cmdAutoDetect.enabled());
    app.frmSettings().cmdAutoDetect.click();  // returns when the text-converter sweep has ended

    EXPECT_FALSE(app.frmSettings().loaded());
    EXPECT_EQ(r.statuses, (std::vector<std::string>{"1.1", "1.2"}));
    EXPECT_EQ(r.d().Label1[0].text(), "DORVANE PROTOCOL CONVERTER FOUND");
    EXPECT_EQ(r.saved("ConnectPort"), "2");
    EXPECT_EQ(r.saved("OBDIIHardware"), kDorvane);
    EXPECT_TRUE(r.d().cmdConnectAD.visible());
    EXPECT_FALSE(r.d().TimeOut.enabled() || r.d().Timer1.enabled());
    EXPECT_FALSE(app.frmMain().mnuOption.enabled());

    // Connect leaves the screen without a question and starts the connect.
    r.d().cmdConnectAD.click();
    EXPECT_FALSE(r.d().loaded());
    EXPECT_EQ(r.connects, 1);
    EXPECT_TRUE(r.t.dialogs.shown().empty());
    EXPECT_TRUE(app.frmMain().mnuOption.enabled());
}

TEST(AutoDetect, CountByteConverterOnPort1IsFoundAfterTheTextConverterSweep) {
    DetectRig r;
    auto br3 = std::make_unique<ScriptedDevice>();
    br3->probeReply = std::string("\x01\xFF", 2);
    r.plug(1, std::move(br3));
    r.d().show();
    const std::int64_t sweptMs = r.t.loop.clock().nowMicros() / 1000;
    EXPECT_GE(sweptMs, 1900);
    EXPECT_LE(sweptMs, 2200);
    r.t.loop.runFor(1000);

    EXPECT_EQ(r.statuses, (std::vector<std::string>{"1.1", "1.2", "1.3", "1.4", "2.1"}));
    EXPECT_EQ(r.d().Label1[0].text(), "BR3 PROTOCOL CONVERTER FOUND");
    EXPECT_EQ(r.saved("ConnectPort"), "1");
    EXPECT_EQ(r.saved("OBDIIHardware"), kBr3);
    EXPECT_FALSE(r.d().BR3AutoDetect->portOpen());
}

TEST(AutoDetect, AnAnswerWithoutFFMovesOnAndNothingAnywhereAsksRetryUntilTooMany) {
    DetectRig r;
    auto other = std::make_unique<ScriptedDevice>();
    other->probeReply = std::string("\xFF\x01", 2);  // answers, but the last byte is not FF
    r.plug(3, std::move(other));
    std::vector<std::string> labels;
    r.t.dialogs.onShow = [&](const MessageBox&) {
        labels.push_back(r.d().Label1[0].text() + " / " + r.t->ConnectPort);
    };
    for (int i = 0; i < 3; ++i)
        r.t.dialogs.answerNext(MsgAnswer::Retry);
    r.t.dialogs.answerNext(MsgAnswer::Cancel);
    r.d().show();
    r.t.loop.runFor(60000);

    const std::string none = "No Communication Or Interface Device Found";
    const std::string tooMany = "Too Many Unsuccessful Attempts!";
    EXPECT_EQ(r.titles(), (std::vector<std::string>{none, none, none, tooMany}));
    EXPECT_EQ(labels, std::vector<std::string>(4, "Detection Failed / 4"));
    const auto& boxes = r.t.dialogs.shown();
    ASSERT_EQ(boxes.size(), 4u);
    EXPECT_EQ(boxes[0].icon, MsgIcon::Stop);
    EXPECT_EQ(boxes[3].icon, MsgIcon::Exclamation);
    EXPECT_FALSE(r.d().loaded());           // Cancel closed it
    EXPECT_EQ(r.saved("ConnectPort"), "");  // no stale port is left behind
    // Each sweep went through the answering port 3 and on to 4.
    int sweeps = 0;
    for (std::size_t i = 0; i + 1 < r.statuses.size(); ++i)
        if (r.statuses[i] == "2.3" && r.statuses[i + 1] == "2.4") ++sweeps;
    EXPECT_EQ(sweeps, 4);

    // The count of retries outlives the screen: the next failed sweep is "too many" at once.
    r.t.dialogs.clear();
    r.t.dialogs.answerNext(MsgAnswer::Cancel);
    r.d().show();
    r.t.loop.runFor(10000);
    EXPECT_EQ(r.titles(), (std::vector<std::string>{tooMany}));
}

TEST(AutoDetect, TheVersionAnswerIsGatheredAndStatusChunksAreDroppedWhole) {
    struct Case {
        std::vector<std::string> chunks;
        bool found;
    } cases[] = {
        {{"V1.23"}, true},   {{"V1", ".2"}, true}, {{"PV1.23"}, false},
        {{"TV1.23"}, false}, {{"IV1.2"}, false},   {{"x", "V1.23"}, false},
        {{"V1."}, false},    {{"S"}, false},  // a sync with no answer behind it
    };
    const std::vector<std::string> swept{"1.1", "1.2", "1.3", "1.4", "2.1"};
    for (const Case& c : cases) {
        DetectRig r;
        auto device = std::make_unique<ScriptedDevice>();
        for (std::size_t i = 0; i < c.chunks.size(); ++i)
            device->onOpen.emplace_back(50 + 50 * int(i), c.chunks[i]);
        r.plug(1, std::move(device));
        r.d().show();
        std::string what = c.chunks.front() + "...";
        EXPECT_EQ(r.t->OBDIIHardware == kDorvane, c.found) << what;
        EXPECT_EQ(r.statuses, c.found ? std::vector<std::string>{"1.1"} : swept) << what;
    }
}

TEST(AutoDetect, ClosingDuringTheSweepAsksWhetherToAbort) {
    for (MsgAnswer answer : {MsgAnswer::No, MsgAnswer::Yes}) {
        DetectRig r;
        bool closed = false;
        r.t.loop.scheduler().postAt(600 * 1000, [&] {
            r.t.dialogs.answerNext(answer);
            closed = r.d().requestClose();
        });
        r.d().show();
        ASSERT_EQ(r.titles(), std::vector<std::string>{"Detection Still In Progress!"});
        if (answer == MsgAnswer::No) {
            // The sweep went on through port 4 to the count-byte probe.
            EXPECT_FALSE(closed);
            EXPECT_EQ(r.statuses.back(), "2.1");
        } else {
            EXPECT_TRUE(closed);
            EXPECT_FALSE(r.d().loaded());
            EXPECT_EQ(r.statuses.back(), "1.2");
            EXPECT_FALSE(r.d().MSComm2->portOpen());
        }
    }
}

}  // namespace
}  // namespace ketrel::test
