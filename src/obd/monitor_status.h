#pragma once

namespace ketrel {

class App;

// Mode 01 PID 01: lamp, count of stored codes, and the readiness of the eleven monitors into
// msMonitorGrid and the four totals into msGridReady.
void DecodeMonitorStatus(App& app);

// Both monitor grids back to their headers, names and "N/A".
void ResetMonitorGrids(App& app);

// "N/A" into every live value of the data tab, the monitor grids and the freeze-frame values.
void ClearMainData(App& app);

// A full reset of the display: support grids, lamp picture, everything ClearMainData covers,
// the OBD design and the connection fields.
void ClearDisplay(App& app);

// "N/A" into every value field of the extended data screen.
void ClearExtendedData(App& app);

// "N/A" into the sixteen freeze-frame values.
void ClearFreezeData(App& app);

}  // namespace ketrel
