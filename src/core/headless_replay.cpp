#include "core/headless_replay.h"

#include "core/data_tab.h"
#include "link/converters.h"
#include "obd/monitor_status.h"
#include "obd/unit_captions.h"
#include "recording/replay.h"

namespace ketrel {

MsgAnswer StreamDialogs::show(const MessageBox& box) {
    err_ << prefix_;
    if (!context.empty()) err_ << context << ": ";
    err_ << "message \"" << box.title << "\": " << box.text << '\n';
    return cancelOrDefault(box.buttons);
}

HeadlessReplay::HeadlessReplay(std::ostream& err, const std::string& messagePrefix,
                               const std::string& type, const ReplayUnits& units)
    : dialogs_(err, messagePrefix) {
    app_ = std::make_unique<App>(
        Platform{loop_, dialogs_, settings_, launcher_, display_, ports_, std::filesystem::path()});
    App& a = *app_;
    a.Temp = units.temp;
    a.Speed = units.speed;
    a.Pressure = units.pressure;
    a.DataStyle = "1";
    InstallDataTab(a);
    SetMainUnitCaptions(a);
    SetExtendedUnitCaptions(a);
    ClearDisplay(a);
    ClearExtendedData(a);
    BeginReplay(a, type);
}

void HeadlessReplay::play(const std::string& frame) {
    PlayFrame(*app_, app_->LogType, frame);
}

}  // namespace ketrel
