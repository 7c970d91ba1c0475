#pragma once
#include <QMainWindow>

namespace ketrel {

class FrmMain;

// The main window of frmMain: menu bar, toolbar, the five tabs and the status bar, each
// widget bound to its field.
QMainWindow* MakeMainWindow(FrmMain& m);

// The pages of SSTab1, one function per tab.
QWidget* MakeDataPage(FrmMain& m);
QWidget* MakeMonitorPage(FrmMain& m);
QWidget* MakeCodesPage(FrmMain& m);
QWidget* MakeVehiclePage(FrmMain& m);
QWidget* MakeSupportPage(FrmMain& m);

}  // namespace ketrel
