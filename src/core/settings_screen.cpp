#include "core/settings_screen.h"

#include "link/port_map.h"

#include "obd/unit_captions.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

#include "platform/text_convert.h"
#include "state/app.h"

namespace ketrel {

namespace {

const char* const kSelect = "-SELECT-";
const char* const kDefaultQuestion = "Are You Sure You Want To Load Default Settings";

// What the screen remembers between its handlers.
struct SettingsState {
    bool loading = false;  // the load mirrors the variables; that is not a change
    bool portChanged = false;
    bool interfaceChanged = false;
};

std::filesystem::path connectLogPath(App& app) {
    return app.appPath() / "Log" / "ConnLog.dat";
}

void setPair(Toggle& on, Toggle& off, bool value) {
    (value ? on : off).setValue(true);
}

void showUnits(App& app) {
    FrmSettings& s = app.frmSettings();
    setPair(s.optFarenheit, s.optCelcius, app.Temp != "C");
    setPair(s.optMiles, s.optKilometers, app.Speed != "KPH");
    setPair(s.optPSI, s.optKPA, app.Pressure != "kPa");
}

void showAlerts(App& app) {
    FrmSettings& s = app.frmSettings();
    setPair(s.optDisplayOn, s.optDisplayOff, app.DisplaySet);
    setPair(s.optMilOn, s.optMilOff, app.AlertOnMIL);
    setPair(s.optYES, s.optNO, app.SaveInfo);
}

void showSequence(App& app) {
    FrmSettings& s = app.frmSettings();
    Toggle* kwp[] = {&s.KWP1, &s.KWP2, &s.KWP3};
    Toggle* br[] = {&s.BR1, &s.BR2, &s.BR3, &s.BR4, &s.BR5};
    kwp[(app.KeshStart >= 1 && app.KeshStart <= 3) ? app.KeshStart - 1 : 0]->setValue(true);
    br[(app.BR3Start >= 1 && app.BR3Start <= 5) ? app.BR3Start - 1 : 0]->setValue(true);
}

// With AUTO the delay is chosen at connect, so the slider and its labels rest.
void showDelayControls(FrmSettings& s) {
    bool manual = !s.chkSetDelay.value();
    s.sldBR3Speed.setEnabled(manual);
    s.lblBR3Delay.setEnabled(manual);
    s.lblRecommend[0].setEnabled(manual);
}

void refreshLogSize(App& app) {
    std::error_code ec;
    auto size = std::filesystem::file_size(connectLogPath(app), ec);
    app.frmSettings().lblFileSize.setText(FileSizeText(ec ? 0 : size));
}

void fillDeviceLists(App& app) {
    FrmSettings& s = app.frmSettings();
    s.cmbPort.clear();
    s.cmbPort.addItem(kSelect);
    for (int port = 1; port <= 16; ++port)
        s.cmbPort.addItem(std::to_string(port));
    s.cmbPort.setText(app.ConnectPort.empty() ? kSelect : app.ConnectPort);
    s.cmbInterface.clear();
    for (const char* name : {kBr3, kDorvane, kKesh, kTactrix, kSelect})
        s.cmbInterface.addItem(name);
    s.cmbInterface.setText(app.OBDIIHardware.empty() ? kSelect : app.OBDIIHardware);
    s.cmbTimedOut.clear();
    for (int seconds = 10; seconds <= 29; ++seconds) {
        s.cmbTimedOut.addItem(std::to_string(seconds));
        app.loop().pump();
    }
    s.cmbTimedOut.setText(std::to_string(app.TimeOut / 1000));
}

void loadSettings(App& app, SettingsState& st) {
    FrmSettings& s = app.frmSettings();
    st = SettingsState{};
    st.loading = true;
    s.setTopmost({100, 100, 440, 470});
    s.sldBR3Speed.setValue(int(Val(app.BR3Delay)));
    s.lblBR3Delay.setText(std::to_string(s.sldBR3Speed.value()));
    s.lblRecommend[0].setText(RecommendedDelayText(s.sldBR3Speed.value()));
    s.chConLog.setValue(app.ConnectLogEnabled);
    showSequence(app);
    s.chkSetDelay.setValue(app.BR3SetDelay);
    showDelayControls(s);
    s.ck2ndConnect.setValue(app.SecondFrameConnect);
    showUnits(app);
    readInto(app.DisplaySet, app.GetSetting("DisplaySet"), TextToBool);
    readInto(app.AlertOnMIL, app.GetSetting("MilAlert"), TextToBool);
    readInto(app.SaveInfo, app.GetSetting("SaveInfo"), TextToBool);
    showAlerts(app);
    app.GetSetting("GameDisplay");
    fillDeviceLists(app);
    MeasureDisplay(app);
    refreshLogSize(app);
    s.cmdAutoDetect.setEnabled(app.screenByName("frmAutoDetect") != nullptr);
    for (Field* apply : {&s.cmdApplyUnits, &s.cmdApplyDevice, &s.cmdApplyOther, &s.cmdApplyKWP})
        apply->setEnabled(false);
    st.loading = false;
}

bool confirmDefaults(App& app) {
    return app.dialogs().message(kDefaultQuestion, "Confirm", MsgIcon::Question,
                                 MsgButtons::YesNo) == MsgAnswer::Yes;
}

// The port number a text names, 0 for none; a number beyond any port (from a hand-edited
// settings file) names none either.
int portNumberIn(const std::string& text) {
    const double number = Val(text);
    return number >= 1 && number <= 32767 ? int(number) : 0;
}

// The device the chosen port number goes to, beside the list.
void showDevicePath(App& app) {
    FrmSettings& s = app.frmSettings();
    int number = portNumberIn(s.cmbPort.text());
    std::string path;
    if (number > 0) {
        FixedSerialDeviceLister none;
        SerialDeviceLister* lister = app.platform.ports.deviceLister();
        path = PortDevicePath(app.platform.settings, lister ? *lister : none, number);
    }
    s.lblDevicePath.setText(number <= 0 ? "" : path.empty() ? "(no device)" : path);
    // The adapter's driver and latency, which decide whether a K-line wake-up can work.
    SerialAdapterInspector* adapters = app.platform.ports.adapterInspector();
    s.lblAdapter.setText(
        path.empty() || !adapters ? "" : "Adapter: " + DescribeAdapter(adapters->inspect(path)));
}

void applyDevice(App& app, SettingsState& st) {
    FrmSettings& s = app.frmSettings();
    FrmMain& m = app.frmMain();
    if ((st.portChanged || st.interfaceChanged) && s.cmbPort.text() != kSelect &&
        s.cmbInterface.text() != kSelect) {
        if (app.dialogs().message("Do You Really Want To Apply These Settings?", "Confirmation",
                                  MsgIcon::Question, MsgButtons::YesNo) != MsgAnswer::Yes)
            return;
    }
    app.OBDIIHardware = s.cmbInterface.text();
    app.ConnectPort = s.cmbPort.text();
    app.TimeOut = long(Val(s.cmbTimedOut.text())) * 1000;
    m.TimeOutConnect.setInterval(int(app.TimeOut));
    app.BR3Delay = std::to_string(s.sldBR3Speed.value());
    m.BR3Delay.setInterval(s.sldBR3Speed.value());
    m.KeshDelay.setInterval(s.sldBR3Speed.value());
    app.BR3SetDelay = s.chkSetDelay.value();
    app.SaveSetting("OBDIIHardware", app.OBDIIHardware);
    app.SaveSetting("ConnectPort", app.ConnectPort);
    app.SaveSetting("TimeOut", std::to_string(app.TimeOut));
    app.SaveSetting("BR3Delay", app.BR3Delay);
    app.SaveSetting("BR3SetDelay", BoolText(app.BR3SetDelay));
    // A device typed by the user becomes the device of the chosen port number.
    int number = portNumberIn(app.ConnectPort);
    if (number > 0 && !s.txtDevicePath.text().empty()) {
        SavePortDevicePath(app.platform.settings, number, s.txtDevicePath.text());
        s.txtDevicePath.setText("");
    }
    showDevicePath(app);
    st.portChanged = st.interfaceChanged = false;
    s.cmdApplyDevice.setEnabled(false);
}

void saveUnits(App& app) {
    app.SaveSetting("Temp", app.Temp);
    app.SaveSetting("Speed", app.Speed);
    app.SaveSetting("Pressure", app.Pressure);
}

void applyUnits(App& app) {
    FrmSettings& s = app.frmSettings();
    app.Temp = s.optCelcius.value() ? "C" : "F";
    app.Speed = s.optKilometers.value() ? "KPH" : "MPH";
    app.Pressure = s.optKPA.value() ? "kPa" : "PSI";
    saveUnits(app);
    SetMainUnitCaptions(app);
    SetExtendedUnitCaptions(app);
    s.cmdApplyUnits.setEnabled(false);
}

void saveAlerts(App& app) {
    app.SaveSetting("SaveInfo", BoolText(app.SaveInfo));
    app.SaveSetting("MilAlert", BoolText(app.AlertOnMIL));
    app.SaveSetting("DisplaySet", BoolText(app.DisplaySet));
}

void applyAlerts(App& app) {
    FrmSettings& s = app.frmSettings();
    app.DisplaySet = s.optDisplayOn.value();
    app.AlertOnMIL = s.optMilOn.value();
    app.SaveInfo = s.optYES.value();
    saveAlerts(app);
    s.cmdApplyOther.setEnabled(false);
}

void saveSequence(App& app) {
    app.SaveSetting("KESH Start", std::to_string(app.KeshStart));
    app.SaveSetting("BR3 Start", std::to_string(app.BR3Start));
}

void applySequence(App& app) {
    FrmSettings& s = app.frmSettings();
    Toggle* kwp[] = {&s.KWP1, &s.KWP2, &s.KWP3};
    Toggle* br[] = {&s.BR1, &s.BR2, &s.BR3, &s.BR4, &s.BR5};
    for (int i = 0; i < 3; ++i)
        if (kwp[i]->value()) app.KeshStart = i + 1;
    for (int i = 0; i < 5; ++i)
        if (br[i]->value()) app.BR3Start = i + 1;
    saveSequence(app);
    s.cmdApplyKWP.setEnabled(false);
}

void viewLog(App& app) {
    auto path = connectLogPath(app);
    if (!std::filesystem::exists(path)) {
        app.dialogs().message("There Is No Log To View", "Connecting Log", MsgIcon::Information);
        return;
    }
    app.platform.launcher.openTextFile(path.string());
}

void clearLog(App& app) {
    if (app.dialogs().message("Are You Sure You Want To Clear The Logs?", "Confirmation",
                              MsgIcon::Question, MsgButtons::YesNo) != MsgAnswer::Yes)
        return;
    std::error_code ec;
    std::filesystem::remove(connectLogPath(app), ec);
    if (ec) app.dialogs().message(ec.message(), "Error", MsgIcon::Stop);
    refreshLogSize(app);
}

// Any change of a page's options or lists switches on that page's Apply.
void enableOnChange(std::shared_ptr<SettingsState> st, Field& apply,
                    std::initializer_list<Toggle*> toggles) {
    for (Toggle* t : toggles) {
        t->onClick = [st, &apply] {
            if (!st->loading) apply.setEnabled(true);
        };
    }
}

void installDevicePage(App& app, std::shared_ptr<SettingsState> st) {
    FrmSettings& s = app.frmSettings();
    s.cmbPort.onChange = [st, &s, &app] {
        showDevicePath(app);
        if (st->loading) return;
        st->portChanged = true;
        s.cmdApplyDevice.setEnabled(true);
    };
    s.txtDevicePath.onChange = [st, &s] {
        if (!st->loading) s.cmdApplyDevice.setEnabled(true);
    };
    s.cmbInterface.onChange = [st, &s] {
        if (st->loading) return;
        st->interfaceChanged = true;
        s.cmdApplyDevice.setEnabled(true);
    };
    s.cmbTimedOut.onChange = [st, &s] {
        if (!st->loading) s.cmdApplyDevice.setEnabled(true);
    };
    s.chkSetDelay.onClick = [st, &s] {
        showDelayControls(s);
        if (!st->loading) s.cmdApplyDevice.setEnabled(true);
    };
    s.sldBR3Speed.onChange = [st, &s] {
        s.lblBR3Delay.setText(std::to_string(s.sldBR3Speed.value()));
        s.lblRecommend[0].setText(RecommendedDelayText(s.sldBR3Speed.value()));
        if (!st->loading) s.cmdApplyDevice.setEnabled(true);
    };
    s.cmdApplyDevice.onClick = [&app, st] { applyDevice(app, *st); };
}

// The probe needs the ports to itself: the screens that hold one go first.
void openAutoDetect(App& app) {
    Screen* detect = app.screenByName("frmAutoDetect");
    if (!detect) return;
    app.unloadScreens({"frmConnecting", "frmSettings"});
    detect->show();
}

void installDefaults(App& app) {
    FrmSettings& s = app.frmSettings();
    s.cmdDefault.onClick = [&app, &s] {
        if (!confirmDefaults(app)) return;
        app.Temp = "F";
        app.Speed = "MPH";
        app.Pressure = "PSI";
        saveUnits(app);
        showUnits(app);
        SetMainUnitCaptions(app);
        SetExtendedUnitCaptions(app);
        s.cmdApplyUnits.setEnabled(false);
    };
    s.cmdDefault1.onClick = [&app, &s] {
        if (!confirmDefaults(app)) return;
        app.DisplaySet = app.AlertOnMIL = app.SaveInfo = true;
        saveAlerts(app);
        showAlerts(app);
        s.cmdApplyOther.setEnabled(false);
    };
    s.cmdDefault2.onClick = [&app, &s] {
        if (!confirmDefaults(app)) return;
        app.KeshStart = app.BR3Start = 1;
        saveSequence(app);
        showSequence(app);
        s.cmdApplyKWP.setEnabled(false);
    };
}

}  // namespace

std::string FileSizeText(std::uintmax_t bytes) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f KB", double(bytes) / 1024.0);
    return text;
}

