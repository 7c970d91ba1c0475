#pragma once
#include <filesystem>
#include <memory>

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
