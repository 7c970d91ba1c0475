#pragma once
#include <QWidget>

namespace ketrel {

class FrmSettings;
class FrmSplash;

// The window of frmSettings: five pages, each with its own row of buttons.
QWidget* MakeSettingsWindow(FrmSettings& s);
// The splash window: a frameless panel with the program's name and version.
QWidget* MakeSplashWindow(FrmSplash& s);

}  // namespace ketrel
