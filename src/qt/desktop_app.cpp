#include "qt/desktop_app.h"

#include <QCoreApplication>
#include <QMainWindow>

#include "core/application.h"
#include "core/startup.h"
#include "link/auto_detect.h"
#include "platform/ini_settings_store.h"
#include "qt/alert_window.h"
#include "qt/auto_detect_window.h"
#include "qt/main_window.h"
#include "qt/recorded_log_window.h"
#include "qt/settings_window.h"
#include "qt/sim_port_factory.h"
#include "recording/recorded_log.h"
#include "screens/frm_recorded_log.h"

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
