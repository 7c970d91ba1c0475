#include "link/kesh_request.h"

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
    Pid1C,
    Mode2List,
    FFCode,
    TroubleCodes,
    PendingCodes,
    CustomList
};

// KWP 2000 has no places for PIDs 20 and 40: they reach it only through the extended list.
constexpr std::array<Step, 12> kIsoOrder{Step::ClearCodes,   Step::FFData,       Step::Pid20,
                                         Step::Pid40,        Step::Mode5,        Step::Info,
                                         Step::Pid1C,        Step::Mode2List,    Step::FFCode,
                                         Step::TroubleCodes, Step::PendingCodes, Step::CustomList};
constexpr std::array<Step, 10> kKwpOrder{
    Step::ClearCodes, Step::FFData, Step::Mode5,        Step::Info,         Step::Pid1C,
    Step::Mode2List,  Step::FFCode, Step::TroubleCodes, Step::PendingCodes, Step::CustomList};

// The header of a frame of this many data bytes; on KWP the format byte counts them.
Br3Header headerFor(KeshLine line, std::size_t dataBytes) {
    if (line == KeshLine::Iso) return {0x68, 0x6A, 0xF1};
    return {std::uint8_t(0xC0 + dataBytes), 0x33, 0xF1};
}

// The index of the line's counters in KeshCount: the ISO and KWP slots.
std::size_t slotOf(KeshLine line) {
    return line == KeshLine::Iso ? 2 : 3;
}

std::string modeFrame(KeshLine line, std::uint8_t mode) {
    return KlineFrame(headerFor(line, 1), {mode});
}

std::string pidFrame(KeshLine line, std::uint8_t mode, std::uint8_t pid) {
    return KlineFrame(headerFor(line, 2), {mode, pid});
}

// A Mode 02 frame carries frame number 00.
std::string mode2Frame(KeshLine line, std::uint8_t pid) {
    return KlineFrame(headerFor(line, 3), {0x02, pid, 0x00});
}

SerialPort& scanPort(App& app) {
    return *app.frmMain().KeshMSComm;
}

// Sends a frame; false when the port failed (the chain then stops and the watchdog ends it).
bool send(App& app, const std::string& frame) {
    app.FrameOut = frame;
    try {
        scanPort(app).output(frame);
    } catch (const SerialError&) {
        return false;
    }
    app.LastRequestHex = BytesToHex(frame);
    return true;
}

bool sessionGone(App& app) {
    return ScanSessionGone(app, scanPort(app));
}

// Steps shared by every request: the port at the scan rate whatever a wake-up or a sweep left,
// the fields of the last answer emptied.
bool prepare(App& app) {
    FrmMain& m = app.frmMain();
    app.LastRequestHex.clear();
    try {
        SerialPort& p = scanPort(app);
        if (!p.portOpen()) p.setPortOpen(true);
        p.setRThreshold(0);
        p.setBaud(10400);
    } catch (const SerialError&) {
        return false;
    }
    m.Text2.setText("");
    m.txtKesh.setText("");
    app.RawFrame.clear();
    m.TimeOutConnect.start();
    return !sessionGone(app);
}

// The end of a request that didn't hand over. A path that sent nothing keeps the text of the
// frame before.
void finish(App& app, KeshLine line) {
    app.LastRequestHex = BytesToHex(app.FrameOut);
    int& index = app.KeshCount.PidIndex[slotOf(line)];
    index++;
    app.loop().pump();
    if (index >= 32) index = 1;
    app.frmMain().KeshDelay.start();
}

enum class Served { No, Sent, HandedOver, Failed };

Served sent(bool ok) {
    return ok ? Served::Sent : Served::Failed;
}

// A one-shot flag: lowered and its frame sent.
Served oneShot(App& app, bool& flag, const std::string& frame) {
    if (!flag) return Served::No;
    flag = false;
    return sent(send(app, frame));
}

// Mode 03 or Mode 07: the whole answer comes at once, and is given time.
Served serveCodes(App& app, KeshLine line, bool pending) {
    (pending ? app.PendingAnswered : app.TroubleAnswered) = false;
    (pending ? app.RequestPendingCodes : app.RequestTroubleCodes) = false;
    if (!send(app, modeFrame(line, pending ? 0x07 : 0x03))) return Served::Failed;
    BlockingSleep(app.loop(), 300);
    return Served::Sent;
}

