#include "core/main_menus.h"

#include "state/app.h"

namespace ketrel {

namespace {

// Toggles a bar and the check mark of the entry that shows it.
void toggleBar(MenuItem& entry, Control& bar) {
    entry.setChecked(!entry.checked());
    bar.setVisible(entry.checked());
}

}  // namespace

void InstallMainMenus(App& app) {
    FrmMain& m = app.frmMain();
    m.mnuFileExit.onClick = [&m] { m.unload(); };
    m.mnuOptionSettings.onClick = [&app] { app.frmSettings().showModal(); };
    m.mnuOptionStatusBar.onClick = [&m] { toggleBar(m.mnuOptionStatusBar, m.StatusBar1); };
    m.mnuOptionToolbar.onClick = [&m] { toggleBar(m.mnuOptionToolbar, m.Toolbar1); };
}

}  // namespace ketrel
