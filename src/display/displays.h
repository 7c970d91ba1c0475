#pragma once

namespace ketrel {

class App;

// Adds the data displays' screens that the program does not have yet (the custom list, the
// large display, the fuel economy) and sets the handlers of every display and of the main
// screen's entries that open them. Runs before the main screen is installed, so the entries
// find their screens.
void InstallDisplays(App& app);

}  // namespace ketrel
