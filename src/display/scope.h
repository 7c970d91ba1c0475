#pragma once

namespace ketrel {

class App;
class Field;
class FrmMain;
class FrmScope;

// Adds the scope screen to the application if it is not there yet and installs its
// handlers: opening, the PID menu, the speeds, the sampling and closing.
void InstallScope(App& app);

// The scope screen, once installed.
FrmScope* ScopeScreen(App& app);

// Starts sampling at `period` ms on a fresh picture: the grid drawn anew, the trace started
// over. Called again to change the speed.
void SAMPLER(App& app, int period);

// One sample: reads the value of the chosen PID, scrolls the picture and draws the segment
// from the last sample to this one.
void TakeScopeSample(App& app);

// Reads the picture's size and draws the grid of ten red lines on a cleared picture.
void PrepareScopePicture(FrmScope& s);

// The scope draws `pid` alone from now on: polling, name, captions and extremes start over.
void ChooseScopePid(App& app, int pid);

// The main screen's field that holds a PID's value for the scope; nullptr for other PIDs.
Field* ScopeSourceField(FrmMain& m, int pid);

}  // namespace ketrel
