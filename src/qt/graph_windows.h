#pragma once
#include <QWidget>

namespace ketrel {

class FrmGuage;
class FrmMultGuage;
class FrmScope;

// The windows of the scope and the two gauge screens: each widget bound to its field, the
// pictures painted by PictureView.
QWidget* MakeScopeWindow(FrmScope& s);
QWidget* MakeGuageWindow(FrmGuage& g);
QWidget* MakeMultGuageWindow(FrmMultGuage& g);

}  // namespace ketrel
