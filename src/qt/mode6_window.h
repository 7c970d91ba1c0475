#pragma once
#include <QWidget>

namespace ketrel {

class FrmMode6;

// The window of frmMode6: the result grid with the support list beside it (shown only in the
// hidden mode), the two buttons under them and the two status panels at the foot.
QWidget* MakeMode6Window(FrmMode6& f);

}  // namespace ketrel
