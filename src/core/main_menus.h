#pragma once

namespace ketrel {

class App;

// Installs the menu entries of frmMain that belong to the window itself: Settings..., Exit,
// and the Status Bar and Toolbar switches.
void InstallMainMenus(App& app);

}  // namespace ketrel
