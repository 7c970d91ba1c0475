#include "sweeps/mode5_tests.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "link/frame_dispatch.h"
#include "obd/number_text.h"
#include "screens/frm_mode5.h"
#include "state/app.h"
#include "sweeps/mode5_line.h"
#include "sweeps/mode5_manuf.h"
#include "sweeps/mode5_values.h"

namespace ketrel {

namespace {

constexpr int kTestCount = 10;

// How a test's value is scaled: factor, decimals and unit; the scaled value of some tests is
// worked out from the reply's minimum byte, while the raw column shows the test byte.
struct TestScale {
    double factor;
    int decimals;
    const char* unit;
    bool fromMinimum;
};
constexpr std::array<TestScale, kTestCount> kScales{{
    {0.005, 3, " V", false},
    {0.005, 3, " V", false},
    {0.005, 3, " V", true},
    {0.005, 3, " V", true},
    {0.004, 3, " Sec", true},
    {0.004, 3, " Sec", true},
    {0.005, 3, " V", false},
    {0.005, 3, " V", false},
    {0.04, 2, " Sec", true},
    {0.04, 2, " Sec", true},
}};

const std::array<const char*, 8> kSensors{"O2 SENSOR B1S1", "O2 SENSOR B1S2", "O2 SENSOR B1S3",
                                          "O2 SENSOR B1S4", "O2 SENSOR B2S1", "O2 SENSOR B2S2",
                                          "O2 SENSOR B2S3", "O2 SENSOR B2S4"};
// The layout of a vehicle that reports its sensors through PID 1D.
const std::array<const char*, 8> kSensorsFourBanks{
    "O2 SENSOR B1S1", "O2 SENSOR B1S2", "O2 SENSOR B2S1", "O2 SENSOR B2S2",
    "O2 SENSOR B3S1", "O2 SENSOR B3S2", "O2 SENSOR B4S1", "O2 SENSOR B4S2"};

FrmMode5& screenOf(App& app) {
    return *Mode5Screen(app);
}

std::string scaled(const std::string& byteText, const TestScale& s) {
    return fixed(TextNumber(byteText) * s.factor, s.decimals) + s.unit;
}

// The header whose check the request carries, by protocol.
Br3Header checkHeader(const std::string& protocol) {
    if (protocol == "02") return {0x61, 0x6A, 0xF1};
    if (protocol == "04") return {0xC3, 0x33, 0xF1};
    return {0x68, 0x6A, 0xF1};
}

// The row of a test follows its raw field: greyed out while it reads "N/A".
void followRaw(FrmMode5& f, int n) {
    const bool on = f.lblRaw(n).text() != "N/A";
    f.lblRaw(n).setEnabled(on);
    f.Label1[FrmMode5::captionIndex(n)].setEnabled(on);
    f.lblTest(n).setEnabled(on);
    if (FrmMode5::hasLimits(n)) {
        f.lblMin(n).setEnabled(on);
        f.lblMax(n).setEnabled(on);
    }
}

void setButtons(FrmMode5& f, bool on) {
    f.cmdOk.setEnabled(on);
    f.cmdManuf.setEnabled(on);
}

// After the tenth test: the screen is free again and the scan chain takes the line back. On
// the count-byte converter KWP 2000 goes on through the ISO 9141 routine.
void endSequence(App& app) {
    FrmMode5& f = screenOf(app);
    f.Mode5Busy = false;
    app.frmMain().TimeOutConnect.start();
    setButtons(f, true);
    f.Panel1.setText("End Of Progress");
    const Br3Line restart = app.ProtocolCode == "01"   ? Br3Line::Vpw
                            : app.ProtocolCode == "02" ? Br3Line::Pwm
                                                       : Br3Line::Iso;
    RestartScanChain(app, Mode5LineOf(app), restart);
}

void openScreen(App& app) {
    app.frmMain().setEnabled(false);
    FillSensorList(app);
}

void queryUnload(App& app, bool& cancel) {
    if (screenOf(app).Mode5Busy) {
        cancel = true;
        return;
    }
    app.frmMain().setEnabled(true);
    app.frmMain().TimeOutConnect.start();
}

void clickOk(App& app) {
    FrmMode5& f = screenOf(app);
    if (f.cmbO2.text().empty()) return;
    setButtons(f, false);
    Mode5ClearFields(app);
    app.Mode5Sensor = f.cmbO2.listIndex() + 1;
    app.Mode5Requested = true;
}

}  // namespace

FrmMode5* Mode5Screen(App& app) {
    return dynamic_cast<FrmMode5*>(app.screenByName("frmMode5"));
}

void FillSensorList(App& app) {
    ComboBox& list = screenOf(app).cmbO2;
    list.clear();
    for (const char* s : app.Mode1Supported[0x1D] ? kSensorsFourBanks : kSensors)
        list.addItem(s);
    list.setListIndex(0);
}

void Mode5Request(App& app) {
    FrmMode5& f = screenOf(app);
    const Mode5Line line = Mode5LineOf(app);
    f.Mode5Busy = true;
    ClearSweepInput(app, line);
    const Br3Header check = checkHeader(line.protocol);
    // The count-byte converter sends on the header its connect kept, but for KWP 2000, whose
    // format byte counts the three data bytes.
    const Br3Header wire = line.protocol == "04" ? check : HeaderFromText(app.FrameHeader, check);
    const auto test = std::uint8_t(app.Mode5TestID), sensor = std::uint8_t(app.Mode5Sensor);
    SendSweepFrame(app, line, Mode5Frame(line, wire, check, {0x05, test, sensor}));
    f.Panel1.setText("Requesting Test ID: " + HexNumber(app.Mode5TestID));
    (line.kline ? f.KeshDelay : f.BR3Delay).start();
}

void Mode5Read(App& app) {
    FrmMode5& f = screenOf(app);
    FrmMain& m = app.frmMain();
    const Mode5Line line = Mode5LineOf(app);
    if (line.kline) {
        m.Text2.setText("");
        // A K-line that dropped leaves the sequence where it is, busy.
        if (!app.Connected) return;
    }
    const int n = app.Mode5TestID;
    if (n < 1 || n > kTestCount) return;
    const auto i = std::size_t(n - 1);
    f.Mode5Test[i].clear();
    f.Mode5Min[i].clear();
    f.Mode5Max[i].clear();
    std::string raw;
    std::string reply = ReadSweepReply(app, line, &raw);
    if (line.kline) {
        m.Text2.setText(raw);
        m.txtKesh.setText(reply);
    }
    m.LogData.addItem(reply);
    CapLogData(app);
    const FrameKey key = KeySweepReply(app, reply, ReplyColumn(line, 8));
    // A reply of another service counts as none; the K-line takes whatever came.
    if (!line.kline && key.mode != 5) reply.clear();
    if (!reply.empty()) {
        f.Mode5Test[i] = ReplyByteText(reply, ReplyColumn(line, 13));
        f.Mode5Min[i] = ReplyByteText(reply, ReplyColumn(line, 15));
        f.Mode5Max[i] = ReplyByteText(reply, ReplyColumn(line, 17));
    }
    Mode5ShowResult(app);
}

void Mode5ShowResult(App& app) {
    FrmMode5& f = screenOf(app);
    const int n = app.Mode5TestID;
    if (n >= 1 && n <= kTestCount) {
        const auto i = std::size_t(n - 1);
        const TestScale& s = kScales[i];
        if (!f.Mode5Test[i].empty()) {
            f.lblRaw(n).setText(f.Mode5Test[i]);
            f.lblTest(n).setText(scaled(s.fromMinimum ? f.Mode5Min[i] : f.Mode5Test[i], s));
        }
        if (FrmMode5::hasLimits(n)) {
            if (!f.Mode5Min[i].empty()) f.lblMin(n).setText(scaled(f.Mode5Min[i], s));
            if (!f.Mode5Max[i].empty()) f.lblMax(n).setText(scaled(f.Mode5Max[i], s));
        }
    }
    app.Mode5TestID++;
    if (app.Mode5TestID < kTestCount + 1) {
        Mode5Request(app);
        return;
    }
    endSequence(app);
}

void Mode5ClearFields(App& app) {
    FrmMode5& f = screenOf(app);
    for (int n = 1; n <= kTestCount; ++n) {
        f.lblRaw(n).setText("N/A");
        f.lblTest(n).setText("N/A");
        if (FrmMode5::hasLimits(n)) {
            f.lblMin(n).setText("N/A");
            f.lblMax(n).setText("N/A");
        }
    }
}

void InstallMode5(App& app) {
    FrmMode5* screen = Mode5Screen(app);
    if (!screen) return;
    FrmMode5& f = *screen;
    f.onLoad = [&app] { openScreen(app); };
    f.onQueryUnload = [&app](bool& cancel) { queryUnload(app, cancel); };
    f.cmdOk.onClick = [&app] { clickOk(app); };
    f.cmdManuf.onClick = [&app] { OpenMode5Manuf(app); };
    for (int n = 1; n <= kTestCount; ++n)
        f.lblRaw(n).onChange = [&f, n] { followRaw(f, n); };
    f.BR3Delay.setHandler([&app] {
        screenOf(app).BR3Delay.stop();
        Mode5Read(app);
    });
    f.KeshDelay.setHandler([&app] {
        screenOf(app).KeshDelay.stop();
        Mode5Read(app);
    });
    app.hooks.Mode5Sequence = [&app] {
        if (Mode5Screen(app)) Mode5Request(app);
    };
}

}  // namespace ketrel
