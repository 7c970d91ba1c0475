#pragma once
// The application that the file fuzz targets feed: virtual time, message boxes answered at
// once, a temporary application folder made once per process and removed at its end.
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "platform/desktop.h"
#include "platform/dialogs.h"
#include "platform/null_serial_port.h"
#include "platform/settings_store.h"
#include "platform/virtual_event_loop.h"
#include "state/app.h"

namespace ketrel::fuzz {

// Message boxes of a run with nobody at the screen: Cancel where the box has one, else its
// default button; nothing is kept, so millions of boxes cost no memory.
class QuietDialogs : public Dialogs {
  public:
    MsgAnswer show(const MessageBox& box) override { return cancelOrDefault(box.buttons); }
};

// A launcher that opens nothing and keeps nothing.
class QuietLauncher : public Launcher {
  public:
    bool openTextFile(const std::string&) override { return false; }
    bool openDisplaySettings() override { return false; }
};

// A fresh folder in memory (/dev/shm) where there is one, else under the system's temporary
// folder; removed when the process ends.
inline std::filesystem::path FuzzFolder(const std::string& name) {
    static std::filesystem::path folder;
    std::error_code ec;
    const bool shm =
        std::filesystem::is_directory("/dev/shm", ec) && ::access("/dev/shm", W_OK) == 0;
    folder = (shm ? std::filesystem::path("/dev/shm") : std::filesystem::temp_directory_path()) /
             ("ketrel-fuzz-" + name + "-" + std::to_string(::getpid()));
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    std::atexit([] {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    });
    return folder;
}

// Writes bytes as the whole file.
inline void WriteBytes(const std::filesystem::path& path, const std::uint8_t* data,
                       std::size_t size) {
    std::ofstream(path, std::ios::binary | std::ios::trunc)
        .write(reinterpret_cast<const char*>(data), std::streamsize(size));
}

// One application over the platform doubles; settings come from `store` when given.
struct FuzzApp {
    explicit FuzzApp(const std::string& name, SettingsStore* store = nullptr)
        : dir(FuzzFolder(name)) {
        app = std::make_unique<App>(
            Platform{loop, dialogs, store ? *store : settings, launcher, display, ports, dir});
    }
    App& operator*() { return *app; }

    std::filesystem::path dir;
    VirtualEventLoop loop;
    QuietDialogs dialogs;
    MemorySettingsStore settings;
    QuietLauncher launcher;
    FixedDisplayInfo display;
    NullSerialPortFactory ports;
    std::unique_ptr<App> app;
};

}  // namespace ketrel::fuzz
