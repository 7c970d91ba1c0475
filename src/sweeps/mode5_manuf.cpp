#include "sweeps/mode5_manuf.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "link/frame_dispatch.h"
#include "link/serial_timing.h"
#include "obd/bit_operations.h"
#include "platform/text_convert.h"
#include "screens/frm_mode5.h"
#include "screens/frm_mode5_manuf.h"
#include "state/app.h"
#include "sweeps/mode5_line.h"
#include "sweeps/mode5_tests.h"
#include "sweeps/mode5_values.h"

namespace ketrel {

namespace {

constexpr int kSettleMs = 100;  // from the timer to the sweep
constexpr int kStartMs = 150;   // from the sweep's start to the first request
constexpr int kReplyMs = 250;   // from a request to its read
constexpr std::size_t kHeldFlags = 42;
constexpr int kGridSpare = 125;

struct Column {
    const char* heading;
    int width;  // twips
};
constexpr std::array<Column, 7> kColumns{{{"TEST ID", 900},
                                          {"DESCRIPTION", 3900},
                                          {"TEST VALUE(RAW)", 1950},
                                          {"TEST VALUE", 1950},
                                          {"MINIMUM UNITS", 1950},
                                          {"MAXIMUM UNITS", 1950},
                                          {"PASS/FAIL", 1950}}};

FrmMode5Manuf& screenOf(App& app) {
    return *Mode5ManufScreen(app);
}

// Panels 1 and 2 show what is written to them in upper case.
void setPanel(FrmMode5Manuf& f, int number, const std::string& text) {
    f.panel(number).setText(UpperCase(text));
}

void holdPolling(App& app, FrmMode5Manuf& f) {
    for (std::size_t i = 0; i < kHeldFlags; ++i) {
        f.SavedPidWanted[i] = app.PidWanted[i];
        app.PidWanted[i] = false;
    }
}

void restoreFlags(App& app, const FrmMode5Manuf& f) {
    for (std::size_t i = 0; i < kHeldFlags; ++i)
        app.PidWanted[i] = f.SavedPidWanted[i];
}

// The header of a request; the support requests of KWP 2000 carry two data bytes, the test
// requests three.
Br3Header headerOf(const std::string& protocol, bool support) {
    if (protocol == "02") return {0x61, 0x6A, 0xF1};
    if (protocol == "04") return {std::uint8_t(support ? 0xC2 : 0xC3), 0x33, 0xF1};
    return {0x68, 0x6A, 0xF1};
}

void openScreen(App& app) {
    FrmMode5Manuf& f = screenOf(app);
    FrmMain& m = app.frmMain();
    m.setEnabled(false);
    if (!app.Connected) f.cmdCancelMode5.setEnabled(false);
    m.BR3Delay.stop();
    m.KeshDelay.stop();
    if (app.Mode6ListVisible) f.List1.setVisible(true);
    f.Mode5ManufCancel = false;
    setPanel(f, 1, "Status:  Requesting In Progress...");
    Grid& g = f.MSFlexGrid1;
    g.setCols(int(kColumns.size()));
    for (std::size_t c = 0; c < kColumns.size(); ++c) {
        g.setColWidth(int(c), kColumns[c].width);
        g.setText(0, int(c), kColumns[c].heading);
    }
    setPanel(f, 2, "Disabling Main Pids Request...");
    holdPolling(app, f);
    f.Timer1.start();
}

void queryUnload(App& app, bool& cancel) {
    FrmMode5Manuf& f = screenOf(app);
    app.frmMain().setEnabled(true);
    if (!app.Connected) return;
    if (!f.Mode5ManufCancel) cancel = true;
    // Refused or not, the polling is released.
    app.Mode5ManufActive = false;
    restoreFlags(app, f);
    app.frmMain().TimeOutConnect.start();
}

// One support reply: 32 flags from the four bitmap bytes, first byte's high bit first.
void readSupport(App& app, const Mode5Line& line) {
    FrmMode5Manuf& f = screenOf(app);
    for (int k = 1; k <= 4; ++k)
        app.ByteBits[std::size_t(k)].clear();
    const std::string reply = ReadSweepReply(app, line);
    KeySweepReply(app, reply, ReplyColumn(line, 8));
    std::string bits;
    for (int k = 0; k < 4; ++k) {
        const SlicedByte b = SliceByte(FrameSlice(reply, int(ReplyColumn(line, 13)) + 2 * k));
        app.ByteValue[std::size_t(k + 1)] = b.value;
        app.ByteBits[std::size_t(k + 1)] = b.bits;
        bits += b.bits;
    }
    for (char bit : bits) {
        const int id = app.Mode6PIDIndex;
        const bool on = bit == '1';
        if (id >= 1 && id <= int(f.Mode5ManufSupported.size()))
            f.Mode5ManufSupported[std::size_t(id - 1)] = on;
        f.List1.addItem("PID " + std::to_string(id) + (on ? "  SUPPORTED" : "  NOT SUPPORTED"));
        if (on) f.Mode5ManufCount++;
        app.Mode6PIDIndex++;
    }
}

void supportPhase(App& app, const Mode5Line& line) {
    FrmMode5Manuf& f = screenOf(app);
    FrmMain& m = app.frmMain();
    m.TimeOutConnect.stop();
    app.Mode5ManufActive = true;
    f.Mode5ManufRow = 0;
    app.Mode6PIDIndex = 1;
    BlockingSleep(app.loop(), kStartMs);
    if (line.kline) {
        m.Text2.setText("");
        app.RawFrame.clear();
    }
    ClearSweepInput(app, line);
    const Br3Header header = headerOf(line.protocol, true);
    for (int base = 0x20; base <= 0xE0; base += 0x20) {
        SendSweepFrame(app, line, Mode5Frame(line, header, header, {0x05, std::uint8_t(base)}));
        setPanel(f, 2, "Requesting MODE 5 PID " + ByteToHexText(base) + "...");
        BlockingSleep(app.loop(), kReplyMs);
        readSupport(app, line);
    }
}

// One test reply, written as the next grid row while the id is marked supported.
void readTest(App& app, const Mode5Line& line, int id) {
    FrmMode5Manuf& f = screenOf(app);
    const std::string reply = ReadSweepReply(app, line);
    KeySweepReply(app, reply, ReplyColumn(line, 8));
    bool bad = false;
    auto byteAt = [&](std::size_t isoColumn) {
        return int(HexTextToByte(FrameSlice(reply, int(ReplyColumn(line, isoColumn))), bad));
    };
    const int value = byteAt(13), minimum = byteAt(15), maximum = byteAt(17);
    f.Mode5ManufRaw = std::to_string(value);
    app.ByteValue[1] = minimum;
    app.ByteValue[2] = maximum;
    if (!f.Mode5ManufSupported[std::size_t(id - 1)]) return;
    const int row = ++f.Mode5ManufRow;
    Grid& g = f.MSFlexGrid1;
    if (row >= g.rows()) return;  // more replies than rows: the write is passed over
    const ManufRowTexts t = ManufRow(id, value, minimum, maximum);
    const std::string cells[] = {ByteToHexText(id), "*",       f.Mode5ManufRaw, t.test,
                                 t.minimum,         t.maximum, t.verdict};
    for (int c = 0; c < 7; ++c)
        g.setText(row, c, cells[c]);
}

// The test phase; false when the session was lost under it (nothing is given back then).
bool testPhase(App& app, const Mode5Line& line) {
    FrmMode5Manuf& f = screenOf(app);
    f.MSFlexGrid1.setRows(f.Mode5ManufCount + kGridSpare);
    const Br3Header header = headerOf(line.protocol, false);
    for (f.Mode5ManufTestID = 32; f.Mode5ManufTestID <= 255; ++f.Mode5ManufTestID) {
        if (!app.Connected) return false;
        if (f.Mode5ManufCancel) {
            const MsgAnswer a =
                app.dialogs().show(MessageBox{"MODE 5", "Are You Sure You Want To Cancel Mode 5?",
                                              MsgButtons::YesNo, MsgIcon::Question, false});
            if (a == MsgAnswer::Yes) return true;
            f.Mode5ManufCancel = false;
        }
        app.loop().pump();
        int& id = f.Mode5ManufTestID;
        // Ids 32, 64, ... 224 ask for support and are no tests.
        if (id % 32 == 0) id++;
        if (!f.Mode5ManufSupported[std::size_t(id - 1)]) continue;
        setPanel(f, 2, "Requesting MODE 5 TEST ID " + HexNumber(id) + "...");
        SendSweepFrame(app, line,
                       Mode5Frame(line, header, header,
                                  {0x05, std::uint8_t(id), std::uint8_t(app.Mode5Sensor)}));
        BlockingSleep(app.loop(), kReplyMs);
        readTest(app, line, id);
    }
    f.Mode5ManufCancel = true;
    return true;
}

void timerFired(App& app) {
    screenOf(app).Timer1.stop();
    if (!app.Connected) return;
    BlockingSleep(app.loop(), kSettleMs);
    Mode5ManufSweep(app);
}

}  // namespace

FrmMode5Manuf* Mode5ManufScreen(App& app) {
    return dynamic_cast<FrmMode5Manuf*>(app.screenByName("frmMode5Manuf"));
}

void OpenMode5Manuf(App& app) {
    FrmMode5* mode5 = Mode5Screen(app);
    FrmMode5Manuf* manuf = Mode5ManufScreen(app);
    if (!mode5 || !manuf) return;
    app.Mode5Sensor = mode5->cmbO2.listIndex() + 1;
    manuf->show();
    manuf->Panel3.setText(UpperCase(mode5->cmbO2.text()));
    mode5->unload();
}

void Mode5ManufSweep(App& app) {
    const Mode5Line line = Mode5LineOf(app);
    supportPhase(app, line);
    if (!testPhase(app, line)) return;
    screenOf(app).cmdCancelMode5.setEnabled(false);
    Mode5ManufRestorePolling(app);
}

void Mode5ManufRestorePolling(App& app) {
    FrmMode5Manuf& f = screenOf(app);
    setPanel(f, 2, "Enabling Main Pids Request...");
    restoreFlags(app, f);
    setPanel(f, 2, "");
    setPanel(f, 1, "End Of Process");
    app.frmMain().TimeOutConnect.start();
    const Mode5Line line = Mode5LineOf(app);
    RestartScanChain(app, line, Br3LineFor(line.protocol));
}

void InstallMode5Manuf(App& app) {
    FrmMode5Manuf* screen = Mode5ManufScreen(app);
    if (!screen) return;
    screen->onLoad = [&app] { openScreen(app); };
    screen->onQueryUnload = [&app](bool& cancel) { queryUnload(app, cancel); };
    screen->cmdCancelMode5.onClick = [&app] { screenOf(app).Mode5ManufCancel = true; };
    screen->Timer1.setHandler([&app] { timerFired(app); });
}

}  // namespace ketrel
