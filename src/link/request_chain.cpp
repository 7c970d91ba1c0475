#include "link/request_chain.h"

#include "link/br3_frames.h"
#include "link/request_walk.h"
#include "link/serial_timing.h"
#include "screens/frm_main.h"

namespace ketrel {

namespace {

// The live PIDs of the cycle: 1 and 3 to 31 but 28, which the connect reads once.
bool isCyclePid(int pid) {
    return pid == 1 || (pid >= 3 && pid <= 31 && pid != 0x1C);
}

}  // namespace

bool RequestLine::send(const std::string& frame) {
    app.FrameOut = frame;
    try {
        port_.output(frame);
    } catch (const SerialError&) {
        return false;
    }
    // The K-line cables hear their own request again and strip it by this text.
    app.LastRequestHex = BytesToHex(frame);
    return true;
}

bool RequestLine::prepare() {
    app.frmMain().TimeOutConnect.start();
    return !ScanSessionGone(app, port_);
}

// The end of a request that didn't hand over. A path that sent nothing keeps the text of the
// frame before.
void RequestLine::finish() {
    app.LastRequestHex = BytesToHex(app.FrameOut);
    int& index = counters_.PidIndex[slot_];
    index++;
    app.loop().pump();
    if (index >= 32) index = 1;
    delay_.start();
}

Served RequestLine::oneShot(bool& flag, const std::string& frame) {
    if (!flag) return Served::No;
    flag = false;
    return sentOrFailed(send(frame));
}

Served RequestLine::serveInfo() {
    app.frmMain().TimeOutConnect.stop();
    app.RequestInfo = false;
    if (!send(pidFrame(0x09, 0x02))) return Served::Failed;
    BlockingSleep(app.loop(), 100);  // all five frames come at once
    return Served::Sent;
}

Served RequestLine::serveCodes(bool pending) {
    (pending ? app.PendingAnswered : app.TroubleAnswered) = false;
    (pending ? app.RequestPendingCodes : app.RequestTroubleCodes) = false;
    if (!send(modeFrame(pending ? 0x07 : 0x03))) return Served::Failed;
    BlockingSleep(app.loop(), 300);
    return Served::Sent;
}

Served RequestLine::serve(RequestStep step) {
    switch (step) {
        case RequestStep::ClearCodes:
            return oneShot(app.RequestClearCodes, modeFrame(0x04));
        case RequestStep::FFData:
            if (!app.RequestFFData) return Served::No;
            if (app.FFPidsKnown) {
                requestFreeze();
                return Served::HandedOver;
            }
            return sentOrFailed(send(mode2Frame(0x00, false)));
        case RequestStep::Pid20:
            return oneShot(app.RequestPid20, pidFrame(0x01, 0x20));
        case RequestStep::Pid40:
            return oneShot(app.RequestPid40, pidFrame(0x01, 0x40));
        case RequestStep::Mode5:
            if (!app.Mode5Requested) return Served::No;
            app.Mode5Requested = false;
            app.Mode5TestID = 1;
            app.frmMain().TimeOutConnect.stop();
            if (app.hooks.Mode5Sequence) app.hooks.Mode5Sequence();
            return Served::HandedOver;
        case RequestStep::Info:
            return app.RequestInfo ? serveInfo() : Served::No;
        case RequestStep::Pid1C:
            return oneShot(app.KeshRequestPid1C, pidFrame(0x01, 0x1C));
        case RequestStep::Mode2List:
            return oneShot(app.KeshRequestMode2List, mode2Frame(0x00, false));
        case RequestStep::CustomList:
            if (!app.CustomListActive) return Served::No;
            requestNew();
            return Served::HandedOver;
        case RequestStep::FFCode:
            if (!app.RequestFFCode) return Served::No;
            app.FFCodeAnswered = false;
            app.RequestFFCode = false;
            return sentOrFailed(send(mode2Frame(0x02, false)));
        case RequestStep::TroubleCodes:
            return app.RequestTroubleCodes ? serveCodes(false) : Served::No;
        case RequestStep::PendingCodes:
            return app.RequestPendingCodes ? serveCodes(true) : Served::No;
    }
    return Served::No;
}

// The PID cycle: the next PID the screen wants and the vehicle has. False when the chain stops.
bool RequestLine::servePidCycle() {
    int& index = counters_.PidIndex[slot_];
    if (index < 1 || index > 31) index = 1;
    bool leftForSweep = false;
    if (!WalkToWanted(
            app, port_, index, 1, 31, true, [&](int i) { return app.PidWanted[std::size_t(i)]; },
            &leftForSweep))
        return leftForSweep;
    if (index == 0x1C) index++;
    if (!WalkToWanted(
            app, port_, index, 1, 31, true,
            [&](int i) { return app.Mode1Supported[std::size_t(i)]; }, &leftForSweep))
        return leftForSweep;
    const std::vector<int> items = IndicatorItems(index);
    app.frmMain().Image1[index == 1 ? items.front() : items.back()].setPicture(kImgGreen);
    if (isCyclePid(index)) return send(cycleFrame(index));
    return true;
}

void RequestLine::request() {
    if (!prepare()) return;
    for (RequestStep step : order_) {
        switch (serve(step)) {
            case Served::No:
                continue;
            case Served::Sent:
                finish();
                return;
            case Served::HandedOver:
            case Served::Failed:
                return;
        }
    }
    if (servePidCycle()) finish();
}

void RequestLine::requestFreeze() {
    int& index = counters_.FreezeIndex[slot_];
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
    if (sendNow && !send(mode2Frame(std::uint8_t(index), true))) return;
    index++;
    app.loop().pump();
    if (index >= 18) {
        app.RequestFFData = false;
        index = 1;
        request();
        return;
    }
    delay_.start();
}

void RequestLine::requestNew() {
    if (!prepare()) return;
    if (!app.CustomListActive) {
        request();
        return;
    }
    int& index = counters_.ExtendedIndex[slot_];
    auto finishNew = [&] {
        app.LastRequestHex = BytesToHex(app.FrameOut);
        index++;
        app.loop().pump();
        // The slow lines' answers take a second turn to come in whole.
        if (!j1850_) app.loop().pump();
        if (index >= 79) index = 33;
        delay_.start();
    };
    if (app.RequestPid20 || app.RequestPid40) {
        const std::uint8_t pid = app.RequestPid20 ? 0x20 : 0x40;
        (app.RequestPid20 ? app.RequestPid20 : app.RequestPid40) = false;
        if (send(pidFrame(0x01, pid))) finishNew();
        return;
    }
    if (app.ExtendedPIDCount == 0) {
        app.CustomListActive = false;
        request();
        return;
    }
    if (index < 33 || index > 78) index = 33;
    if (!WalkToWanted(app, port_, index, 33, 78, false,
                      [&](int i) { return app.PidWanted[std::size_t(i)]; }))
        return;
    if (!WalkToWanted(app, port_, index, 33, 78, false,
                      [&](int i) { return app.Mode1Supported[std::size_t(i)]; }))
        return;
    app.frmNewPids().Image1[index - 32].setPicture(kImgGreen);
    // PID 40 has its own one-shot.
    if (index != 0x40 && !send(cycleFrame(index))) return;
    finishNew();
}

}  // namespace ketrel
