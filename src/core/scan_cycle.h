#pragma once
#include <string>

namespace ketrel {

class App;

// Installs the scan cycle: the watchdog, the tab-change
// wipe, the clear-codes question and its timer, and the request buttons and menu entries.
void InstallScanCycle(App& app);
// TimeOutConnect fired: the session is over.
void WatchdogElapsed(App& app);
// cmdClearCodes: asks, then raises RequestClearCodes and starts ClearCodeTimer.
void ClearCodesCommand(App& app);

}  // namespace ketrel
