// A settings file as the program finds it at start: read by the INI store, taken into the
// session variables with their limits (what the main screen's load reads), mirrored by the
// settings screen's load and applied by its Apply buttons, then the screen unloaded. The
// program is built once; the main screen's load around the settings (tabs, grids, splash)
// takes none of the file's values and would make each input several times slower. The saves
// of a run stay in memory (a file rewrite per save would make each input slow); two of the
// values go through the file at the end and are read back.
#include <cstddef>
#include <cstdint>

#include "core/application.h"
#include "core/startup.h"
#include "fuzz_rig.h"
#include "platform/ini_settings_store.h"
#include "platform/overlay_settings_store.h"
#include "screens/frm_settings.h"

namespace ketrel::fuzz {
namespace {

// Hands every call to the store of the input being run.
class ForwardingStore : public SettingsStore {
  public:
    std::string get(const std::string& app, const std::string& section, const std::string& key,
                    const std::string& def) override {
        return target->get(app, section, key, def);
    }
    void save(const std::string& app, const std::string& section, const std::string& key,
              const std::string& value) override {
        target->save(app, section, key, value);
    }
    bool contains(const std::string& app, const std::string& section,
                  const std::string& key) override {
        return target->contains(app, section, key);
    }
    SettingsStore* target = nullptr;
};

struct Program {
    Program() { InstallApplication(*f); }
    ForwardingStore store;
    FuzzApp f{"settings_file", &store};
    std::filesystem::path root = f.dir / "config";
};

void press(Field& b) {
    if (b.onClick) b.onClick();
}

}  // namespace
}  // namespace ketrel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace ketrel;
    static fuzz::Program program;
    IniSettingsStore ini(program.root, [](const std::string&) {});
    std::filesystem::create_directories(ini.fileFor(kAppName).parent_path());
    fuzz::WriteBytes(ini.fileFor(kAppName), data, size);
    OverlaySettingsStore overlay(ini);
    program.store.target = &overlay;

    App& app = *program.f;
    ReadStartupSettings(app);
    FrmSettings& s = app.frmSettings();
    s.load();
    fuzz::press(s.cmdApplyDevice);
    fuzz::press(s.cmdApplyKWP);
    fuzz::press(s.cmdApplyOther);
    fuzz::press(s.cmdApplyUnits);
    s.unload();
    program.store.target = nullptr;

    ini.save(kAppName, kSection, "DataStyle", app.DataStyle);
    ini.save(kAppName, kSection, "BR3Delay", overlay.get(kAppName, kSection, "BR3Delay"));
    IniSettingsStore again(program.root, [](const std::string&) {});
    // A value on one line comes back as it was saved (CR and LF would become blanks).
    if (app.DataStyle.find_first_of("\r\n") == std::string::npos &&
        again.get(kAppName, kSection, "DataStyle") != app.DataStyle)
        __builtin_trap();
    return 0;
}
