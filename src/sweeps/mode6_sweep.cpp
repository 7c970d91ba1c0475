#include "sweeps/mode6_sweep.h"

#include <memory>
#include <optional>
#include <string>

#include "link/br3_request.h"
#include "link/frame_dispatch.h"
#include "link/kesh_request.h"
#include "link/serial_timing.h"
#include "link/sweep_request.h"
#include "screens/frm_mode6.h"
#include "state/app.h"
#include "sweeps/mode6_definitions.h"
#include "sweeps/mode6_reply.h"
#include "sweeps/mode6_rows.h"

namespace ketrel {
namespace {

constexpr std::uint8_t kMode6 = 0x06;
constexpr int kStartWaitMs = 150, kReplyWaitMs = 250, kTimerWaitMs = 100;
constexpr int kLastTestId = 255;
constexpr int kFrameIndexLimit = 18;
constexpr int kSpareRows = 125;

// One sweep as it runs: the line, the module's own variables and the reply layout.
struct Sweep {
    App& app;
    FrmMode6& f;
    SweepLine line;
    Mode6Vars& vars;

    bool kline() const { return line.path == ReceivePath::Kline; }
    bool j1850() const { return line.family == Br3Family::J1850; }
    const Mode6Layout& layout() const { return j1850() ? kMode6J1850 : kMode6Iso; }
};

// A test id as the status panel shows it: hex without leading zero (5, 1F).
std::string HexNoLeadingZero(int value) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    do {
        text.insert(text.begin(), kDigits[value % 16]);
        value /= 16;
    } while (value > 0);
    return text;
}

void Wait(App& app, int ms) {
    BlockingSleep(app.loop(), ms);
}

void ClearReplyCells(App& app) {
    for (std::size_t n = 1; n <= 4; ++n) {
        app.ByteBits[n].clear();
        app.ByteHex[n].clear();
    }
}

// On KWP 2000 the echo text of a support request keeps the base byte 00 whatever base went out,
// with the check byte of the frame sent; the echo of a later base is then cut only where it
// still matches, and the reply is read as it comes out of the strip.
std::string SupportEchoText(const SweepLine& line, std::string frame) {
    if (line.header[0] == 0xC2) frame[4] = '\0';
    return BytesToHex(frame);
}

void ReadSupport(Sweep& s) {
    ClearReplyCells(s.app);
    const std::string text = ReadSweepReply(s.app, s.line.path);
    s.app.RxMode = Mode6ServiceMode(text, s.layout());
    Mode6NoteSupport(s.app, s.f, s.vars, ReadMode6Support(text, s.layout()));
}

void SupportPhase(Sweep& s) {
    App& app = s.app;
    app.frmMain().TimeOutConnect.stop();
    app.Mode6Active = true;
    s.vars.Row = 0;
    app.Mode6PIDIndex = 1;
    Wait(app, kStartWaitMs);
    if (s.kline()) {
        app.frmMain().Text2.setText("");
        app.RawFrame.clear();
    }
    ClearSweepInput(app, s.line);
    for (int base = 0x00; base <= 0xE0; base += 0x20) {
        const std::string frame = SweepFrame(s.line, {kMode6, std::uint8_t(base)}, 1);
        SendSweepFrame(app, s.line, frame);
        if (s.kline()) app.LastRequestHex = SupportEchoText(s.line, frame);
        Mode6Status(s.f, 2,
                    "Requesting MODE 6 PID " + BytesToHex(std::string(1, char(base))) + "...");
        Wait(app, kReplyWaitMs);
        ReadSupport(s);
    }
}

// One reply on J1850: one frame; a long one asks for the same test again with the next index.
void ReadResultJ1850(Sweep& s, const std::string& text) {
    App& app = s.app;
    if (text.size() > 8) app.Mode6Again = true;
    if (text.size() < 8) {
        app.Mode6FrameIndex = 1;
        return;
    }
    app.RxMode = Mode6ServiceMode(text, s.layout());
    const Mode6Frame frame = ReadMode6Frame(text, s.layout());
    app.ByteHex[1] = frame.valueDigits;
    app.ByteHex[2] = frame.limitDigits;
    Mode6TakeFrame(s.vars, frame);
    Mode6AddResultRow(s.f, s.vars);
}

// One reply on ISO 9141 / KWP 2000: every component's frame at once, a row for each, and a row
// even for an empty reply.
void ReadResultIso(Sweep& s, const std::string& text) {
    for (std::string_view head : Mode6IsoFrames(text)) {
        s.app.RxMode = Mode6ServiceMode(head, s.layout());
        const Mode6Frame frame = ReadMode6Frame(head, s.layout());
        s.app.ByteHex[1] = frame.valueDigits;
        s.app.ByteHex[2] = frame.limitDigits;
        Mode6TakeFrame(s.vars, frame);
        Mode6AddResultRow(s.f, s.vars);
    }
}

void RequestTest(Sweep& s) {
    App& app = s.app;
    Mode6Status(s.f, 2, "Requesting MODE 6 TEST ID " + HexNoLeadingZero(s.vars.TestID) + "...");
    const std::uint8_t id = std::uint8_t(s.vars.TestID);
    const std::string frame =
        SweepFrame(s.line, {kMode6, id}, std::uint8_t(app.Mode6FrameIndex & 0xFF));
    SendSweepFrame(app, s.line, frame);
    Wait(app, kReplyWaitMs);
    if (s.kline()) app.LastRequestHex = BytesToHex(frame);
    s.vars.Result.reset();
    ClearReplyCells(app);
    const std::string text = ReadSweepReply(app, s.line.path);
    if (s.j1850()) {
        ReadResultJ1850(s, text);
    } else {
        ReadResultIso(s, text);
    }
}

bool IsSupportId(int id) {
    return id % 32 == 0;
}

// False when the user confirmed the cancel question.
bool GoesOn(App& app) {
    if (!app.Mode6Cancel) return true;
    MsgAnswer a = app.dialogs().show(MessageBox{"MODE 6", "Are You Sure You Want To Cancel Mode 6?",
                                                MsgButtons::YesNo, MsgIcon::Question, false});
    if (a == MsgAnswer::Yes) return false;
    app.Mode6Cancel = false;
    return true;
}

void TestPhase(Sweep& s) {
    App& app = s.app;
    Mode6Vars& v = s.vars;
    v.TestID = 1;
    app.Mode6Again = false;
    app.Mode6FrameIndex = 1;
    s.f.MSFlexGrid1.setRows(v.SupportedCount + kSpareRows);
    while (v.TestID <= kLastTestId) {
        if (!app.Connected) return;  // the line is lost: nothing is given back
        if (!GoesOn(app)) {
            s.f.cmdCancelMode6.setEnabled(false);
            s.f.cmdFordDef.setEnabled(true);
            Mode6RestorePolling(app);
            return;
        }
        app.loop().pump();  // the cancel button and the close box are heard here
        if (s.j1850()) {
            if (app.Mode6FrameIndex > kFrameIndexLimit) {
                app.Mode6Again = false;
                app.Mode6FrameIndex = 0;
            }
            if (app.Mode6Again) {
                app.Mode6Again = false;
                v.TestID--;
                app.Mode6FrameIndex++;
            }
        }
        if (IsSupportId(v.TestID)) v.TestID++;
        if (v.Supported[std::size_t(v.TestID - 1)]) RequestTest(s);
        v.TestID++;
    }
    s.f.cmdCancelMode6.setEnabled(false);
    app.Mode6Cancel = true;
    Mode6RestorePolling(app);
}

void RunSweep(App& app, bool kline) {
    FrmMode6* f = Mode6Screen(app);
    std::optional<SweepLine> line = SweepLineFor(app);
    if (!f || !line || (line->path == ReceivePath::Kline) != kline) return;
    Sweep s{app, *f, *line, kline ? app.Mode6Kesh : app.Mode6Br3};
    SupportPhase(s);
    TestPhase(s);
}

void GiveBackFlags(App& app) {
    for (std::size_t i = 0; i < app.SavedPidWanted.size(); ++i)
        app.PidWanted[i] = app.SavedPidWanted[i];
}

}  // namespace

