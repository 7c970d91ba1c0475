#pragma once

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

}  // namespace ketrel
