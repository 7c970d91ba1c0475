#pragma once

namespace ketrel {

class App;
class FrmAutoDetect;

// The auto-detect screen of the application, or nullptr when the program has none.
FrmAutoDetect* AutoDetectScreen(App& app);

// Installs the handlers of frmAutoDetect (load, activation, close, its timers, the probe
// port's received-data event and cmdConnectAD); does nothing when the screen is absent.
// cmdConnectAD starts the connect through app.hooks.Connect.
void InstallAutoDetect(App& app);

// The text-converter sweep: asks each port 1 to 4 for its firmware version and pumps until
// an answer, a sync, 500 ms or an abort; hands over to BR3Detection after port 4.
void DORVANEDetection(App& app);
// The count-byte converter sweep, one port per call: probes the next port and arms
// DetectBR3Delay; after port 4 it shows the failure question.
void BR3Detection(App& app);
// Received-data event of MSComm2: a sync starts the sweep's request again, status chunks are
// dropped, anything else gathers in txtBuffer until the version answer is complete.
void AutoDetectReceive(App& app);
// DetectBR3Delay: reads what the probed port answered; a last byte 0xFF is the converter.
void DetectBR3DelayElapsed(App& app);

}  // namespace ketrel