FrmMode6* Mode6Screen(App& app) {
    return dynamic_cast<FrmMode6*>(app.screenByName("frmMode6"));
}

void Mode6Open(App& app) {
    FrmMode6* f = Mode6Screen(app);
    if (!f) return;
    FrmMain& m = app.frmMain();
    m.setEnabled(false);
    if (!app.Connected) f->cmdCancelMode6.setEnabled(false);
    m.BR3Delay.stop();
    m.KeshDelay.stop();
    if (app.Mode6ListVisible) f->List1.setVisible(true);
    app.Mode6Cancel = false;
    Mode6Status(*f, 1, "Status:  Requesting In Progress...");
    Mode6GridHeaders(*f);
    Mode6Status(*f, 2, "Disabling Main Pids Request...");
    for (std::size_t i = 0; i < app.SavedPidWanted.size(); ++i) {
        app.SavedPidWanted[i] = app.PidWanted[i];
        app.PidWanted[i] = false;
    }
    f->cmdFordDef.setEnabled(false);
    f->Timer1.start();
}

void Mode6Timer1(App& app) {
    FrmMode6* f = Mode6Screen(app);
    if (!f) return;
    f->Timer1.stop();
    if (!app.Connected) return;
    Wait(app, kTimerWaitMs);
    if (app.OBDIIHardware == kKesh || app.OBDIIHardware == kTactrix) Mode6SweepKesh(app);
    if (app.OBDIIHardware == kBr3) Mode6SweepBR3(app);
}