Served serve(App& app, KeshLine line, Step step) {
    switch (step) {
        case Step::ClearCodes:
            return oneShot(app, app.RequestClearCodes, modeFrame(line, 0x04));
        case Step::FFData:
            if (!app.RequestFFData) return Served::No;
            if (app.FFPidsKnown) {
                KeshRequestFreeze(app, line);
                return Served::HandedOver;
            }
            return sent(send(app, mode2Frame(line, 0x00)));
        case Step::Pid20:
            return oneShot(app, app.RequestPid20, pidFrame(line, 0x01, 0x20));
        case Step::Pid40:
            return oneShot(app, app.RequestPid40, pidFrame(line, 0x01, 0x40));
        case Step::Mode5:
            if (!app.Mode5Requested) return Served::No;
            app.Mode5Requested = false;
            app.Mode5TestID = 1;
            app.frmMain().TimeOutConnect.stop();
            if (app.hooks.Mode5Sequence) app.hooks.Mode5Sequence();
            return Served::HandedOver;
        case Step::Info:
            if (!app.RequestInfo) return Served::No;
            app.frmMain().TimeOutConnect.stop();
            app.RequestInfo = false;
            if (!send(app, pidFrame(line, 0x09, 0x02))) return Served::Failed;
            BlockingSleep(app.loop(), 100);  // all five frames come at once
            return Served::Sent;
        case Step::Pid1C:
            return oneShot(app, app.KeshRequestPid1C, pidFrame(line, 0x01, 0x1C));
        case Step::Mode2List:
            return oneShot(app, app.KeshRequestMode2List, mode2Frame(line, 0x00));
        case Step::FFCode:
            if (!app.RequestFFCode) return Served::No;
            app.FFCodeAnswered = false;
            app.RequestFFCode = false;
            return sent(send(app, mode2Frame(line, 0x02)));
        case Step::TroubleCodes:
            return app.RequestTroubleCodes ? serveCodes(app, line, false) : Served::No;
        case Step::PendingCodes:
            return app.RequestPendingCodes ? serveCodes(app, line, true) : Served::No;
        case Step::CustomList:
            if (!app.CustomListActive) return Served::No;
            KeshRequestNew(app, line);
            return Served::HandedOver;
    }
    return Served::No;
}

// The live PIDs of the cycle: 1, 3 to 27 and 29 to 31; 28 is read once after the connect.
bool isCyclePid(int pid) {
    return pid == 1 || (pid >= 3 && pid <= 31 && pid != 0x1C);
}

// The PID cycle: the next PID the screen wants and the vehicle has. False when the chain stops.
bool servePidCycle(App& app, KeshLine line) {
    int& index = app.KeshCount.PidIndex[slotOf(line)];
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
    if (isCyclePid(index)) return send(app, pidFrame(line, 0x01, std::uint8_t(index)));
    return true;
}

}  // namespace

void KeshRequest(App& app, KeshLine line) {
    if (!prepare(app)) return;
    auto run = [&](const auto& order) {
        for (Step step : order) {
            switch (serve(app, line, step)) {
                case Served::No:
                    continue;
                case Served::Sent:
                    finish(app, line);
                    return;
                case Served::HandedOver:
                case Served::Failed:
                    return;
            }
        }
        if (servePidCycle(app, line)) finish(app, line);
    };
    if (line == KeshLine::Iso) {
        run(kIsoOrder);
    } else {
        run(kKwpOrder);
    }
}

void KeshRequestFreeze(App& app, KeshLine line) {
    int& index = app.KeshCount.FreezeIndex[slotOf(line)];
    if (index < 1 || index > 17) index = 1;
    bool sendNow = true;
    // PID 2 has its own one-shot.
    auto offered = [&] { return app.Mode2Supported[std::size_t(index)] && index != 2; };
    while (!offered()) {
        index++;
        if (app.Mode6Active || app.Mode5ManufActive || index >= 17) {
            sendNow = false;
            break;
        }
    }
    if (sendNow && !send(app, mode2Frame(line, std::uint8_t(index)))) return;
    index++;
    app.loop().pump();
    if (index >= 18) {
        app.RequestFFData = false;
        index = 1;
        KeshRequest(app, line);
        return;
    }
    app.frmMain().KeshDelay.start();
}

void KeshRequestNew(App& app, KeshLine line) {
    FrmMain& m = app.frmMain();
    if (!prepare(app)) return;
    if (!app.CustomListActive) {
        KeshRequest(app, line);
        return;
    }
    int& index = app.KeshCount.ExtendedIndex[slotOf(line)];
    auto finishNew = [&] {
        app.LastRequestHex = BytesToHex(app.FrameOut);
        index++;
        app.loop().pump();
        app.loop().pump();
        if (index >= 79) index = 33;
        m.KeshDelay.start();
    };
    if (app.RequestPid20 || app.RequestPid40) {
        const std::uint8_t pid = app.RequestPid20 ? 0x20 : 0x40;
        (app.RequestPid20 ? app.RequestPid20 : app.RequestPid40) = false;
        if (send(app, pidFrame(line, 0x01, pid))) finishNew();
        return;
    }
    if (app.ExtendedPIDCount == 0) {
        app.CustomListActive = false;
        KeshRequest(app, line);
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
    if (index != 0x40 && !send(app, pidFrame(line, 0x01, std::uint8_t(index)))) return;
    finishNew();
}

void KeshRequestNext(App& app) {
    if (app.ProtocolCode == "03") KeshRequest(app, KeshLine::Iso);
    if (app.ProtocolCode == "04") KeshRequest(app, KeshLine::Kwp);
}

}  // namespace ketrel
