#pragma once
#include <string>

namespace ketrel {

class App;

// The connecting port is opened and the connect armed (the DORVANE branch of StartTimer).
// Throws SerialError when the port can't be opened.
void DORVANEOpenConnect(App& app);
// Received-data event of the connecting port: syncs, status chunks and list answers.
void DORVANEConnectingReceive(App& app);
// What one sync does during a connect: the first command, or the next support list.
void DORVANEConnectStep(App& app);
// The 15 s connect time-out: link up on the Mode 01 list alone, or the retry question.
void DORVANEConnectingTimeOutElapsed(App& app);
// The scan-cycle builder: sends the next request on frmMain.MSComm.
void DORVANERequest(App& app);
// One step of the freeze-frame sweep.
void DORVANEFreezeStep(App& app);
// Text sent for a poll position (1 to 31), or "" for the positions that send nothing.
std::string DorvanePollText(int position);
// Text sent for a freeze-frame sweep position, or "" where there is no row.
std::string DorvaneFreezeText(int position);

// Installs the handlers of the connecting port, its time-out and the scanning port.
void InstallDorvane(App& app);
// frmConnecting has unloaded after a connect: the scanning port opens once the Mode 01 list
// has been read.
void DorvaneConnectEnded(App& app);
// One received-data event of frmMain.MSComm.
void DorvaneScanReceive(App& app);
// The scan cycle's rules for one chunk already read from the port: "S" asks the next request,
// "P" reports a search, "V" closes the frame gathered so far and decodes it.
void HandleDorvaneChunk(App& app, const std::string& chunk);

// The 13 raw bytes of the retry frame.
extern const char kDorvaneRetryFrame[13];

}  // namespace ketrel
