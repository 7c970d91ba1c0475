#include "link/br3_receive.h"

#include <array>
#include <string>

#include "link/br3_request.h"
#include "link/frame_dispatch.h"
#include "link/serial_timing.h"
#include "obd/bit_operations.h"
#include "platform/serial_port.h"
#include "state/app.h"

namespace ketrel {
namespace {

// Where the items of an answer stand in its hex text (1-based columns) for one frame family.
struct AnswerLayout {
    bool j1850;
    int answerByte;  // mode + 0x40; its low digit is the mode
    int pid;
    std::array<int, 4> codeCells;       // cells 1 to 4 of modes 03 and 07
    std::array<int, 4> mode02Cells;     // cells 1 to 4 of mode 02
    std::array<int, 4> otherCells;      // cells 1 to 4 of every other mode
    std::array<int, 14> moreCodeCells;  // cells 5 to 18 of modes 03 and 07
};

// A trouble-code answer holds three frames of six code bytes each.
constexpr AnswerLayout kJ1850{true,
                              9,
                              11,
                              {11, 13, 15, 17},
                              {15, 17, 19, 21},
                              {13, 15, 17, 19},
                              {19, 21, 39, 41, 43, 45, 47, 49, 67, 69, 71, 73, 75, 77}};
constexpr AnswerLayout kIsoKwp{false,
                               7,
                               9,
                               {9, 11, 13, 15},
                               {13, 15, 17, 19},
                               {11, 13, 15, 17},
                               {17, 19, 31, 33, 35, 37, 39, 41, 53, 55, 57, 59, 61, 63}};

void clearCellsOf(App& app) {
    for (std::size_t n = 1; n <= 18; ++n) {
        app.ByteBits[n].clear();
        app.ByteHex[n].clear();
    }
    // ByteValue(5) is the VIN rule's scratch and stays.
    for (std::size_t n = 1; n <= 4; ++n)
        app.ByteValue[n].reset();
}

// The answer that has come since the request, as hex text in txtInputBR3 and RawFrame.
void readAnswer(App& app) {
    FrmMain& m = app.frmMain();
    m.txtInputBR3.setText("");
    try {
        app.PortInput = m.BR3MSComm->input();
    } catch (const SerialError&) {
        app.PortInput.clear();  // a port that failed reads as silence; the watchdog ends it
    }
    m.txtInputBR3.setText(BytesToHex(app.PortInput));
    app.RawFrame = m.txtInputBR3.text();
    NoteReceivedFrame(app, app.RawFrame);
    CapLogData(app);
}

void cutModeAndPid(App& app, const AnswerLayout& layout) {
    const std::string& f = app.RawFrame;
    std::string_view answer = FrameSlice(f, layout.answerByte);
    app.RxMode = answer.size() == 2 ? std::string("0") + answer[1] : std::string();
    std::string_view pid = FrameSlice(f, layout.pid);
    app.RxPID = pid.size() == 1 ? "0" + std::string(pid) : std::string(pid);
    // A clear answer has no PID: the answer byte alone tells it.
    if (answer == "44") {
        app.RxMode = "04";
        app.ByteHex[1] = "44";
    }
}

void cutCells(App& app, const AnswerLayout& layout) {
    const bool codes = app.RxMode == "03" || app.RxMode == "07";
    const bool mode02 = app.RxMode == "02";
    const std::array<int, 4>& cells = codes    ? layout.codeCells
                                      : mode02 ? layout.mode02Cells
                                               : layout.otherCells;
    for (std::size_t n = 1; n <= 4; ++n) {
        SlicedByte b = SliceByte(FrameSlice(app.RawFrame, cells[n - 1]));
        bool bad = false;
        HexTextToByte(FrameSlice(app.RawFrame, cells[n - 1]), bad);
        if (!bad) {
            app.ByteValue[n] = b.value;
            app.ByteBits[n] = b.bits;
        }
        if (codes || (mode02 && n <= 2)) app.ByteHex[n] = b.hex;
    }
    if (!codes) return;
    for (std::size_t n = 5; n <= 18; ++n) {
        SlicedByte b = SliceByte(FrameSlice(app.RawFrame, layout.moreCodeCells[n - 5]));
        app.ByteHex[n] = b.hex;
        app.ByteBits[n] = b.bits;
    }
}

// The character of the byte at a column; nothing when the answer stops short of it.
void appendVinByte(App& app, int column) {
    std::string_view slice = FrameSlice(app.RawFrame, column);
    if (slice.size() < 2) return;
    bool bad = false;
    const std::uint8_t value = HexTextToByte(slice, bad);
    app.ByteValue[5] = value;
    app.VinText.push_back(char(value));
}

void appendVinBytes(App& app, int fromColumn) {
    for (int i = 0; i < 4; ++i)
        appendVinByte(app, fromColumn + 2 * i);
}

// J1850: one frame an answer, the request's trailing byte picked which.
void vinJ1850(App& app) {
    const std::string_view frame = FrameSlice(app.RawFrame, 13);
    if (frame == "01") {
        appendVinByte(app, 21);  // the three bytes before it are padding
    } else if (frame == "02" || frame == "03" || frame == "04" || frame == "05") {
        appendVinBytes(app, 15);
        if (frame == "05") app.frmMain().txtVin.setText(app.VinText);
    }
}

// ISO and KWP: all five frames of 22 digits in one answer; a frame out of place ends the rule.
void vinIsoKwp(App& app) {
    if (FrameSlice(app.RawFrame, 11) != "01") return;
    appendVinByte(app, 19);
    for (int frame = 2; frame <= 5; ++frame) {
        const int at = 11 + 22 * (frame - 1);
        if (FrameSlice(app.RawFrame, at) != "0" + std::to_string(frame)) return;
        appendVinBytes(app, at + 2);
    }
    app.frmMain().txtVin.setText(app.VinText);
}

void decode(App& app, const AnswerLayout& layout, ReceivePath path) {
    cutModeAndPid(app, layout);
    // The second module's answer wins where two answered a Mode 01 request.
    if (!layout.j1850 && app.SecondFrameConnect && app.RxMode == "01" && app.RawFrame.size() > 24) {
        app.RawFrame = app.RawFrame.substr(app.RawFrame.size() / 2);
    }
    cutCells(app, layout);
    if (app.RxMode == "09") {
        layout.j1850 ? vinJ1850(app) : vinIsoKwp(app);
    } else {
        DispatchFrame(app, path);
    }
}

void receive(App& app, const AnswerLayout& layout) {
    if (!app.PlayingLog) {
        if (!app.Connected) return;
        ClearFrameCells(app);
        readAnswer(app);
    }
    decode(app, layout, ReceivePath::Br3);
    if (app.PlayingLog) return;  // a log being played sends nothing
    if (app.hooks.FrameDecoded) app.hooks.FrameDecoded();
    BR3Request(app, Br3LineFor(app.ProtocolCode));
}

}  // namespace

void ClearFrameCells(App& app) {
    clearCellsOf(app);
}

void DecodeIsoKwpFrame(App& app, ReceivePath path) {
    decode(app, kIsoKwp, path);
}

void BR3ReceiveJ1850(App& app) {
    receive(app, kJ1850);
}

void BR3ReceiveISO(App& app) {
    receive(app, kIsoKwp);
}

void BR3DelayTick(App& app) {
    if (app.OBDIIHardware != kBr3) return;
    app.frmMain().BR3Delay.stop();
    if (app.ProtocolCode == "03" || app.ProtocolCode == "04") {
        BR3ReceiveISO(app);
    } else {
        BR3ReceiveJ1850(app);
    }
}

}  // namespace ketrel
