#include "link/kesh_receive.h"

#include "link/br3_receive.h"
#include "link/frame_dispatch.h"
#include "link/kesh_request.h"
#include "link/serial_timing.h"
#include "platform/serial_port.h"
#include "state/app.h"

namespace ketrel {
namespace {

bool endsWith(const std::string& text, const std::string& tail) {
    return tail.size() <= text.size() &&
           text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

// The replayed or read text through the decoder; a live read sends the next request after.
void decodeText(App& app) {
    DecodeIsoKwpFrame(app, ReceivePath::Kline);
    if (app.PlayingLog) return;
    if (app.hooks.FrameDecoded) app.hooks.FrameDecoded();
    KeshRequestNext(app);
}

void receive(App& app) {
    if (app.PlayingLog) {
        ClearFrameCells(app);
        decodeText(app);
        return;
    }
    if (!app.Connected) return;
    FrmMain& m = app.frmMain();
    try {
        app.PortInput = m.KeshMSComm->input();
    } catch (const SerialError&) {
        app.PortInput.clear();  // a port that failed reads as silence; the watchdog ends it
    }
    const std::string raw = BytesToHex(app.PortInput);
    m.Text2.setText(m.Text2.text() + raw);
    m.txtKesh.setText(KeshStripEcho(raw, app.LastRequestHex));
    KeshDecode(app);
}

}  // namespace

std::string KeshStripEcho(const std::string& raw, const std::string& lastRequestHex) {
    std::string tail;
    for (std::size_t i = 1; i <= raw.size(); ++i) {
        if (endsWith(lastRequestHex, raw)) return {};  // nothing but echo
        tail = raw.substr(raw.size() - i);
        const std::string head = raw.substr(0, raw.size() - i);
        if (endsWith(lastRequestHex, head)) break;
    }
    return tail;
}

void KeshDelayTick(App& app) {
    app.frmMain().KeshDelay.stop();
    if (app.ProtocolCode == "03") KeshReceiveISO(app);
    if (app.ProtocolCode == "04") KeshReceiveKWP(app);
}

void KeshReceiveISO(App& app) {
    receive(app);
}

void KeshReceiveKWP(App& app) {
    receive(app);
}

void KeshDecode(App& app) {
    ClearFrameCells(app);
    app.RawFrame = app.frmMain().txtKesh.text();
    NoteReceivedFrame(app, app.RawFrame);
    CapLogData(app);
    // An empty read dispatches nothing; the next request goes out all the same.
    if (app.RawFrame.empty()) {
        KeshRequestNext(app);
        return;
    }
    decodeText(app);
}

}  // namespace ketrel
