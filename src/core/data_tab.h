#pragma once
#include <string>

namespace ketrel {

class App;

// Wires the data tab of the main screen: the change handler of every value label (mirror into
// GridData in grid style, grey with its caption on "N/A", the O2 indicators), of the
// freeze-frame and vehicle information values, and the two data style menu entries. Run once
// when the main screen loads.
void InstallDataTab(App& app);

// mnuViewDefault: the value labels by themselves.
void ShowLabelStyle(App& app);

// mnuViewStyleGrid: GridData in place of the labels, built afresh from the labels' texts.
void ShowGridStyle(App& app);

// The text that GridData shows for the air status code: "Upstream", "Downstream", and for "3"
// "OFF" when the grid is built but "Off" on later changes.
std::string AirStatusCellText(const std::string& code, bool gridBuild);

}  // namespace ketrel
