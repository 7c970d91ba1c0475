#include "core/main_screen.h"

#include <filesystem>
#include <functional>
#include <initializer_list>

#include "display/display_polling.h"
#include "obd/monitor_status.h"
#include "state/app.h"

namespace ketrel {

namespace {

// How long an indicator click lets replies in flight land, in seconds.
constexpr double kIndicatorSettle = 0.2;

// A control of the main window that needs a screen of its own; `opens` when its click does
// nothing but show that screen.
struct ScreenEntry {
    Control& control;
    const char* screen;
    bool opens;
};

std::vector<ScreenEntry> screenEntries(FrmMain& m) {
    std::vector<ScreenEntry> v{
        {m.mnuFileOpen, "frmRecordedLog", false},
        {m.mnuFilePrintFF, "frmPrintFF", false},
        {m.cmdPrintFFData, "frmPrintFF", false},
        {m.mnuEditPlay, "frmRecorder", false},
        {m.mnuEditStop, "frmRecorder", false},
        {m.mnuEditRecord, "frmRecorder", false},
        {m.tbController, "frmRecorder", false},
        {m.mnuViewGuage, "frmGuage", true},
        {m.tbGuage, "frmGuage", false},
        {m.mnuViewMultiGuage, "frmMultGuage", true},
        {m.tbMultiGuage, "frmMultGuage", false},
        {m.mnuViewScope, "frmScope", true},
        {m.tbScope, "frmScope", false},
        {m.mnuViewMode5, "frmMode5", false},
        {m.tbMode5, "frmMode5", false},
        {m.mnuViewMode6, "frmMode6", false},
        {m.tbMode6, "frmMode6", false},
        {m.mnuViewMPG, "frmMPG", true},
        // Resets the averages that the fuel-economy screen keeps.
        {m.mnuViewResetMPG, "frmMPG", false},
        {m.mnuViewCodes, "frmTroubleCode", true},
        {m.tbDTC, "frmTroubleCode", false},
        {m.mnuViewTerms, "frmTerms", true},
        {m.mnuOptionList, "frmCustomData", false},
        {m.tbCustom, "frmCustomData", false},
        {m.mnuHelpHelp, "frmHelp", true},
        {m.mnuHelpAbout, "frmAbout", true},
    };
    for (MenuItem* large : m.mnuViewRealTime.children())
        v.push_back({*large, "frmRealDisplay", false});
    return v;
}

// Controls that only work with a session: off from the start until LinkUp turns them on, as
// EndSession leaves them.
std::vector<Control*> sessionOnlyControls(FrmMain& m) {
    std::vector<Control*> v{&m.mnuVehicleDisconnect,
                            &m.button(3),
                            &m.button(5),
                            &m.button(12),
                            &m.button(14),
                            &m.button(15),
                            &m.cmdClearCodes,
                            &m.cmdRequestFF,
                            &m.cmdRequestTC,
                            &m.cmdRequestPending,
                            &m.cmdRequestInfo,
                            &m.cmdPrintFFData,
                            &m.mnuVehicleClear,
                            &m.mnuVehicleRequestFF,
                            &m.mnuVehicleRequestTC,
                            &m.mnuVehicleRequestPending,
                            &m.mnuVehicleInfo,
                            &m.mnuOptionList,
                            &m.mnuEditRecord,
                            &m.mnuViewMode5,
                            &m.mnuViewMode6,
                            &m.mnuAboutHardware,
                            &m.mnuFilePrintFF,
                            &m.mnuViewMPG,
                            &m.mnuViewResetMPG};
    for (MenuItem* large : m.mnuViewRealTime.children())
        v.push_back(large);
    return v;
}

std::vector<Control*> debugFields(FrmMain& m) {
    return {&m.LogData,       &m.Text2,    &m.txtInputDORVANE, &m.txtInputBR3, &m.txtKesh,
            &m.lstRecordData, &m.Command4, &m.lstPendingCodes, &m.lstCodes,    &m.lstFreezeCodes};
}

void showScreen(App& app, const std::string& name) {
    if (Screen* s = app.screenByName(name)) s->show();
}

// A toolbar button that does what a menu entry does runs the entry's handler as it stands at
// the click, so a screen added later only has to set the entry's.
std::function<void()> runEntry(MenuItem& entry) {
    return [&entry] {
        if (entry.onClick) entry.onClick();
    };
}

// Keeps a control off while its screen is missing, whoever turns it on.
void guardControl(App& app, Control& control, std::string screen) {
    if (app.screenByName(screen)) return;
    control.setEnabled(false);
    control.markDesign();
    control.observe([&app, &control, screen] {
        if (control.enabled() && !app.screenByName(screen)) control.setEnabled(false);
    });
}

void openModeScreen(App& app, const char* screen) {
    if (ModeTestsAvailable(app.OBDIIHardware, app.ProtocolCode)) showScreen(app, screen);
}

void installToolbar(App& app) {
    FrmMain& m = app.frmMain();
    // "Connect" and "Disconnect" belong to the session logic.
    m.tbController.onClick = runEntry(m.mnuEditRecord);
    m.tbScope.onClick = [&app] { showScreen(app, "frmScope"); };
    m.tbCustom.onClick = runEntry(m.mnuOptionList);
    m.tbDTC.onClick = runEntry(m.mnuViewCodes);
    m.tbGuage.onClick = runEntry(m.mnuViewGuage);
    m.tbMode6.onClick = runEntry(m.mnuViewMode6);
    m.tbMode5.onClick = runEntry(m.mnuViewMode5);
    m.tbMultiGuage.onClick = runEntry(m.mnuViewMultiGuage);
}

void installMenus(App& app) {
    FrmMain& m = app.frmMain();
    m.mnuEditPidsOver.onClick = [&m] {
        m.mnuEditPidsOver.setChecked(!m.mnuEditPidsOver.checked());
    };
    m.mnuViewMode5.onClick = [&app] { openModeScreen(app, "frmMode5"); };
    m.mnuViewMode6.onClick = [&app] { openModeScreen(app, "frmMode6"); };
    m.mnuOptionData.onClick = [&app] {
        if (app.OBDIIHardware != kDorvane) app.frmNewPids().show();
    };
    m.mnuAboutHardware.onClick = [&app] {
        // The text converter is asked for its firmware again, for the screen to show.
        app.RequestFirmware = true;
        showScreen(app, "frmAboutHardware");
    };
    m.mnuHelpHistory.onClick = [&app] { OpenSystemText(app, "KetrelHistory.txt"); };
    m.mnuHelpRequirement.onClick = [&app] { OpenSystemText(app, "Requirement.txt"); };
    for (const ScreenEntry& e : screenEntries(m)) {
        if (!e.opens || e.control.kind() != ControlKind::Menu) continue;
        std::string screen = e.screen;
        static_cast<MenuItem&>(e.control).onClick = [&app, screen] { showScreen(app, screen); };
    }
}

}  // namespace

void IndicatorClick(App& app, int item) {
    FrmMain& m = app.frmMain();
    if (!m.mnuEditPidsOver.checked() || !app.Connected) return;
    const int pid = IndicatorPid(item);
    if (pid < 0 || pid >= int(app.Mode1Supported.size())) return;
    const auto at = std::size_t(pid);
    const bool turnOff = app.Mode1Supported[at];
    app.PidWanted[at] = !turnOff;
    app.Mode1Supported[at] = !turnOff;
    if (turnOff) ClearMainData(app);
    // Off is red, but the status PID 01 is marked yellow: its lamp and code count still stand.
    const char* picture = !turnOff ? kImgGreen : pid == 1 ? kImgYellow : kImgRed;
    for (int i : IndicatorItems(pid))
        m.Image1[i].setPicture(picture);
    SettleWait(app, kIndicatorSettle);
}

void ToggleDebugFields(App& app) {
    FrmMain& m = app.frmMain();
    const bool show = !m.LogData.visible();
    for (Control* c : debugFields(m))
        c->setVisible(show);
}

void OpenSystemText(App& app, const std::string& fileName) {
    const std::filesystem::path path = app.appPath() / "System" / fileName;
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec)) {
        app.dialogs().show(MessageBox{"Error", "The file " + path.string() + " could not be found.",
                                      MsgButtons::Ok, MsgIcon::Exclamation, false});
        return;
    }
    if (!app.platform.launcher.openTextFile(path.string())) {
        app.dialogs().show(
            MessageBox{"Error", "No text viewer could be started to show " + path.string() + ".",
                       MsgButtons::Ok, MsgIcon::Exclamation, false});
    }
}

