#include "link/br3_request.h"

#include <array>
#include <cstdint>

#include "link/br3_frames.h"
#include "link/request_walk.h"
#include "link/serial_timing.h"
#include "platform/serial_port.h"
#include "screens/frm_main.h"
#include "state/app.h"

namespace ketrel {
namespace {

// The one-shot flags and the cycle, in the places the request routines test them.
enum class Step {
    ClearCodes,
    FFData,
    Pid20,
    Pid40,
    Mode5,
    Info,
    CustomList,
    FFCode,
    TroubleCodes,
    PendingCodes
};

constexpr std::array<Step, 10> kJ1850Order{
    Step::ClearCodes, Step::FFData,     Step::Pid20,  Step::Pid40,        Step::Mode5,
    Step::Info,       Step::CustomList, Step::FFCode, Step::TroubleCodes, Step::PendingCodes};
constexpr std::array<Step, 10> kIsoKwpOrder{
    Step::ClearCodes, Step::FFData, Step::Pid20,        Step::Pid40,        Step::Mode5,
    Step::Info,       Step::FFCode, Step::TroubleCodes, Step::PendingCodes, Step::CustomList};

// What differs between the four protocols' request routines.
struct LineRow {
    Br3Family family;
    Br3Header header;   // of one-shot frames, and the header the check of every frame uses
    bool kwp;           // the format byte follows the number of data bytes
    std::size_t slot;   // index of the per-protocol counters
    std::size_t j1850;  // index of the J1850 frame counters
};

constexpr std::array<LineRow, 4> kLines{{
    {Br3Family::J1850, {0x61, 0x6A, 0xF1}, false, 0, 0},
    {Br3Family::J1850, {0x68, 0x6A, 0xF1}, false, 1, 1},
    {Br3Family::IsoKwp, {0x68, 0x6A, 0xF1}, false, 2, 0},
    {Br3Family::IsoKwp, {0xC2, 0x33, 0xF1}, true, 3, 0},
}};

const LineRow& rowOf(Br3Line line) {
    return kLines[std::size_t(line)];
}

bool isJ1850(const LineRow& row) {
    return row.family == Br3Family::J1850;
}

// The header written whole for a frame of this many data bytes.
Br3Header headerFor(const LineRow& row, std::size_t dataBytes) {
    Br3Header h = row.header;
    if (row.kwp) h[0] = std::uint8_t(0xC0 + dataBytes);
    return h;
}

// A one-shot frame: one data byte (mode) with the trailing byte n on J1850.
std::string modeFrame(const LineRow& row, std::uint8_t mode, std::uint8_t trailing = 1) {
    return Br3Frame(row.family, headerFor(row, 1), {mode}, trailing);
}

// Mode and PID, header written whole.
std::string pidFrame(const LineRow& row, std::uint8_t mode, std::uint8_t pid,
                     std::uint8_t trailing = 1) {
    return Br3Frame(row.family, headerFor(row, 2), {mode, pid}, trailing);
}

// A Mode 02 frame: on ISO and KWP it carries frame number 00.
std::string mode2Frame(const LineRow& row, std::uint8_t pid, const std::string& wireHeader) {
    if (isJ1850(row)) return pidFrame(row, 0x02, pid);
    Br3Header check = headerFor(row, 3);
    return Br3Frame(row.family, HeaderFromText(wireHeader, check), check, {0x02, pid, 0x00});
}

// A Mode 01 PID of the cycles goes out on the header the connect left in FrameHeader.
std::string cycleFrame(const App& app, const LineRow& row, int pid) {
    Br3Header check = headerFor(row, 2);
    return Br3Frame(row.family, HeaderFromText(app.FrameHeader, check), check,
                    {0x01, std::uint8_t(pid)});
}

SerialPort& scanPort(App& app) {
    return *app.frmMain().BR3MSComm;
}

// Sends a frame on the scan port; false when the port failed (the chain then stops).
bool send(App& app, const std::string& frame) {
    app.FrameOut = frame;
    try {
        scanPort(app).output(frame);
        return true;
    } catch (const SerialError&) {
        return false;
    }
}

bool sessionGone(App& app) {
    return ScanSessionGone(app, scanPort(app));
}

// The end of a request that didn't hand over: the index moves on and the timer is armed.
void finish(App& app, const LineRow& row) {
    int& index = app.Br3Count.PidIndex[row.slot];
    index++;
    app.loop().pump();
    if (index >= 32) index = 1;
    app.frmMain().BR3Delay.start();
}

enum class Served { No, Sent, HandedOver, Failed };

Served serveInfo(App& app, const LineRow& row) {
    FrmMain& m = app.frmMain();
    if (isJ1850(row)) {
        int& frame = app.Br3Count.VinFrame[row.j1850];
        if (frame >= 5) frame = 0;
        frame++;
        m.TimeOutConnect.stop();
        if (!send(app, pidFrame(row, 0x09, 0x02, std::uint8_t(frame)))) return Served::Failed;
        if (frame == 5) app.RequestInfo = false;
        return Served::Sent;
    }
    m.TimeOutConnect.stop();
    app.RequestInfo = false;
    if (!send(app, pidFrame(row, 0x09, 0x02))) return Served::Failed;
    BlockingSleep(app.loop(), 100);  // the slow lines send all five frames at once
    return Served::Sent;
}

// Mode 03 or Mode 07. J1850 asks one frame a tick; the slow lines get the whole answer at once.
Served serveCodes(App& app, const LineRow& row, bool pending) {
    FrmMain& m = app.frmMain();
    (pending ? app.PendingAnswered : app.TroubleAnswered) = false;
    (pending ? app.RequestPendingCodes : app.RequestTroubleCodes) = false;
    const std::uint8_t mode = pending ? 0x07 : 0x03;
    if (!isJ1850(row)) {
        if (!send(app, modeFrame(row, mode))) return Served::Failed;
        BlockingSleep(app.loop(), 300);
        return Served::Sent;
    }
    int& frame = (pending ? app.Br3Count.PendingFrame : app.Br3Count.CodeFrame)[row.j1850];
    frame++;
    if (!send(app, modeFrame(row, mode, std::uint8_t(frame)))) return Served::Failed;
    if (frame >= 3) frame = 0;
    // A vehicle with few codes is asked for the first frame every time.
    if ((pending ? m.lstPendingCodes : m.lstCodes).count() < 3) frame = 0;
    return Served::Sent;
}

Served serve(App& app, Br3Line line, Step step) {
    const LineRow& row = rowOf(line);
    switch (step) {
        case Step::ClearCodes:
            if (!app.RequestClearCodes) return Served::No;
            app.RequestClearCodes = false;
            return send(app, modeFrame(row, 0x04)) ? Served::Sent : Served::Failed;
        case Step::FFData:
            if (!app.RequestFFData) return Served::No;
            if (app.FFPidsKnown) {
                BR3RequestFreeze(app, line);
                return Served::HandedOver;
            }
            return send(app, mode2Frame(row, 0x00, {})) ? Served::Sent : Served::Failed;
        case Step::Pid20:
            if (!app.RequestPid20) return Served::No;
            app.RequestPid20 = false;
            return send(app, pidFrame(row, 0x01, 0x20)) ? Served::Sent : Served::Failed;
        case Step::Pid40:
            if (!app.RequestPid40) return Served::No;
            app.RequestPid40 = false;
            return send(app, pidFrame(row, 0x01, 0x40)) ? Served::Sent : Served::Failed;
        case Step::Mode5:
            if (!app.Mode5Requested) return Served::No;
            app.Mode5Requested = false;
            app.Mode5TestID = 1;
            app.frmMain().TimeOutConnect.stop();
            if (app.hooks.Mode5Sequence) app.hooks.Mode5Sequence();
            return Served::HandedOver;
        case Step::Info:
            return app.RequestInfo ? serveInfo(app, row) : Served::No;
        case Step::CustomList:
            if (!app.CustomListActive) return Served::No;
            BR3RequestNew(app, line);
            return Served::HandedOver;
        case Step::FFCode:
            if (!app.RequestFFCode) return Served::No;
            app.FFCodeAnswered = false;
            app.RequestFFCode = false;
            return send(app, mode2Frame(row, 0x02, {})) ? Served::Sent : Served::Failed;
        case Step::TroubleCodes:
            return app.RequestTroubleCodes ? serveCodes(app, row, false) : Served::No;
        case Step::PendingCodes:
            return app.RequestPendingCodes ? serveCodes(app, row, true) : Served::No;
    }
    return Served::No;
}

// The live PIDs of the cycle: 1 and 3 to 31 but 28, which the connect reads once.
bool isCyclePid(int pid) {
    return pid == 1 || (pid >= 3 && pid <= 31 && pid != 0x1C);
}

// The PID cycle: the next PID the screen wants and the vehicle has. False when the chain stops.
bool servePidCycle(App& app, const LineRow& row) {
    int& index = app.Br3Count.PidIndex[row.slot];
    if (index < 1 || index > 31) index = 1;
    bool leftForSweep = false;
    if (!WalkToWanted(
            app, scanPort(app), index, 1, 31, true,
            [&](int i) { return app.PidWanted[std::size_t(i)]; }, &leftForSweep))
        return leftForSweep;
    if (index == 0x1C) index++;
    if (!WalkToWanted(
            app, scanPort(app), index, 1, 31, true,
            [&](int i) { return app.Mode1Supported[std::size_t(i)]; }, &leftForSweep))
        return leftForSweep;
    const std::vector<int> items = IndicatorItems(index);
    app.frmMain().Image1[index == 1 ? items.front() : items.back()].setPicture(kImgGreen);
    if (isCyclePid(index)) return send(app, cycleFrame(app, row, index));
    return true;
}

}  // namespace

Br3Line Br3LineFor(const std::string& protocolCode) {
    if (protocolCode == "01") return Br3Line::Vpw;
    if (protocolCode == "03") return Br3Line::Iso;
    if (protocolCode == "04" || protocolCode == "04SLOW") return Br3Line::Kwp;
    return Br3Line::Pwm;
}

void BR3Request(App& app, Br3Line line) {
    const LineRow& row = rowOf(line);
    app.frmMain().TimeOutConnect.start();
    if (sessionGone(app)) return;
    for (Step step : isJ1850(row) ? kJ1850Order : kIsoKwpOrder) {
        switch (serve(app, line, step)) {
            case Served::No:
                continue;
            case Served::Sent:
                finish(app, row);
                return;
            case Served::HandedOver:
            case Served::Failed:
                return;
        }
    }
    if (servePidCycle(app, row)) finish(app, row);
}

void BR3RequestFreeze(App& app, Br3Line line) {
    const LineRow& row = rowOf(line);
    int& index = app.Br3Count.FreezeIndex[row.slot];
    if (index < 1 || index > 17) index = 1;
    bool sendNow = true;
    auto offered = [&] { return app.Mode2Supported[std::size_t(index)] && index != 2; };
    // PID 2 has its own one-shot.
    while (!offered()) {
        index++;
        if (app.Mode6Active || app.Mode5ManufActive || index >= 17) {
            sendNow = false;
            break;
        }
    }
    if (sendNow && !send(app, mode2Frame(row, std::uint8_t(index),
                                         row.kwp ? app.FrameHeader3 : std::string())))
        return;
    index++;
    app.loop().pump();
    if (index >= 18) {
        app.RequestFFData = false;
        index = 1;
        BR3Request(app, line);
        return;
    }
    app.frmMain().BR3Delay.start();
}

void BR3RequestNew(App& app, Br3Line line) {
    const LineRow& row = rowOf(line);
    FrmMain& m = app.frmMain();
    m.TimeOutConnect.start();
    if (sessionGone(app)) return;
    if (!app.CustomListActive) {
        BR3Request(app, line);
        return;
    }
    int& index = app.Br3Count.ExtendedIndex[row.slot];
    auto finishNew = [&] {
        index++;
        app.loop().pump();
        if (!isJ1850(row)) app.loop().pump();
        if (index >= 79) index = 33;
        m.BR3Delay.start();
    };
    if (app.RequestPid20 || app.RequestPid40) {
        const std::uint8_t pid = app.RequestPid20 ? 0x20 : 0x40;
        (app.RequestPid20 ? app.RequestPid20 : app.RequestPid40) = false;
        if (send(app, pidFrame(row, 0x01, pid))) finishNew();
        return;
    }
    if (app.ExtendedPIDCount == 0) {
        app.CustomListActive = false;
        BR3Request(app, line);
        return;
    }
    if (index < 33 || index > 78) index = 33;
    if (!WalkToWanted(app, scanPort(app), index, 33, 78, false,
                      [&](int i) { return app.PidWanted[std::size_t(i)]; }))
        return;
    if (!WalkToWanted(app, scanPort(app), index, 33, 78, false,
                      [&](int i) { return app.Mode1Supported[std::size_t(i)]; }))
        return;
    app.frmNewPids().Image1[index - 32].setPicture(kImgGreen);
    // PID 40 has its own one-shot.
    if (index != 0x40 && !send(app, cycleFrame(app, row, index))) return;
    finishNew();
}

}  // namespace ketrel
