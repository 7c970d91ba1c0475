#include "export_session.h"

#include "core/data_tab.h"
#include "link/dorvane_receive.h"
#include "obd/monitor_status.h"
#include "obd/unit_captions.h"

namespace ketrel::exporter {

MsgAnswer StreamDialogs::show(const MessageBox& box) {
    err_ << "ketrel-export: ";
    if (!context.empty()) err_ << context << ": ";
    err_ << "message \"" << box.title << "\": " << box.text << '\n';
    return cancelOrDefault(box.buttons);
}

ExportSession::ExportSession(std::ostream& err, const std::string& temp, const std::string& speed,
                             const std::string& pressure)
    : dialogs_(err) {
    app_ = std::make_unique<App>(
        Platform{loop_, dialogs_, settings_, launcher_, display_, ports_, std::filesystem::path()});
    App& a = *app_;
    a.Temp = temp;
    a.Speed = speed;
    a.Pressure = pressure;
    a.DataStyle = "1";
    a.OBDIIHardware = kDorvane;
    InstallDataTab(a);
    SetMainUnitCaptions(a);
    SetExtendedUnitCaptions(a);
    ClearDisplay(a);
    ClearExtendedData(a);
    // A replay: no session, the watchdog left alone.
    a.Connected = false;
    a.PlayingLog = true;
    a.PlayFormOpen = true;
    a.LogType = "DORVANE";
}

void ExportSession::playDorvane(const std::string& frame) {
    SetDorvaneFrame(*app_, frame);
    DORVANERECEIVE(*app_);
}

}  // namespace ketrel::exporter
