#include "core/application.h"

#include <memory>

#include "core/data_tab.h"
#include "core/session.h"

#include "core/main_menus.h"
#include "core/main_screen.h"
#include "core/settings_screen.h"
#include "core/startup.h"
#include "display/gauges.h"
#include "display/scope.h"
#include "link/auto_detect.h"
#include "screens/frm_auto_detect.h"
#include "state/app.h"

namespace ketrel {

void InstallApplication(App& app) {
    if (!app.screenByName("frmAutoDetect"))
        app.addScreen(std::make_unique<FrmAutoDetect>(app.loop(), app.platform.ports));
    InstallAutoDetect(app);
    app.hooks.Connect = [&app] { ConnectSession(app); };
    InstallDataTab(app);
    InstallStartup(app);
    InstallSettingsScreen(app);
    InstallMainMenus(app);
    InstallSession(app);
    InstallScope(app);
    InstallGauges(app);
    InstallMainScreen(app);
}

}  // namespace ketrel
