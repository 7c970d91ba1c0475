#include "display/displays.h"

#include <memory>

#include "display/data_lists.h"
#include "display/fuel_economy.h"
#include "display/large_display.h"
#include "screens/frm_custom_data.h"
#include "screens/frm_mpg.h"
#include "screens/frm_real_display.h"
#include "state/app.h"

namespace ketrel {

void InstallDisplays(App& app) {
    if (!app.screenByName("frmCustomData"))
        app.addScreen(std::make_unique<FrmCustomData>(app.loop()));
    if (!app.screenByName("frmRealDisplay"))
        app.addScreen(std::make_unique<FrmRealDisplay>(app.loop()));
    if (!app.screenByName("frmMPG")) app.addScreen(std::make_unique<FrmMPG>(app.loop()));
    InstallExtendedList(app);
    InstallCustomList(app);
    InstallLargeDisplay(app);
    InstallFuelEconomy(app);
}

}  // namespace ketrel
