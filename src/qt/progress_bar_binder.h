#pragma once

class QProgressBar;

namespace ketrel {

class ProgressBar;

// Makes a QProgressBar follow a ProgressBar control: range, value, bar and background colours,
// enabled and visible state. It has no input of its own.
void BindProgressBar(QProgressBar* w, ProgressBar& p);

}  // namespace ketrel
