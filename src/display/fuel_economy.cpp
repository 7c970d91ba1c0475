#include "display/fuel_economy.h"

#include <system_error>

#include "display/display_polling.h"
#include "obd/number_text.h"
#include "screens/frm_mpg.h"
#include "state/app.h"

namespace ketrel {

namespace {

constexpr double kStoichiometric = 14.7;
constexpr double kGramsPerKilogram = 1000;
constexpr double kSecondsPerHour = 60 * 60;
constexpr double kLitresToGallons = 0.26417;

constexpr const char* kAddFailed = "Error Occurred While Added Instant Value to Database";

FrmMPG& screenOf(App& app) {
    return *dynamic_cast<FrmMPG*>(app.screenByName("frmMPG"));
}

void errorBox(App& app, const std::string& title, const std::string& text) {
    app.dialogs().show(MessageBox{title, text, MsgButtons::Ok, MsgIcon::Stop, false});
}

// Opens the sample table and reads it once, so a damaged file shows here and not later.
bool openStore(App& app, FrmMPG& s) {
    SqlRows rows;
    if (s.store.open(MpgStorePath(app.appPath())) &&
        s.store.query("SELECT COUNT(*) FROM SampleP1", {}, rows))
        return true;
    std::string why = s.store.error();
    s.store.close();
    errorBox(app, "ERROR", why.empty() ? "The sample table could not be opened." : why);
    return false;
}

void addSample(App& app, FrmMPG& s) {
    if (!s.store.isOpen()) return;  // it failed to open: the screen runs without samples
    if (!s.store.exec("INSERT INTO SampleP1 (MPGp1) VALUES (?)", {s.lblInstMPG.text()}))
        errorBox(app, "Error", kAddFailed);
}

void openScreen(App& app, FrmMPG& s) {
    app.AppClosing = false;
    const char* unit = app.Speed == "KPH" ? "Km/L" : "MPG";
    s.Label1[1].setText(unit);
    s.Label1[2].setText(unit);
    openStore(app, s);
    app.frmMain().setEnabled(false);
    app.unloadScreens({"frmRealDisplay"});
    s.MPGScreenOpen = true;
    s.MPGResetting = false;
    SavePolling(app);
    for (int pid : {7, 13, 16})
        app.PidWanted[std::size_t(pid)] = true;
    if (app.Mode1Supported[9]) app.PidWanted[9] = true;
    s.Timer1.start();
}

void closeScreen(App& app, FrmMPG& s) {
    s.Timer1.stop();
    app.AppClosing = true;
    RestorePolling(app);
    s.MPGScreenOpen = false;
    app.frmMain().setEnabled(true);
}

}  // namespace

std::string InstantMpg(const MpgInputs& in) {
    const double speed = Val(in.speed), maf = Val(in.maf);
    if (!(speed > 0) || !(maf > 0)) return "-";
    const double t1 = Val(in.ltb1) / 100, t2 = Val(in.ltb2) / 100;
    double fuel = maf * kSecondsPerHour / kGramsPerKilogram / kStoichiometric;  // kg (as L) / h
    if (in.mph) fuel *= kLitresToGallons;
    const double f1 = 1 + t1;
    const double f2 = in.secondBank ? 1 + t2 : 1;
    return fix1(speed / fuel * f1 * f2);
}

std::filesystem::path MpgStorePath(const std::filesystem::path& appPath) {
    return appPath / "System" / "MPGAve1.db";
}

std::filesystem::path MpgTemplatePath(const std::filesystem::path& appPath) {
    return appPath / "System" / "CreateMPGAve1.db";
}

void MpgAfterMAF(App& app) {
    auto* screen = dynamic_cast<FrmMPG*>(app.screenByName("frmMPG"));
    if (!screen || !app.PidWanted[13] || !app.PidWanted[7] || !screen->MPGScreenOpen) return;
    FrmMPG& s = *screen;
    FrmMain& m = app.frmMain();
    const std::string figure =
        InstantMpg({m.lblSpeed.text(), m.lblMAF.text(), m.lblLTB1.text(), m.lblLTB2.text(),
                    app.Speed == "MPH", app.Mode1Supported[9]});
    s.lblInstMPG.setText(figure);
    if (figure == "-" || s.MPGResetting) return;
    addSample(app, s);
}

void MpgAverage(App& app) {
    FrmMPG& s = screenOf(app);
    SqlRows rows;
    if (!s.store.isOpen() || !s.store.query("SELECT MPGp1 FROM SampleP1", {}, rows) || rows.empty())
        return;
    double sum = 0;
    for (const auto& row : rows) {
        sum += Val(row.empty() ? "" : row[0]);
        app.loop().pump();
        if (app.AppClosing) return;
    }
    s.lblMPGAve.setText(fix1(sum / double(rows.size())));
}

void ResetMpg(App& app) {
    FrmMPG& s = screenOf(app);
    s.MPGResetting = true;
    const bool wasOpen = s.store.isOpen();
    s.store.close();
    const auto store = MpgStorePath(app.appPath()), blank = MpgTemplatePath(app.appPath());
    std::error_code ec;
    std::filesystem::remove(store, ec);
    if (!ec && std::filesystem::exists(blank, ec))
        std::filesystem::copy_file(blank, store, std::filesystem::copy_options::overwrite_existing,
                                   ec);
    if (ec) errorBox(app, "ERROR", ec.message());
    s.MPGResetting = false;
    if (wasOpen) openStore(app, s);
}

void InstallFuelEconomy(App& app) {
    auto* screen = dynamic_cast<FrmMPG*>(app.screenByName("frmMPG"));
    if (!screen) return;
    FrmMPG& s = *screen;
    s.onLoad = [&app, &s] { openScreen(app, s); };
    s.onUnload = [&app, &s] { closeScreen(app, s); };
    s.Timer1.setHandler([&app] { MpgAverage(app); });
    app.AfterLiveMAF = [&app] { MpgAfterMAF(app); };
    app.frmMain().mnuViewResetMPG.onClick = [&app] { ResetMpg(app); };
}

}  // namespace ketrel