std::string RecommendedDelayText(int ms) {
    if (ms >= 220 && ms <= 230) return "Recommended ISO 9141";
    if (ms >= 145 && ms <= 155) return "Recommended VPW/PWM";
    return "";
}

void InstallSettingsScreen(App& app) {
    FrmSettings& s = app.frmSettings();
    auto st = std::make_shared<SettingsState>();
    s.onLoad = [&app, st] { loadSettings(app, *st); };
    enableOnChange(
        st, s.cmdApplyUnits,
        {&s.optFarenheit, &s.optCelcius, &s.optMiles, &s.optKilometers, &s.optPSI, &s.optKPA});
    enableOnChange(
        st, s.cmdApplyOther,
        {&s.optDisplayOn, &s.optDisplayOff, &s.optMilOn, &s.optMilOff, &s.optYES, &s.optNO});
    enableOnChange(st, s.cmdApplyKWP,
                   {&s.KWP1, &s.KWP2, &s.KWP3, &s.BR1, &s.BR2, &s.BR3, &s.BR4, &s.BR5});
    installDevicePage(app, st);
    s.cmdApplyUnits.onClick = [&app] { applyUnits(app); };
    s.cmdApplyOther.onClick = [&app] { applyAlerts(app); };
    s.cmdApplyKWP.onClick = [&app] { applySequence(app); };
    installDefaults(app);
    s.chConLog.onClick = [&app, st, &s] {
        if (st->loading) return;
        app.ConnectLogEnabled = s.chConLog.value();
        app.SaveSetting("Log File", BoolText(app.ConnectLogEnabled));
    };
    s.ck2ndConnect.onClick = [&app, st, &s] {
        if (st->loading) return;
        app.SecondFrameConnect = s.ck2ndConnect.value();
    };
    s.SSTab1.onClick = [&app, &s](int) {
        if (s.SSTab1.tab() == 3) refreshLogSize(app);
    };
    s.Command1.onClick = [&app] { viewLog(app); };
    s.cmdAutoDetect.onClick = [&app] { openAutoDetect(app); };
    s.Command2.onClick = [&app] { clearLog(app); };
    for (Field* close : {&s.cmdClose0, &s.cmdClose1, &s.cmdClose2, &s.cmdClose3, &s.cmdClose4})
        close->onClick = [&s] { s.unload(); };
    InstallDisplayPage(app);
}

}  // namespace ketrel
