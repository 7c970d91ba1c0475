#pragma once
#include <QWidget>

namespace ketrel {

class App;
class FrmCustomData;
class FrmMain;
class FrmMPG;
class FrmNewPids;
class FrmRealDisplay;
class WindowManager;

// The extended data screen: caption, value, unit and status picture of PIDs 21 to 4E in two
// columns, or the grid in grid style; its menus and the record button.
QWidget* MakeNewPidsWindow(FrmNewPids& x, bool gridStyle);
// The custom list: one check box per PID in three tabs, select all, OK and cancel.
QWidget* MakeCustomDataWindow(FrmCustomData& c);
// The large display: the value's name, a number readable from a distance, the bar and its
// scale, the blinking warning, and the button that pops up the main screen's value menu.
QWidget* MakeRealDisplayWindow(FrmRealDisplay& d);
// The fuel economy: the instantaneous and the average figure, large, with their unit.
QWidget* MakeMpgWindow(FrmMPG& s);

// Gives the data displays that the application has their layouts.
void RegisterDisplayViews(WindowManager& windows, App& app);

}  // namespace ketrel
