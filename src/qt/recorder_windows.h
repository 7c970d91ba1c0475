#pragma once
#include <QWidget>

namespace ketrel {

class FrmRecorder;
class FrmInputRecordName;

// The log controller: a small tool window with Record, Play and Stop, the delay slider with
// its caption and value, and a status bar of three panels (status, frames, elapsed time).
QWidget* MakeRecorderWindow(FrmRecorder& r);
// The save dialogue: the prompt, the name and the Save and Cancel buttons.
QWidget* MakeSaveNameWindow(FrmInputRecordName& d);

}  // namespace ketrel
