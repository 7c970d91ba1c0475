#include "display/scope.h"

#include <cmath>
#include <memory>
#include <string>
#include <utility>

#include "display/display_polling.h"
#include "display/scope_scale.h"
#include "obd/number_text.h"
#include "platform/text_convert.h"
#include "screens/frm_scope.h"
#include "state/app.h"

namespace ketrel {

namespace {

constexpr std::int64_t kScopeBack = 0x000000;
constexpr std::int64_t kGridColor = 0xFF0000;
constexpr std::int64_t kTraceColor = 0x00FF00;
// Each sample moves the trace this many pixels.
constexpr int kScopeStep = 4;

// The menu entries of the pop-up with the PID each draws.
std::vector<std::pair<MenuItem*, int>> pidEntries(FrmScope& s) {
    std::vector<std::pair<MenuItem*, int>> v{
        {&s.mnuLoad, 4},   {&s.mnuFuelPressure, 10}, {&s.mnuMAP, 11}, {&s.mnuRPM, 12},
        {&s.mnuSpeed, 13}, {&s.mnuTiming, 14},       {&s.mnuMAF, 16}, {&s.mnuThrottle, 17}};
    auto o2 = s.o2Entries();
    for (int i = 0; i < 8; ++i)
        v.emplace_back(o2[std::size_t(i)], kScopeFirstO2 + i);
    return v;
}

bool pid1D(App& app) {
    return app.Mode1Supported[29];
}

void openScope(App& app, FrmScope& s) {
    app.unloadScreens({"frmRealDisplay"});
    for (std::size_t i = 0; i < s.SavedPidWanted.size(); ++i)
        s.SavedPidWanted[i] = app.PidWanted[i];
    for (auto [entry, pid] : pidEntries(s))
        entry->setEnabled(app.Mode1Supported[std::size_t(pid)]);
    auto o2 = s.o2Entries();
    for (int i = 0; i < 8; ++i)
        o2[std::size_t(i)]->setCaption(ScopeO2Caption(kScopeFirstO2 + i, pid1D(app)));
}

// The first activation starts the sampling; it runs until the screen closes.
void activateScope(App& app, FrmScope& s) {
    app.frmMain().setEnabled(false);
    if (s.ScopeRunning) return;
    s.ScopeRunning = true;
    SAMPLER(app, 75);
}

void closeScope(App& app, FrmScope& s) {
    app.frmMain().setEnabled(true);
    s.ScopeRunning = false;
    s.SampleTimer.stop();
    RestorePolling(app, s.SavedPidWanted, false);
}

// The current value keeps the highest and lowest seen; a decimal comma reads as a point.
void valueChanged(FrmScope& s) {
    if (s.lblValue.text() == "N/A") return;
    s.ScopeLabelText = s.lblValue.text();
    for (char& c : s.ScopeLabelText)
        if (c == ',') c = '.';
    const double v = Val(s.ScopeLabelText);
    if (v > s.ScopeMax) {
        s.ScopeMax = float(v);
        s.lblMax.setText(plain(v));
    }
    if (v < s.ScopeMin) {
        s.ScopeMin = float(v);
        s.lblMin.setText(plain(v));
    }
}

// Steps along the row of speeds; at either end nothing happens.
void changeSpeed(App& app, FrmScope& s, int step) {
    auto at = ScopeSpeedIndex(s.lblSpeed.text());
    if (!at) return;
    const long next = long(*at) + step;
    if (next < 0 || next >= long(kScopeSpeeds.size())) return;
    const ScopeSpeed& speed = kScopeSpeeds[std::size_t(next)];
    s.lblSpeed.setText(speed.caption);
    SAMPLER(app, speed.periodMs);
}

void showPidMenu(App& app, FrmScope& s) {
    if (!app.Connected) {
        for (MenuItem* m : s.mnuView.children())
            m->setEnabled(false);
    }
    if (s.popupMenu) s.popupMenu(s.mnuView);
}

}  // namespace

FrmScope* ScopeScreen(App& app) {
    return dynamic_cast<FrmScope*>(app.screenByName("frmScope"));
}

Field* ScopeSourceField(FrmMain& m, int pid) {
    switch (pid) {
        case 4:
            return &m.lblLoad;
        case 10:
            return &m.lblFuelPres;
        case 11:
            return &m.lblMAP;
        case 12:
            return &m.lblRPM;
        case 13:
            return &m.lblSpeed;
        case 14:
            return &m.lblTiming;
        case 16:
            return &m.lblMAF;
        case 17:
            return &m.lblTps;
    }
    Field* o2[8] = {&m.lblO2b1s1, &m.lblO2b1s2, &m.lblO2b1s3, &m.lblO2b1s4,
                    &m.lblO2b2s1, &m.lblO2b2s2, &m.lblO2b2s3, &m.lblO2b2s4};
    if (pid >= kScopeFirstO2 && pid < kScopeFirstO2 + 8) return o2[pid - kScopeFirstO2];
    return nullptr;
}

void PrepareScopePicture(FrmScope& s) {
    s.ScopeWidth = s.Signal.width();
    s.ScopeHeight = s.Signal.height();
    s.ScopeUnit = float(s.ScopeHeight) / 256;
    s.ScopeLastY = -1;
    s.Signal.clear(kScopeBack);
    double y = s.ScopeHeight - 1;
    for (int i = 0; i < 10; ++i) {
        s.Signal.line(0, y, s.ScopeWidth, y, kGridColor);
        y -= s.ScopeHeight / 10.0;
    }
}

void SAMPLER(App& app, int period) {
    FrmScope* s = ScopeScreen(app);
    if (!s) return;
    s->ScopeSample = 0;
    PrepareScopePicture(*s);
    s->ScopeWidth -= kScopeStep;
    s->ScopePeriod = period;
    // The samples come at the period with the event loop free in between.
    s->SampleTimer.setInterval(period);
    s->SampleTimer.restart();
}

void TakeScopeSample(App& app) {
    FrmScope* sp = ScopeScreen(app);
    if (!sp) return;
    FrmScope& s = *sp;
    if (!s.ScopeRunning) {
        s.SampleTimer.stop();
        return;
    }
    if (auto pid = ScopePidByName(s.lblScopePID.text())) {
        const ScopeScale* scale = FindScopeScale(*pid, app.Pressure, app.Speed);
        Field* source = ScopeSourceField(app.frmMain(), *pid);
        if (scale && source && source->text() != "N/A") {
            s.ScopeSample = float(ScopeScaleValue(scale->rule, source->text()));
            s.lblValue.setText(source->text());
        }
    }
    s.Signal.scrollLeft(kScopeStep);
    const int x1 = s.ScopeWidth - 5, x2 = s.ScopeWidth - 1;
    s.ScopeY = int(std::nearbyint((254 - s.ScopeSample) * s.ScopeUnit)) - 1;
    if (s.ScopeLastY != -1) s.Signal.line(x1, s.ScopeLastY, x2, s.ScopeY, kTraceColor);
    s.ScopeLastY = s.ScopeY;
}

void ChooseScopePid(App& app, int pid) {
    FrmScope* sp = ScopeScreen(app);
    if (!sp) return;
    FrmScope& s = *sp;
    for (std::size_t i = 0; i < s.SavedPidWanted.size(); ++i)
        app.PidWanted[i] = false;
    app.PidWanted[std::size_t(pid)] = true;
    s.lblScopePID.setText(ScopePidName(pid, pid1D(app)));
    if (const ScopeScale* scale = FindScopeScale(pid, app.Pressure, app.Speed)) {
        Field* captions[6] = {&s.lbl0, &s.lbl1, &s.lbl2, &s.lbl3, &s.lbl4, &s.lbl5};
        for (std::size_t i = 0; i < 6; ++i)
            captions[i]->setText(scale->captions[i]);
        s.lblUnits.setText(scale->units);
    }
    s.lblMin.setText("N/A");
    s.lblMax.setText("N/A");
    s.lblValue.setText("N/A");
    s.ScopeSample = 0;
    s.ScopeMin = 11000;
    s.ScopeMax = 0;
    s.cmdIncrease.setEnabled(true);
    s.cmdDecrease.setEnabled(true);
}

void InstallScope(App& app) {
    if (!app.screenByName("frmScope")) app.addScreen(std::make_unique<FrmScope>(app.loop()));
    // A screen of that name that is not the scope (a stand-in) is left as it is.
    FrmScope* sp = ScopeScreen(app);
    if (!sp) return;
    FrmScope& s = *sp;
    s.onLoad = [&app, &s] { openScope(app, s); };
    s.onActivate = [&app, &s] { activateScope(app, s); };
    s.onUnload = [&app, &s] { closeScope(app, s); };
    s.SampleTimer.setHandler([&app] { TakeScopeSample(app); });
    s.lblValue.onChange = [&s] { valueChanged(s); };
    s.cmdIncrease.onClick = [&app, &s] { changeSpeed(app, s, +1); };
    s.cmdDecrease.onClick = [&app, &s] { changeSpeed(app, s, -1); };
    s.cmdPIDSAvailable.onClick = [&app, &s] { showPidMenu(app, s); };
    s.mnuFileExit.onClick = [&s] { s.unload(); };
    for (auto [entry, pid] : pidEntries(s)) {
        const int chosen = pid;
        entry->onClick = [&app, chosen] { ChooseScopePid(app, chosen); };
    }
}

}  // namespace ketrel
