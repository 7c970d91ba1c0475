#pragma once

namespace ketrel {

class App;

// Writes the unit words beside the main screen's values from Temp, Pressure and Speed; in grid
// style the unit column of GridData follows as well.
void SetMainUnitCaptions(App& app);

// Writes the unit words of the extended data screen.
void SetExtendedUnitCaptions(App& app);

// Writes the two unit columns (2 and 6) of the main screen's GridData.
void WriteDataGridUnits(App& app);

}  // namespace ketrel
