#include "core/application.h"

#include "core/data_tab.h"
#include "core/session.h"

#include "core/main_menus.h"
#include "core/main_screen.h"
#include "core/settings_screen.h"
#include "core/startup.h"

namespace ketrel {

void InstallApplication(App& app) {
    InstallDataTab(app);
    InstallStartup(app);
    InstallSettingsScreen(app);
    InstallMainMenus(app);
    InstallSession(app);
    InstallMainScreen(app);
}

}  // namespace ketrel
