#pragma once

namespace ketrel {

class App;
class FrmMode5;

// The screen of the ten standard oxygen-sensor tests, or null when the program has none.
FrmMode5* Mode5Screen(App& app);

// Sets the handlers of frmMode5 and installs the hand-over of the request routines.
void InstallMode5(App& app);

// Fills cmbO2 with the eight sensors, in the bank layout that PID 1D announces when the
// vehicle supports it, and picks the first.
void FillSensorList(App& app);

// Mode5RequestBR3 and Mode5RequestKesh, one routine over the line of the session: sends the
// request for Mode5TestID and Mode5Sensor and starts the screen's 250 ms wait.
void Mode5Request(App& app);
// Mode5ReadBR3J1850, Mode5ReadBR3ISO and Mode5ReadKesh: reads the reply of the test asked,
// keeps its three bytes and goes on with Mode5ShowResult.
void Mode5Read(App& app);
// Writes the row of the test asked, then asks the next test or, after the tenth, gives the
// line back to the scan chain.
void Mode5ShowResult(App& app);
// Writes "N/A" to every value field of the ten rows.
void Mode5ClearFields(App& app);

}  // namespace ketrel
