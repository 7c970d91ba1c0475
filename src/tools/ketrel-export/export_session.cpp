#include "export_session.h"

#include "core/data_tab.h"
#include "link/converters.h"
#include "obd/monitor_status.h"
#include "obd/unit_captions.h"
#include "recording/replay.h"

namespace ketrel::exporter {

MsgAnswer StreamDialogs::show(const MessageBox& box) {
    err_ << "ketrel-export: ";
    if (!context.empty()) err_ << context << ": ";
    err_ << "message \"" << box.title << "\": " << box.text << '\n';
    return cancelOrDefault(box.buttons);
}

ExportSession::ExportSession(std::ostream& err, const std::string& type, const std::string& temp,
                             const std::string& speed, const std::string& pressure)
    : dialogs_(err) {
    app_ = std::make_unique<App>(
        Platform{loop_, dialogs_, settings_, launcher_, display_, ports_, std::filesystem::path()});
    App& a = *app_;
    a.Temp = temp;
    a.Speed = speed;
    a.Pressure = pressure;
    a.DataStyle = "1";
    InstallDataTab(a);
    SetMainUnitCaptions(a);
    SetExtendedUnitCaptions(a);
    ClearDisplay(a);
    ClearExtendedData(a);
    BeginReplay(a, type);
}

void ExportSession::play(const std::string& frame) {
    PlayFrame(*app_, app_->LogType, frame);
}

}  // namespace ketrel::exporter
