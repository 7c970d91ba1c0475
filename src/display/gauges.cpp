#include "display/gauges.h"

#include <cmath>
#include <memory>
#include <string>

#include "display/display_polling.h"
#include "display/gauge_angles.h"
#include "platform/text_convert.h"
#include "screens/frm_guage.h"
#include "state/app.h"

namespace ketrel {

namespace {

constexpr std::int64_t kFaceBack = 0x101418;
constexpr std::int64_t kFaceInk = 0xE8E8E8;
constexpr int kRpmPid = 12;

// The tachometer's face: a tick at each thousand and the scale's numbers beside them.
void drawRpmFace(FrmGuage& g) {
    double angles[12];
    const char* numbers[12];
    std::string texts[12];
    for (int k = 0; k < 12; ++k) {
        angles[k] = 1.71 + 0.5 * k;
        texts[k] = k == 0 ? "0" : g.Label1[11 + k].text();
        numbers[k] = texts[k].c_str();
    }
    DrawDialFace(g.Dial, angles, numbers, 12, "x1000 RPM");
}

void openGuage(App& app, FrmGuage& g) {
    app.frmMain().setEnabled(false);
    app.unloadScreens({"frmRealDisplay"});
    SetGuageScale(app, "1");
    g.mnuViewUpward.setChecked(true);
    g.mnuViewSolid.setChecked(false);
    g.CX = g.Line4.x1();
    g.CY = g.Line4.y1();
    g.R = std::hypot(g.Line4.x2() - g.Line4.x1(), g.Line4.y2() - g.Line4.y1());
    NarrowPolling(app, g.SavedPidWanted, {kRpmPid});
    g.Timer1.start();
}

void closeGuage(App& app, FrmGuage& g) {
    app.frmMain().setEnabled(true);
    RestorePolling(app, g.SavedPidWanted, true);
}

void setFill(FrmGuage& g, bool solid) {
    g.mnuViewSolid.setChecked(solid);
    g.mnuViewUpward.setChecked(!solid);
    for (Shape* bar : {&g.BarLow, &g.BarMid, &g.BarHigh})
        bar->setFillStyle(solid ? FillStyle::Solid : FillStyle::UpwardDiagonal);
}

}  // namespace

FrmGuage* GuageScreen(App& app) {
    return dynamic_cast<FrmGuage*>(app.screenByName("frmGuage"));
}

void PlaceNeedle(LineShape& needle, double cx, double cy, double r, double angle) {
    needle.setEnd(cx + r * std::cos(angle), cy + r * std::sin(angle));
}

void DrawDialFace(PictureBox& face, const double* angles, const char* const* numbers, int count,
                  const char* caption) {
    const double cx = face.width() / 2.0, cy = face.height() / 2.0;
    const double outer = std::min(cx, cy) - 6;
    face.clear(kFaceBack);
    // The ring from the first tick to the last, in short chords.
    const double from = angles[0], to = angles[count - 1];
    const int chords = 48;
    for (int i = 0; i < chords; ++i) {
        const double a = from + (to - from) * i / chords, b = from + (to - from) * (i + 1) / chords;
        face.line(cx + outer * std::cos(a), cy + outer * std::sin(a), cx + outer * std::cos(b),
                  cy + outer * std::sin(b), kFaceInk, 2);
    }
    const int point = face.width() >= 300 ? 12 : 8;
    for (int i = 0; i < count; ++i) {
        const double c = std::cos(angles[i]), s = std::sin(angles[i]);
        face.line(cx + outer * c, cy + outer * s, cx + (outer - outer / 7) * c,
                  cy + (outer - outer / 7) * s, kFaceInk, 2);
        if (numbers[i][0] == '\0') continue;
        // The number sits inside its tick, centred on the tick's direction.
        const double at = outer - outer / 7 - point * 1.6;
        const double w = point * 0.62 * double(std::char_traits<char>::length(numbers[i]));
        face.text(cx + at * c - w / 2, cy + at * s - point * 0.7, numbers[i], kFaceInk, point);
    }
    const double w = point * 0.62 * double(std::char_traits<char>::length(caption));
    face.text(cx - w / 2, cy + outer / 3, caption, kFaceInk, point);
}

void SetGuageScale(App& app, const char* scale) {
    FrmGuage* gp = GuageScreen(app);
    if (!gp) return;
    FrmGuage& g = *gp;
    const RpmGaugeScale& s = FindRpmGaugeScale(scale);
    g.mnuViewBig.setChecked(s.scale == std::string("1"));
    g.mnuViewMid.setChecked(s.scale == std::string("2"));
    g.mnuViewSmall.setChecked(s.scale == std::string("3"));
    g.GaugeScale = s.scale;
    for (int i = 0; i < 11; ++i)
        g.Label1[12 + i].setText(s.numbers[std::size_t(i)]);
    drawRpmFace(g);
}

void GuageTick(App& app) {
    FrmGuage* gp = GuageScreen(app);
    if (!gp) return;
    FrmGuage& g = *gp;
    g.GaugeRPM = std::lround(Val(app.frmMain().lblRPM.text()));
    if (g.GaugeRPM < 1) g.GaugeRPM = 0;
    if (g.GaugeRPM == 0) return;
    if (g.GaugeRPM >= 11000) g.GaugeRPM = 11000;
    const std::string shown = std::to_string(g.GaugeRPM);
    if (g.lblRPM[27].text() == shown) return;
    const RpmBars bars = RpmGaugeBars(g.GaugeRPM, FindRpmGaugeScale(g.GaugeScale));
    g.BarLow.setVisible(true);
    g.BarLow.setWidthTwips(bars.low);
    g.BarMid.setVisible(bars.midShown);
    if (bars.midShown) g.BarMid.setWidthTwips(bars.mid);
    g.BarHigh.setVisible(bars.highShown);
    if (bars.highShown) g.BarHigh.setWidthTwips(bars.high);
    g.lblRPM[27].setForeColor(bars.color);
    g.GaugeAngle = float(RpmGaugeAngle(g.GaugeRPM));
    g.lblRPM[27].setText(shown);
    PlaceNeedle(g.Line4, g.CX, g.CY, g.R, g.GaugeAngle);
}

void InstallGauges(App& app) {
    InstallMultGuage(app);
    if (!app.screenByName("frmGuage")) app.addScreen(std::make_unique<FrmGuage>(app.loop()));
    // A screen of that name that is not the tachometer (a stand-in) is left as it is.
    FrmGuage* gp = GuageScreen(app);
    if (!gp) return;
    FrmGuage& g = *gp;
    g.onLoad = [&app, &g] { openGuage(app, g); };
    g.onUnload = [&app, &g] { closeGuage(app, g); };
    g.Timer1.setHandler([&app] { GuageTick(app); });
    g.mnuFileExit.onClick = [&g] { g.unload(); };
    g.mnuViewBig.onClick = [&app] { SetGuageScale(app, "1"); };
    g.mnuViewMid.onClick = [&app] { SetGuageScale(app, "2"); };
    g.mnuViewSmall.onClick = [&app] { SetGuageScale(app, "3"); };
    g.mnuViewSolid.onClick = [&g] { setFill(g, true); };
    g.mnuViewUpward.onClick = [&g] { setFill(g, false); };
}

}  // namespace ketrel
