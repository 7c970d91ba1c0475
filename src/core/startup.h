#pragma once
#include <string>

namespace ketrel {

class App;

// Installs the start-up and shutdown handlers on frmSplash and frmMain, and the
// SplashScreen timer that hands over from one to the other.
void InstallStartup(App& app);
// Starts the program: frmSplash comes first, and its activation loads frmMain behind it.
void StartApplication(App& app);

// Reads the settings into the session variables in their fixed order and applies their
// limits; TimeOut and the units are saved back.
void ReadStartupSettings(App& app);
// The warning about a small screen, if DisplaySet asks for it; measured by frmSettings.
void CheckDisplay(App& app);

// The start-up warnings about the screen.
inline constexpr const char* kDisplayTitle = "Attention User";
extern const std::string kDisplaySizeWarning;
extern const std::string kDisplayColorWarning;

}  // namespace ketrel
