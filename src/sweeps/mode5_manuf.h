#pragma once

namespace ketrel {

class App;
class FrmMode5Manuf;

// The screen of the maker's oxygen-sensor tests, or null when the program has none.
FrmMode5Manuf* Mode5ManufScreen(App& app);

// Sets the handlers of frmMode5Manuf: its opening, the sweep on its timer, cancel and close.
void InstallMode5Manuf(App& app);

// frmMode5.cmdManuf: the sensor chosen there is kept, frmMode5Manuf opens with its name and
// frmMode5 closes.
void OpenMode5Manuf(App& app);

// The sweep on the line of the session: the support phase over the seven blocks from $20 and
// the test phase over every id from $21 that the support marked, one grid row per reply. It
// holds the event thread, pumping once per id so that cancel is heard.
void Mode5ManufSweep(App& app);

// Gives the line back after a sweep: the request flags come back, the watchdog runs and the
// scan chain starts again.
void Mode5ManufRestorePolling(App& app);

}  // namespace ketrel
