#pragma once
#include <QWidget>

namespace ketrel {

class FrmAutoDetect;

// The window of frmAutoDetect: the blinking picture beside the status sentence, the port being
// tried, the received bytes (debug view only) and the Connect button.
QWidget* MakeAutoDetectWindow(FrmAutoDetect& d);

}  // namespace ketrel
