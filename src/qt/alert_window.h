#pragma once
#include <QWidget>

namespace ketrel {

class FrmAlertMIL;

// The window of the code alert: the lamp picture beside the message, the section where the
// codes were found, and a button that closes it.
QWidget* MakeAlertWindow(FrmAlertMIL& alert);

}  // namespace ketrel
