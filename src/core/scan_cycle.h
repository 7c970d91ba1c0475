#pragma once
#include <string>

namespace ketrel {

class App;

// Installs the scan cycle: the chunk handler of frmMain.MSComm, the watchdog, the tab-change
// wipe, the clear-codes question and its timer, and the request buttons and menu entries.
void InstallScanCycle(App& app);
// One received-data event of frmMain.MSComm.
void MainPortReceive(App& app);
// The chunk rules on one chunk already read from the port.
void HandleDorvaneChunk(App& app, const std::string& chunk);
// TimeOutConnect fired: the session is over.
void WatchdogElapsed(App& app);
// cmdClearCodes: asks, then raises RequestClearCodes and starts ClearCodeTimer.
void ClearCodesCommand(App& app);

}  // namespace ketrel
