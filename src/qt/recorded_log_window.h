#pragma once

class QWidget;

namespace ketrel {

class FrmRecordedLog;

// The window of the log catalogue: the grid of saved logs with its highlight, the search row,
// the buttons and the total. It only draws the screen and passes clicks on.
QWidget* MakeRecordedLogWindow(FrmRecordedLog& s);

}  // namespace ketrel
