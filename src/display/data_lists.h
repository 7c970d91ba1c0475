#pragma once

namespace ketrel {

class App;

// Sets the handlers of frmNewPids: opening (the extended polling on), the one-tick close that
// gives the request cycle back its normal PIDs, the value fields' change events, the status
// pictures that force or drop a PID, the custom list and the recorder.
void InstallExtendedList(App& app);

// Sets the handlers of frmCustomData and of the main screen's entries that open it.
void InstallCustomList(App& app);

// Opens the custom list modally; from the extended screen its section must keep a PID too.
void OpenCustomList(App& app, bool fromExtended);

// The grid of the extended screen in grid style: headers, captions, units, values.
void SetUpExtendedGrid(App& app);

}  // namespace ketrel
