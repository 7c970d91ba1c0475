#pragma once
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QStyleFactory>
#include <QWidget>
#include <functional>
#include <string>

#include "platform/dialogs.h"
#include "platform/settings_store.h"
#include "qt/desktop_app.h"
#include "support/test_app.h"

namespace ketrel::test {

// The one QApplication of a test program, in the style the program uses.
inline QApplication& EnsureQApp() {
    static int argc = 1;
    static char name[] = "ketrel-gui-test";
    static char* argv[] = {name, nullptr};
    static QApplication* app = [] {
        auto* a = new QApplication(argc, argv);
        QApplication::setStyle(QStyleFactory::create("Fusion"));
        return a;
    }();
    return *app;
}

// Processes Qt events until pred() holds or maxMs of real time passed. The bound only stops a
// test that would hang: keep it well above what a loaded machine needs.
inline bool WaitFor(const std::function<bool()>& pred, int maxMs = 10000) {
    QElapsedTimer t;
    t.start();
    while (!pred()) {
        if (t.elapsed() > maxMs) return false;
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return true;
}

// Saves a picture of a widget into the build tree's screenshots folder.
inline void Screenshot(QWidget* w, const std::string& name) {
    QDir dir(QCoreApplication::applicationDirPath() + "/../screenshots");
    dir.mkpath(".");
    w->grab().save(dir.filePath(QString::fromStdString(name + ".png")));
}

// The desktop program over scripted dialogs and an in-memory store, in a temporary folder;
// a test may pass its own port factory.
struct GuiApp {
    explicit GuiApp(SerialPortFactory* ports = nullptr) {
        EnsureQApp();
        DesktopOptions o;
        o.appPath = dir.path();
        o.configRoot = dir.path() / "config";
        o.dialogs = &dialogs;
        o.settings = &settings;
        o.ports = ports;
        desktop = std::make_unique<DesktopApp>(o);
    }
    ~GuiApp() {
        desktop.reset();
        QApplication::processEvents();  // windows deleted later go now
    }
    App& app() { return desktop->app(); }
    // Starts and hands over from the splash at once, as its timer would.
    void startPastSplash() {
        desktop->start();
        app().frmMain().SplashScreen.stop();
        app().frmSplash().unload();
        app().frmMain().setEnabled(true);
        QApplication::processEvents();
    }
    template <class W = QWidget>
    W* find(const std::string& screen, const char* name) {
        QWidget* w = desktop->windows().windowOf(screen);
        return w ? w->findChild<W*>(name) : nullptr;
    }

    TempDir dir;
    ScriptedDialogs dialogs;
    MemorySettingsStore settings;
    std::unique_ptr<DesktopApp> desktop;
};

// Windows over an application that runs on virtual time (a flow rig), so that nothing waits on
// the real clock: the rig's logic is what the flow tests try, and here only the drawing is
// looked at. The main screen gets a bare stand-in; a test registers the views it needs.
struct RigWindows {
    explicit RigWindows(App& app) : windows((EnsureQApp(), app)) {
        windows.registerView("frmMain", [](Screen&) { return new QWidget; });
    }
    // The named widget of a screen's window, once the window has caught up.
    template <class W = QWidget>
    W* find(const std::string& screen, const char* name) {
        QApplication::processEvents();
        QWidget* w = windows.windowOf(screen);
        return w ? w->findChild<W*>(name) : nullptr;
    }
    void shot(const std::string& screen, const std::string& file) {
        QApplication::processEvents();
        Screenshot(windows.windowOf(screen), file);
    }
    WindowManager windows;
};

}  // namespace ketrel::test
