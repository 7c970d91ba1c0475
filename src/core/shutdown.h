#pragma once
#include <array>

namespace ketrel {

class App;

// The screens the unload of frmMain takes down with it, in this order.
inline constexpr std::array<const char*, 21> kShutdownOrder{
    "frmRecorder", "frmSettings",    "frmAboutHardware", "frmTerms", "frmConnecting",
    "frmSplash",   "frmRecordedLog", "frmAutoDetect",    "frmAbout", "frmCustomData",
    "frmGuage",    "frmMultGuage",   "frmRealDisplay",   "frmScope", "frmTroubleCode",
    "frmAlertMIL", "frmPrintFF",     "frmHelp",          "frmMode6", "frmMode5",
    "frmMPG"};

// Installs the close request and the unload of frmMain: the close saves "DataStyle", is
// refused while a session or a replay runs, closes the scanning ports and takes the other
// screens down in a fixed order.
void InstallShutdown(App& app);

}  // namespace ketrel
