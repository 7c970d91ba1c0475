#pragma once
#include <QWidget>

namespace ketrel {

class FrmMode5;
class FrmMode5Manuf;

// The window of frmMode5: the sensor list and the two buttons above a table of the ten tests
// (caption, raw value, value, minimum, maximum), the progress in the status line.
QWidget* MakeMode5Window(FrmMode5& f);

// The window of frmMode5Manuf: the result grid, the hidden support list, Cancel and the three
// status panels.
QWidget* MakeMode5ManufWindow(FrmMode5Manuf& f);

}  // namespace ketrel
