#pragma once

namespace ketrel {

class App;

// Installs the handlers of frmConnecting, the connect and disconnect commands, and the
// session hooks the drivers call back into. Run once when the application is made.
void InstallSession(App& app);
// The connect command: checks, then frmConnecting modally until the connect ends.
void ConnectSession(App& app);
// Ends every session however it ended; safe to run twice.
void EndSession(App& app);
// A driver found the converter and the vehicle answering.
void LinkUp(App& app);
// The cancel button of frmConnecting.
void CancelConnect(App& app);
// What cmdClearVehicle does: the hidden words, then the vehicle fields emptied.
void ClearVehicleInformation(App& app);

}  // namespace ketrel
