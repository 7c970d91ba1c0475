#include <cmath>
#include <memory>
#include <string>

#include "display/display_polling.h"
#include "display/gauge_angles.h"
#include "display/gauges.h"
#include "platform/text_convert.h"
#include "screens/frm_mult_guage.h"
#include "state/app.h"

namespace ketrel {

namespace {

// One dial: what it shows, its PID, the main screen's field, its readout and its needle.
struct DialRow {
    Dial dial;
    int pid;
    Field& (*source)(FrmMain&);
    int readout;  // Label1(n)
    int needle;   // Line1(n), on Picture1(n)
};
const DialRow kDials[] = {
    {Dial::Rpm, 12, [](FrmMain& m) -> Field& { return m.lblRPM; }, 9, 2},
    {Dial::FuelPressure, 10, [](FrmMain& m) -> Field& { return m.lblFuelPres; }, 10, 0},
    {Dial::Speed, 13, [](FrmMain& m) -> Field& { return m.lblSpeed; }, 11, 3},
    {Dial::IntakeAir, 15, [](FrmMain& m) -> Field& { return m.lblIntakeAir; }, 12, 1},
    {Dial::Coolant, 5, [](FrmMain& m) -> Field& { return m.lblCoolant; }, 13, 4},
};

// The numbers at the nine ticks of each dial.
const char* const* tickNumbers(Dial dial) {
    static const char* const rpm[9] = {"0", "1", "2", "3", "4", "5", "6", "7", "8"};
    static const char* const psiMph[9] = {"0", "15", "30", "45", "60", "75", "90", "105", "120"};
    static const char* const air[9] = {"0", "25", "50", "75", "100", "125", "150", "175", "200"};
    static const char* const coolant[9] = {"100", "125", "150", "175", "200",
                                           "225", "250", "275", "300"};
    switch (dial) {
        case Dial::Rpm:
            return rpm;
        case Dial::FuelPressure:
        case Dial::Speed:
            return psiMph;
        case Dial::IntakeAir:
            return air;
        case Dial::Coolant:
            return coolant;
    }
    return rpm;
}

const char* dialCaption(Dial dial) {
    switch (dial) {
        case Dial::Rpm:
            return "x1000 RPM";
        case Dial::FuelPressure:
            return "PSI";
        case Dial::Speed:
            return "MPH";
        case Dial::IntakeAir:
        case Dial::Coolant:
            return "Deg F";
    }
    return "";
}

const std::string& unitFor(App& app, Dial dial) {
    static const std::string none;
    switch (dial) {
        case Dial::FuelPressure:
            return app.Pressure;
        case Dial::Speed:
            return app.Speed;
        case Dial::IntakeAir:
        case Dial::Coolant:
            return app.Temp;
        case Dial::Rpm:
            break;
    }
    return none;
}

void setReadouts(FrmMultGuage& g, const char* text) {
    for (const DialRow& d : kDials)
        g.Label1[d.readout].setText(text);
}

void openMultGuage(App& app, FrmMultGuage& g) {
    app.unloadScreens({"frmRealDisplay"});
    if (app.Connected) {
        app.frmMain().setEnabled(false);
        NarrowPolling(app, g.SavedPidWanted, {5, 15, 10, 12, 13});
        g.PollingSaved = true;
    }
    for (const DialRow& d : kDials) {
        const auto ticks = DialTicks(d.dial);
        DrawDialFace(g.Picture1[d.needle], ticks.data(), tickNumbers(d.dial), 9,
                     dialCaption(d.dial));
    }
    for (int i = 0; i < 5; ++i) {
        LineShape& l = g.Line1[i];
        g.CX = l.x1();
        g.CY = l.y1();
        g.R = std::hypot(l.x2() - l.x1(), l.y2() - l.y1());
    }
    if (app.Connected) {
        // The lamp test runs first; the screen takes clicks once it is over.
        g.setEnabled(false);
        g.TimerDelay.start();
    }
}

void closeMultGuage(App& app, FrmMultGuage& g) {
    g.GuageStartTimer.stop();
    app.frmMain().setEnabled(true);
    if (g.PollingSaved) RestorePolling(app, g.SavedPidWanted, true);
    g.PollingSaved = false;
}

}  // namespace

FrmMultGuage* MultGuageScreen(App& app) {
    return dynamic_cast<FrmMultGuage*>(app.screenByName("frmMultGuage"));
}

void MultGuageTick(App& app) {
    FrmMultGuage* gp = MultGuageScreen(app);
    if (!gp) return;
    FrmMultGuage& g = *gp;
    app.loop().pump();
    for (const DialRow& d : kDials) {
        if (!app.Mode1Supported[std::size_t(d.pid)]) continue;
        const double v = Val(d.source(app.frmMain()).text());
        const std::string t = DialText(d.dial, v, unitFor(app, d.dial));
        g.Label1[d.readout].setText(t);
        if (auto angle = DialAngle(d.dial, DialClamp(d.dial, t))) {
            g.NeedleAngle[std::size_t(d.needle)] = *angle;
            PlaceNeedle(g.Line1[d.needle], g.CX, g.CY, g.R, *angle);
        }
    }
}

void InstallMultGuage(App& app) {
    if (!app.screenByName("frmMultGuage"))
        app.addScreen(std::make_unique<FrmMultGuage>(app.loop()));
    FrmMultGuage* gp = MultGuageScreen(app);
    if (!gp) return;
    FrmMultGuage& g = *gp;
    g.onLoad = [&app, &g] { openMultGuage(app, g); };
    g.onUnload = [&app, &g] { closeMultGuage(app, g); };
    g.TimerDelay.setHandler([&g] {
        g.TimerDelay.stop();
        g.TimerDelay2.start();
        setReadouts(g, "88888");
    });
    g.TimerDelay2.setHandler([&app, &g] {
        g.TimerDelay2.stop();
        setReadouts(g, "NA");
        if (!app.Connected) return;
        g.setEnabled(true);
        g.GuageStartTimer.start();
    });
    g.GuageStartTimer.setHandler([&app] { MultGuageTick(app); });
    g.mnuFileExit.onClick = [&g] { g.unload(); };
}

}  // namespace ketrel