bool ModeTestsAvailable(const std::string& hardware, const std::string& protocolCode) {
    auto oneOf = [&protocolCode](std::initializer_list<const char*> codes) {
        for (const char* c : codes)
            if (protocolCode == c) return true;
        return false;
    };
    if (hardware == kBr3) return oneOf({"01", "02", "03", "04"});
    if (hardware == kKesh || hardware == kTactrix) return oneOf({"03", "04"});
    return false;
}

std::string ScreenNeededBy(App& app, const Control& control) {
    for (const ScreenEntry& e : screenEntries(app.frmMain()))
        if (&e.control == &control) return e.screen;
    return "";
}

void InstallMainScreen(App& app) {
    FrmMain& m = app.frmMain();
    for (Control* c : sessionOnlyControls(m)) {
        c->setEnabled(false);
        c->markDesign();
    }
    // Every indicator starts red, as the end of a session leaves them.
    for (int item = 0; item <= kLastIndicator; ++item) {
        m.Image1[item].setPicture(kImgRed);
        m.Image1[item].markDesign();
    }
    installMenus(app);
    installToolbar(app);
    for (int item = 0; item <= kLastIndicator; ++item)
        m.Image1[item].onClick = [&app, item] { IndicatorClick(app, item); };
    m.Command1.onClick = [&app] { ToggleDebugFields(app); };
    m.Command4.onClick = [&app] { ClearDisplay(app); };
    for (const ScreenEntry& e : screenEntries(m))
        guardControl(app, e.control, e.screen);
}

}  // namespace ketrel
