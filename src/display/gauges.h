#pragma once

namespace ketrel {

class App;
class FrmGuage;
class FrmMultGuage;
class LineShape;
class PictureBox;

// Adds "RPM GAUGES" and "MULTIPLE GAUGES" to the application if they are not there yet and
// installs their handlers: opening, the ticks that follow the main screen's fields, the
// scale and fill menus and closing.
void InstallGauges(App& app);
FrmGuage* GuageScreen(App& app);
// The part of InstallGauges for "MULTIPLE GAUGES".
void InstallMultGuage(App& app);
FrmMultGuage* MultGuageScreen(App& app);

// One tick of the tachometer: follows lblRPM of the main screen when its number changed.
void GuageTick(App& app);
// The tachometer's scale menus: "1" large, "2" mid, "3" small.
void SetGuageScale(App& app, const char* scale);

// One tick of the five dials: every supported PID's readout and needle follow its field.
void MultGuageTick(App& app);

// Turns a needle about its first end to an angle in radians (y grows down the screen).
void PlaceNeedle(LineShape& needle, double cx, double cy, double r, double angle);
// Draws a dial's face: ring, a tick at each angle and its number beside it.
void DrawDialFace(PictureBox& face, const double* angles, const char* const* numbers, int count,
                  const char* caption);

}  // namespace ketrel