void Mode6SweepBR3(App& app) {
    RunSweep(app, false);
}

void Mode6SweepKesh(App& app) {
    RunSweep(app, true);
}

void Mode6RestorePolling(App& app) {
    FrmMode6* f = Mode6Screen(app);
    if (!f) return;
    Mode6Status(*f, 2, "Enabling Main Pids Request...");
    GiveBackFlags(app);
    Mode6Status(*f, 2, "");
    Mode6Status(*f, 1, "End Of Process");
    f->cmdFordDef.setEnabled(true);
    app.frmMain().TimeOutConnect.start();
    if (app.OBDIIHardware == kBr3) BR3Request(app, Br3LineFor(app.ProtocolCode));
    if (app.OBDIIHardware == kKesh || app.OBDIIHardware == kTactrix) KeshRequestNext(app);
}

bool Mode6RefuseClose(App& app) {
    app.frmMain().setEnabled(true);
    if (!app.Connected) return false;
    const bool refuse = !app.Mode6Cancel;
    app.Mode6Active = false;
    GiveBackFlags(app);
    app.frmMain().TimeOutConnect.start();
    return refuse;
}

void InstallMode6(App& app) {
    if (!app.screenByName("frmMode6")) app.addScreen(std::make_unique<FrmMode6>(app.loop()));
    FrmMode6* screen = Mode6Screen(app);
    if (!screen) return;  // a screen of that name that is not this one stays as it is
    FrmMode6& f = *screen;
    f.onLoad = [&app] { Mode6Open(app); };
    f.Timer1.setHandler([&app] { Mode6Timer1(app); });
    f.onQueryUnload = [&app](bool& cancel) { cancel = Mode6RefuseClose(app); };
    f.cmdCancelMode6.onClick = [&app] { app.Mode6Cancel = true; };
    f.cmdFordDef.onClick = [&app] { Mode6ApplyDefinitions(app); };
}

}  // namespace ketrel
