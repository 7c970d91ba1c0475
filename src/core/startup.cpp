#include "core/startup.h"

#include "obd/monitor_status.h"
#include "obd/pid_catalogue.h"
#include "obd/trouble_codes.h"
#include "obd/unit_captions.h"

#include "core/process_priority.h"
#include "core/settings_screen.h"
#include "core/shutdown.h"
#include "platform/text_convert.h"
#include "state/app.h"

namespace ketrel {

namespace {

const std::string kDisplayTail =
    "\nTo Change The Display Settings.  Goto To... \n\n* Option\n* Settings";

// A unit outside its two words is blanked, and a blank takes the default.
std::string limitUnit(const std::string& value, const char* a, const char* b) {
    if (value == a || value == b) return value;
    return a;
}

void applyDataStyle(App& app) {
    FrmMain& m = app.frmMain();
    if (app.DataStyle.empty() || Val(app.DataStyle) == 0) app.DataStyle = "1";
    if (app.DataStyle == "1" || app.DataStyle == "3") {
        m.mnuViewDefault.click();
    } else if (app.DataStyle == "2") {
        m.mnuViewStyleGrid.click();
    }
}

void applyTimeOut(App& app) {
    if (app.TimeOut < 10000 || app.TimeOut > 29000) {
        app.TimeOut = 10000;
        app.SaveSetting("TimeOut", std::to_string(app.TimeOut));
    }
    std::string text = std::to_string(app.TimeOut);
    if (Val(text.substr(text.size() - 3)) > 0) {
        app.TimeOut = long(Val(text.substr(0, 2) + "000"));
        app.SaveSetting("TimeOut", std::to_string(app.TimeOut));
    }
}

// The load of frmMain, after the priority is raised: settings, limits, tabs, display.
void loadMain(App& app) {
    FrmMain& m = app.frmMain();
    RaiseProcessPriority();
    for (int tab = 0; tab < 5; ++tab)
        m.SSTab1.setIcon(tab, "ImageList1(" + std::to_string(28 + tab) + ")");
    ReadStartupSettings(app);
    m.button(3).setEnabled(false);
    m.button(5).setEnabled(false);
    m.button(12).setEnabled(false);
    applyDataStyle(app);
    int delay = int(Val(app.BR3Delay));
    m.BR3Delay.setInterval(delay);
    m.KeshDelay.setInterval(delay);
    m.TimeOutConnect.setInterval(int(app.TimeOut));
    SetMainUnitCaptions(app);
    m.SSTab1.setTab(0);
    // The vehicle year list comes with the vehicle selector.
    FormatCodeGrids(app);
    ResetSupportGrids(app);
    ResetMonitorGrids(app);
    app.frmSettings().load();
    m.panel(kDisplayPanel)
        .setText("Display Setting:  " +
                 UpperCase(app.frmSettings().lblCurrentDisplaySettings.text()));
    m.panel(2).setPicture(kImgNotConnected);
    m.SplashScreen.start();
    CheckDisplay(app);
    app.SaveSetting("AppVer", kAppVersion);
    app.SaveSetting("AppPath", app.appPath().string());
}

}  // namespace

const std::string kDisplaySizeWarning =
    "Ketrel Is Best Viewed Using 1024 X 768 At High Or True Color." + kDisplayTail;
const std::string kDisplayColorWarning =
    "Ketrel Is Best Viewed Using High Or True Color." + kDisplayTail;

void ReadStartupSettings(App& app) {
    readInto(app.KeshStart, app.GetSetting("KESH Start", "1"), TextToLong);
    readInto(app.BR3Start, app.GetSetting("BR3 Start", "1"), TextToLong);
    readInto(app.ConnectLogEnabled, app.GetSetting("Log File", "True"), TextToBool);
    readInto(app.DisplaySet, app.GetSetting("DisplaySet"), TextToBool);
    app.Temp = app.GetSetting("Temp");
    app.Pressure = app.GetSetting("Pressure");
    app.Speed = app.GetSetting("Speed");
    app.ConnectPort = app.GetSetting("ConnectPort");
    app.OBDIIHardware = app.GetSetting("OBDIIHardware");
    readInto(app.TimeOut, app.GetSetting("TimeOut"), TextToLong);
    app.BR3Delay = app.GetSetting("BR3Delay");
    readInto(app.BR3SetDelay, app.GetSetting("BR3SetDelay"), TextToBool);
    app.DataStyle = app.GetSetting("DataStyle");

    if (app.KeshStart < 1 || app.KeshStart > 3) app.KeshStart = 1;
    if (app.BR3Start < 1 || app.BR3Start > 5) app.BR3Start = 1;
    double delay = Val(app.BR3Delay);
    if (delay < 125 || delay > 500) app.BR3Delay = "180";
    applyTimeOut(app);
    app.Pressure = limitUnit(app.Pressure, "PSI", "kPa");
    app.Speed = limitUnit(app.Speed, "MPH", "KPH");
    app.Temp = limitUnit(app.Temp, "F", "C");
    app.SaveSetting("Temp", app.Temp);
    app.SaveSetting("Speed", app.Speed);
    app.SaveSetting("Pressure", app.Pressure);
}

void CheckDisplay(App& app) {
    if (!app.DisplaySet) return;
    // A platform that could not measure the screen leaves the check out.
    if (app.DisplayWidth <= 0 || app.DisplayHeight <= 0) return;
    const std::string* text = nullptr;
    if (app.DisplayHeight < 768 || app.DisplayWidth < 1024) {
        text = &kDisplaySizeWarning;
    } else if (app.DisplayDepth < 16) {
        text = &kDisplayColorWarning;
    }
    if (!text) return;
    app.dialogs().show(
        MessageBox{kDisplayTitle, *text, MsgButtons::Ok, MsgIcon::Exclamation, true});
}

void InstallStartup(App& app) {
    FrmSplash& splash = app.frmSplash();
    FrmMain& m = app.frmMain();
    splash.onLoad = [&splash] { splash.setTopmost({100, 100, 493, 295}); };
    splash.onActivate = [&app, &splash, &m] {
        if (m.loaded()) return;
        splash.setEnabled(false);
        app.loop().pump();
        m.setEnabled(false);
        m.show();
    };
    m.onLoad = [&app] { loadMain(app); };
    m.SplashScreen.setHandler([&splash, &m] {
        m.SplashScreen.stop();
        splash.unload();
        m.setEnabled(true);
    });
    InstallShutdown(app);
}

void StartApplication(App& app) {
    app.frmSplash().show();
}

}  // namespace ketrel
