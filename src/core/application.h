#pragma once

namespace ketrel {

class App;

// Installs every handler of the application's logic on the screens of a fresh App: start-up
// and shutdown, the settings screen and the main window's own menus.
void InstallApplication(App& app);

}  // namespace ketrel
