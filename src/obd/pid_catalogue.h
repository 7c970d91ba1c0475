#pragma once

namespace ketrel {

class App;
class Grid;

// The four support grids back to their PID rows, descriptions and "N/A".
void ResetSupportGrids(App& app);
// One support grid back to its design: msM1Grid and msM2Grid list PIDs 01 to 20, msM3Grid PIDs
// 21 to 40, msM4Grid PIDs 41 to 60.
void ResetSupportGrid(App& app, Grid& grid);

// Mode 01 or Mode 02 PID 00 reply: the support arrays and grid of PIDs 01 to 20, then the view
// menus, the fuel-economy menu and the O2 layout.
void DecodeSupportPID00(App& app);
// Mode 01 PID 20 reply: support of PIDs 21 to 40 into msM3Grid.
void DecodeSupportPID20(App& app);
// Mode 01 PID 40 reply: support of PIDs 41 to 60 into msM4Grid.
void DecodeSupportPID40(App& app);

// Names the eight O2 slots for two banks, then for four banks if PID 1D is supported.
void SetO2Layout(App& app);

// Copies the O2 captions of the data tab into column 0 of GridData.
void CopyO2LabelsToGrid(App& app);

}  // namespace ketrel
