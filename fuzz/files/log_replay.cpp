// A whole log file played to its end on virtual time: the first byte picks the type word
// (and whether a second module's answer counts, which changes how ISO frames are cut), the
// rest is the file. It goes through the log controller's player (LogReader, one frame per
// turn of the loop) and through the loop that the CSV export and the report use
// (LogFrameReader), both into the receive routine of that type word.
#include <cstddef>
#include <cstdint>
#include <sstream>

#include "core/data_tab.h"
#include "core/headless_replay.h"
#include "fuzz_rig.h"
#include "link/converters.h"
#include "obd/monitor_status.h"
#include "obd/unit_captions.h"
#include "recording/log_file.h"
#include "recording/recorder.h"
#include "screens/frm_recorder.h"

namespace ketrel::fuzz {
namespace {

const char* const kTypes[] = {"DORVANE", "BR3", "BR3ISO", "KESHISO-9141", "TACTRIXISO-9141"};
constexpr std::size_t kTypeCount = std::size(kTypes);

// The log controller of a program with its data tab and captions, as a replay finds it.
struct Player {
    Player() {
        App& a = *f;
        a.Temp = "C";
        a.Speed = "KPH";
        a.Pressure = "kPa";
        a.DataStyle = "1";
        InstallDataTab(a);
        SetMainUnitCaptions(a);
        SetExtendedUnitCaptions(a);
        ClearDisplay(a);
        ClearExtendedData(a);
        InstallRecorder(a);
        RecorderScreen(a).show();
        RecorderScreen(a).sldSpeed.setValue(0);
        a.LogName = "fuzz";
        std::filesystem::create_directories(LogFolder(f.dir));
        for (const char* type : kTypes)
            headless.push_back(std::make_unique<HeadlessReplay>(quiet, "", type, ReplayUnits{}));
    }
    FuzzApp f{"log_replay"};
    std::ostringstream quiet;
    std::vector<std::unique_ptr<HeadlessReplay>> headless;
};

}  // namespace
}  // namespace ketrel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace ketrel;
    static fuzz::Player player;
    if (size == 0) return 0;
    App& app = *player.f;
    const std::size_t type = data[0] % fuzz::kTypeCount;
    fuzz::WriteBytes(LogFilePath(player.f.dir, "fuzz"), data + 1, size - 1);

    const bool secondFrame = (data[0] / fuzz::kTypeCount) % 2 != 0;
    app.SecondFrameConnect = secondFrame;
    player.headless[type]->app().SecondFrameConnect = secondFrame;
    app.LogType = fuzz::kTypes[type];
    app.LogFrames = long(size);
    FrmRecorder& r = RecorderScreen(app);
    r.cmdPlay.setEnabled(true);
    r.cmdPlay.click();
    while (RecorderOf(app).replaying())
        player.f.loop.waitAndPump();

    std::istringstream in(std::string(reinterpret_cast<const char*>(data + 1), size - 1));
    long lines = 0;
    bool readError = false;
    player.headless[type]->playLog(in, "fuzz", nullptr, lines, readError);
    player.quiet.str("");
    return 0;
}
