// The desktop program: Qt's application object, then the splash screen and the main window.
#include <QApplication>
#include <QStyleFactory>
#include <filesystem>

#include "platform/ini_settings_store.h"
#include "qt/app_folder.h"
#include "qt/desktop_app.h"

int main(int argc, char** argv) {
    // Qt's application object stands for the desktop's shared controls: if it can't be made,
    // Qt ends the process at once.
    QApplication qapp(argc, argv);
    QApplication::setApplicationName("Ketrel");
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    std::filesystem::path programDir = QCoreApplication::applicationDirPath().toStdString();
    ketrel::DesktopOptions options;
    options.appPath = ketrel::ResolveAppFolder(programDir);
    options.configRoot = ketrel::DefaultConfigRoot();
    // Ports have nothing behind them until the serial backend is wired in.
    ketrel::DesktopApp desktop(options);
    desktop.start();
    if (!desktop.app().frmMain().loaded()) return 0;
    return qapp.exec();
}
