#pragma once

namespace ketrel {

class App;
class FrmMode6;

// Makes frmMode6 if the program has none yet and installs its handlers: the opening, Timer1
// that starts the sweep, the two buttons and the closing rules.
void InstallMode6(App& app);
// frmMode6 when the program has it.
FrmMode6* Mode6Screen(App& app);

// The opening of the screen: takes the line from the scan cycle (the main screen disabled, the
// request timers stopped, the first 42 polling flags saved and cleared) and starts Timer1.
void Mode6Open(App& app);
// Timer1: runs the sweep of the link device in use, all inside this one callback.
void Mode6Timer1(App& app);

// The support phase and then the test phase through the count-byte converter, on any of its
// four protocols.
void Mode6SweepBR3(App& app);
// The same through the K-line cables, on ISO 9141 and KWP 2000.
void Mode6SweepKesh(App& app);

// Hands the line back to the scan cycle: the saved flags, the watchdog and one request of the
// line in use. Mode6Active stays up until the screen closes.
void Mode6RestorePolling(App& app);

// The close request: the main screen comes back in every case; with a session up the screen
// stays unless the sweep has ended or was cancelled, and the polling is released either way.
// True when the close is refused.
bool Mode6RefuseClose(App& app);

}  // namespace ketrel
