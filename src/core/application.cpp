#include "core/application.h"

#include <memory>

#include "core/data_tab.h"
#include "core/ff_report.h"
#include "core/session.h"

#include "core/log_csv_export.h"
#include "core/main_menus.h"
#include "core/main_screen.h"
#include "core/settings_screen.h"
#include "core/startup.h"
#include "core/vehicle_selector.h"
#include "link/auto_detect.h"
#include "recording/recorded_log.h"
#include "screens/frm_auto_detect.h"
#include "screens/frm_recorded_log.h"
#include "state/app.h"

namespace ketrel {

void InstallApplication(App& app) {
    if (!app.screenByName("frmAutoDetect"))
        app.addScreen(std::make_unique<FrmAutoDetect>(app.loop(), app.platform.ports));
    InstallAutoDetect(app);
    if (!app.screenByName("frmRecordedLog"))
        app.addScreen(std::make_unique<FrmRecordedLog>(app.loop()));
    InstallRecordedLog(app);
    InstallLogCsvExport(app);
    app.hooks.Connect = [&app] { ConnectSession(app); };
    InstallDataTab(app);
    InstallStartup(app);
    InstallSettingsScreen(app);
    InstallMainMenus(app);
    InstallSession(app);
    InstallFreezeFrameReport(app);
    InstallMainScreen(app);
    InstallVehicleSelector(app);
}

}  // namespace ketrel
