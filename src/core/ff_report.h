#pragma once
#include <functional>
#include <string>
#include <vector>

#include "platform/printer.h"

namespace ketrel {

class App;
class FrmPrintFF;

// The text block of trouble codes: every entry of the stored, then pending, then freeze-frame
// list with " - "; a "P0" code also gets its text from `describe`, its list's mark (" (TC)",
// " (Pending)", " (FF)") and a line end. Any other code gets nothing more, so the next entry
// continues its line.
std::string FaultCodesText(const std::vector<std::string>& stored,
                           const std::vector<std::string>& pending,
                           const std::vector<std::string>& freeze,
                           const std::function<std::string(const std::string&)>& describe);

// Copies the vehicle fields ("N/A" for nothing chosen), the freeze-frame values and the trouble
// codes of the main screen into the page's fields.
void FillPrintFF(App& app, FrmPrintFF& page);

// The page's texts as printed, captions beside their values, in the page's reading order.
PrintPage FreezeFrameReportPage(const FrmPrintFF& page);

// cmdPrintFFData and mnuFilePrintFF: loads the page anew, prints it on app.printer and unloads
// it. A printer error is passed over.
void PrintFreezeFrame(App& app);

// Adds frmPrintFF to the application and installs the two print commands.
void InstallFreezeFrameReport(App& app);

}  // namespace ketrel
