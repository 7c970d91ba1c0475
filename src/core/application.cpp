#include "core/application.h"

#include "core/main_menus.h"
#include "core/settings_screen.h"
#include "core/startup.h"

namespace ketrel {

void InstallApplication(App& app) {
    InstallStartup(app);
    InstallSettingsScreen(app);
    InstallMainMenus(app);
}

}  // namespace ketrel
