#pragma once
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/desktop.h"
#include "platform/dialogs.h"
#include "platform/null_serial_port.h"
#include "platform/settings_store.h"
#include "platform/virtual_event_loop.h"
#include "state/app.h"

namespace ketrel::test {

// A fresh temporary folder, removed at the end of the test.
class TempDir {
  public:
    TempDir();
    ~TempDir();
    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

// A whole file as bytes; empty when it can't be read.
std::string ReadFile(const std::filesystem::path& p);
// Writes `bytes` as the whole file, making its folder first; the file's path.
std::filesystem::path WriteFile(const std::filesystem::path& p, const std::string& bytes);
// A text cut at its line breaks, the breaks left out.
std::vector<std::string> Lines(const std::string& text);
// A file of the data folder with the first `from` replaced by `to`, written as `p`.
std::filesystem::path EditedCopy(const std::string& source, const std::string& from,
                                 const std::string& to, const std::filesystem::path& p);

// An application on virtual time with scripted dialogs, an in-memory settings store, a fixed
// display and a temporary application folder. A test may pass its own port factory.
struct TestApp {
    explicit TestApp(SerialPortFactory* ports = nullptr);

    VirtualEventLoop loop;
    ScriptedDialogs dialogs;
    MemorySettingsStore settings;
    RecordingLauncher launcher;
    FixedDisplayInfo display;
    NullSerialPortFactory nullPorts;
    TempDir dir;
    std::unique_ptr<App> app;

    App& operator*() { return *app; }
    App* operator->() { return app.get(); }
};

}  // namespace ketrel::test
