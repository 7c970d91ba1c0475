#pragma once
#include <filesystem>
#include <memory>

#include "platform/dialogs.h"
#include "platform/null_serial_port.h"
#include "platform/settings_store.h"
#include "qt/qt_desktop.h"
#include "qt/qt_dialogs.h"
#include "qt/qt_event_loop.h"
#include "qt/page_printer.h"
#include "qt/qt_serial_devices.h"
#include "qt/window_manager.h"
#include "state/app.h"

namespace ketrel {

// What the desktop program is made of; tests may put their own dialogs, store or ports in.
struct DesktopOptions {
    std::filesystem::path appPath;
    std::filesystem::path configRoot;
    Dialogs* dialogs = nullptr;          // default: message boxes
    SettingsStore* settings = nullptr;   // default: the INI file under configRoot
    SerialPortFactory* ports = nullptr;  // default: the serial devices and "sim:" cars
};

// The whole desktop program over a running QApplication: the Qt backends, the application
// object with its logic installed, and the windows of its screens.
class DesktopApp {
  public:
    explicit DesktopApp(DesktopOptions options);
    ~DesktopApp();

    App& app() { return *app_; }
    WindowManager& windows() { return *windows_; }
    QtEventLoop& loop() { return loop_; }
    // Shows the splash screen, which brings up the main window.
    void start();

  private:
    QtEventLoop loop_;
    QtDialogs qtDialogs_;
    std::unique_ptr<SettingsStore> ownSettings_;
    QtLauncher launcher_;
    QtDisplayInfo display_;
    QtSerialDeviceLister devices_;
    std::unique_ptr<SerialPortFactory> ownPorts_;
    std::unique_ptr<App> app_;
    std::unique_ptr<WindowManager> windows_;
    QtPagePrinter printer_;
};

}  // namespace ketrel
