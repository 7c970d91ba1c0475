#pragma once
#include "link/frame_dispatch.h"

namespace ketrel {

class App;

// frmMain.BR3Delay has ticked: the answer to the last request is read and decoded, and the
// next request goes out.
void BR3DelayTick(App& app);

// The receive path of J1850 answers (ProtocolCode "01", "02"): reads BR3MSComm unless a log is
// playing, cuts the cells from RawFrame, decodes, and sends the next request.
void BR3ReceiveJ1850(App& app);
// The same for ISO 9141 and KWP 2000 answers ("03", "04"), where several modules' frames stand
// one behind the other and no converter byte leads.
void BR3ReceiveISO(App& app);

// Empties the byte cells an answer fills, before the next answer is cut.
void ClearFrameCells(App& app);
// Cuts the mode, PID and cells of the ISO 9141 / KWP 2000 answer in RawFrame (the second
// module's half where two answered a Mode 01 request) and runs its decoder on `path`.
void DecodeIsoKwpFrame(App& app, ReceivePath path);

}  // namespace ketrel
