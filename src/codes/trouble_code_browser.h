#pragma once
#include <vector>

#include "screens/frm_trouble_code.h"

namespace ketrel {

class App;

// The section options of the library screen, made from the code sections tab by tab.
std::vector<SectionOption> TroubleCodeOptions();

// The library screen of the application, or nullptr when the program has none.
FrmTroubleCode* TroubleCodeScreen(App& app);

// Makes frmTroubleCode when the program has none yet and installs its handlers: opening (first
// section, the vehicle's codes), section options, tab changes, a number clicked, Exit.
void InstallTroubleCodeBrowser(App& app);

}  // namespace ketrel
