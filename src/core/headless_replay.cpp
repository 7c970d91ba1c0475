#include "core/headless_replay.h"

#include "core/data_tab.h"
#include "link/converters.h"
#include "link/log_frames.h"
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
    : err_(err), prefix_(messagePrefix), dialogs_(err, messagePrefix) {
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

long HeadlessReplay::playLog(std::istream& in, const std::string& inputName,
                             const std::function<void(const std::string& frame)>& afterFrame,
                             long& lines, bool& readError) {
    LogFrameReader reader(in);
    reader.onProblem = [&](long line, const std::string& problem) {
        err_ << prefix_ << inputName << ": line " << line << ": " << problem << "; line skipped\n";
    };
    LogFrame frame;
    long frames = 0;
    while (reader.next(frame)) {
        ++frames;
        dialogs_.context = inputName + ": line " + std::to_string(frame.line);
        try {
            play(frame.text);
        } catch (const std::exception& e) {
            err_ << prefix_ << dialogs_.context << ": " << e.what() << '\n';
        }
        if (afterFrame) afterFrame(frame.text);
    }
    lines = reader.lines();
    readError = in.bad();
    return frames;
}

}  // namespace ketrel
