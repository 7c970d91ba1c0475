#include "core/application.h"

#include <memory>

#include "core/data_tab.h"
#include "core/ff_report.h"
#include "core/session.h"

#include "codes/terms_glossary.h"
#include "codes/trouble_code_browser.h"
#include "core/help_about.h"
#include "core/log_csv_export.h"
#include "core/main_menus.h"
#include "core/main_screen.h"
#include "core/settings_screen.h"
#include "core/startup.h"
#include "core/vehicle_selector.h"
#include "display/displays.h"
#include "display/gauges.h"
#include "display/scope.h"
#include "link/auto_detect.h"
#include "recording/recorded_log.h"
#include "recording/recorder.h"
#include "screens/frm_auto_detect.h"
#include "screens/frm_mode5.h"
#include "screens/frm_mode5_manuf.h"
#include "screens/frm_recorded_log.h"
#include "state/app.h"
#include "sweeps/mode5_manuf.h"
#include "sweeps/mode5_tests.h"
#include "sweeps/mode6_sweep.h"

namespace ketrel {

void InstallApplication(App& app) {
    if (!app.screenByName("frmAutoDetect"))
        app.addScreen(std::make_unique<FrmAutoDetect>(app.loop(), app.platform.ports));
    InstallAutoDetect(app);
    if (!app.screenByName("frmRecordedLog"))
        app.addScreen(std::make_unique<FrmRecordedLog>(app.loop()));
    InstallRecordedLog(app);
    InstallLogCsvExport(app);
    if (!app.screenByName("frmMode5")) app.addScreen(std::make_unique<FrmMode5>(app.loop()));
    if (!app.screenByName("frmMode5Manuf"))
        app.addScreen(std::make_unique<FrmMode5Manuf>(app.loop()));
    InstallMode5(app);
    InstallMode5Manuf(app);
    InstallMode6(app);
    InstallTroubleCodeBrowser(app);
    InstallTermsGlossary(app);
    app.hooks.Connect = [&app] { ConnectSession(app); };
    InstallDataTab(app);
    InstallStartup(app);
    InstallSettingsScreen(app);
    InstallMainMenus(app);
    InstallRecorder(app);
    InstallHelpAbout(app);
    InstallSession(app);
    InstallDisplays(app);
    InstallScope(app);
    InstallGauges(app);
    InstallFreezeFrameReport(app);
    InstallMainScreen(app);
    InstallVehicleSelector(app);
}

}  // namespace ketrel
