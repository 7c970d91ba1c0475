#include "qt/desktop_app.h"

#include <QCoreApplication>
#include <QMainWindow>

#include "codes/terms_glossary.h"
#include "codes/trouble_code_browser.h"
#include "core/application.h"
#include "core/help_about.h"
#include "core/startup.h"
#include "link/auto_detect.h"
#include "platform/ini_settings_store.h"
#include "qt/alert_window.h"
#include "qt/auto_detect_window.h"
#include "qt/code_library_windows.h"
#include "qt/display_windows.h"
#include "qt/graph_windows.h"
#include "qt/help_windows.h"
#include "qt/main_window.h"
#include "qt/mode5_windows.h"
#include "qt/mode6_window.h"
#include "qt/recorded_log_window.h"
#include "qt/recorder_windows.h"
#include "qt/settings_window.h"
#include "qt/sim_port_factory.h"
#include "recording/recorded_log.h"
#include "screens/frm_guage.h"
#include "screens/frm_help.h"
#include "screens/frm_input_record_name.h"
#include "screens/frm_mult_guage.h"
#include "screens/frm_recorded_log.h"
#include "screens/frm_recorder.h"
#include "screens/frm_scope.h"
#include "screens/frm_terms.h"
#include "screens/frm_trouble_code.h"
#include "sweeps/mode5_manuf.h"
#include "sweeps/mode5_tests.h"
#include "sweeps/mode6_sweep.h"

namespace ketrel {

DesktopApp::DesktopApp(DesktopOptions o) {
    if (!o.settings) {
        ownSettings_ = std::make_unique<IniSettingsStore>(o.configRoot);
        o.settings = ownSettings_.get();
    }
    if (!o.ports) {
        ownPorts_ = std::make_unique<SimPortFactory>(loop_, *o.settings, devices_);
        o.ports = ownPorts_.get();
    }
    app_ = std::make_unique<App>(Platform{loop_, o.dialogs ? *o.dialogs : qtDialogs_, *o.settings,
                                          launcher_, display_, *o.ports, o.appPath});
    app_->printer = &printer_;
    InstallApplication(*app_);
    windows_ = std::make_unique<WindowManager>(*app_);
    windows_->registerView("frmMain", [this](Screen&) { return MakeMainWindow(app_->frmMain()); });
    windows_->registerView("frmSettings",
                           [this](Screen&) { return MakeSettingsWindow(app_->frmSettings()); });
    windows_->registerView("frmSplash",
                           [this](Screen&) { return MakeSplashWindow(app_->frmSplash()); });
    windows_->registerView("frmAlertMIL",
                           [this](Screen&) { return MakeAlertWindow(app_->frmAlertMIL()); });
    if (FrmAutoDetect* detect = AutoDetectScreen(*app_))
        windows_->registerView("frmAutoDetect",
                               [detect](Screen&) { return MakeAutoDetectWindow(*detect); });
    if (FrmRecordedLog* logs = RecordedLogScreen(*app_))
        windows_->registerView("frmRecordedLog",
                               [logs](Screen&) { return MakeRecordedLogWindow(*logs); });
    windows_->registerView("frmRecorder", [](Screen& s) {
        auto* r = dynamic_cast<FrmRecorder*>(&s);
        return r ? MakeRecorderWindow(*r) : MakeGenericWindow(s);
    });
    windows_->registerView("frmInputRecordName", [](Screen& s) {
        auto* d = dynamic_cast<FrmInputRecordName*>(&s);
        return d ? MakeSaveNameWindow(*d) : MakeGenericWindow(s);
    });
    if (FrmMode5* mode5 = Mode5Screen(*app_))
        windows_->registerView("frmMode5", [mode5](Screen&) { return MakeMode5Window(*mode5); });
    if (FrmMode5Manuf* manuf = Mode5ManufScreen(*app_))
        windows_->registerView("frmMode5Manuf",
                               [manuf](Screen&) { return MakeMode5ManufWindow(*manuf); });
    if (FrmMode6* mode6 = Mode6Screen(*app_))
        windows_->registerView("frmMode6", [mode6](Screen&) { return MakeMode6Window(*mode6); });
    RegisterDisplayViews(*windows_, *app_);
    windows_->registerView("frmScope",
                           [](Screen& s) { return MakeScopeWindow(static_cast<FrmScope&>(s)); });
    windows_->registerView("frmGuage",
                           [](Screen& s) { return MakeGuageWindow(static_cast<FrmGuage&>(s)); });
    windows_->registerView("frmMultGuage", [](Screen& s) {
        return MakeMultGuageWindow(static_cast<FrmMultGuage&>(s));
    });
    if (FrmTroubleCode* codes = TroubleCodeScreen(*app_))
        windows_->registerView("frmTroubleCode",
                               [codes](Screen&) { return MakeTroubleCodeWindow(*codes); });
    if (FrmTerms* terms = TermsScreen(*app_))
        windows_->registerView("frmTerms", [terms](Screen&) { return MakeTermsWindow(*terms); });
    if (FrmHelp* help = HelpScreen(*app_))
        windows_->registerView("frmHelp", [this, help](Screen&) {
            return MakeHelpWindow(*help, app_->appPath() / "Help");
        });
    if (FrmAbout* about = AboutScreen(*app_))
        windows_->registerView("frmAbout", [about](Screen&) { return MakeAboutWindow(*about); });
    if (FrmAboutHardware* hw = AboutHardwareScreen(*app_))
        windows_->registerView("frmAboutHardware",
                               [hw](Screen&) { return MakeAboutHardwareWindow(*hw); });
    windows_->adoptScreens();
    // The program ends with its main window.
    app_->frmMain().observe([this] {
        if (!app_->frmMain().loaded() && app_->AppClosing)
            QMetaObject::invokeMethod(QCoreApplication::instance(), "quit", Qt::QueuedConnection);
    });
}

DesktopApp::~DesktopApp() {
    windows_.reset();  // the windows observe the screens: they go first
}

void DesktopApp::start() {
    StartApplication(*app_);
}

}  // namespace ketrel
