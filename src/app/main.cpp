// The desktop program: Qt's application object, then the splash screen and the main window.
#include <QApplication>
#include <QStyleFactory>
#include <cstring>
#include <filesystem>
#include <iostream>

#include "platform/ini_settings_store.h"
#include "qt/app_folder.h"
#include "qt/desktop_app.h"
#include "qt/icons.h"

int main(int argc, char** argv) {
    // Qt's application object stands for the desktop's shared controls: if it can't be made,
    // Qt ends the process at once.
    QApplication qapp(argc, argv);
    QApplication::setApplicationName("Ketrel");
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    QApplication::setWindowIcon(ketrel::AppIcon());
    // --quit-after-start: start up, say which application folder was chosen, and end (the
    // install check runs the installed program this way).
    bool quitAfterStart = false;
    for (int i = 1; i < argc; ++i)
        quitAfterStart = quitAfterStart || std::strcmp(argv[i], "--quit-after-start") == 0;
    std::filesystem::path programDir = QCoreApplication::applicationDirPath().toStdString();
    ketrel::DesktopOptions options;
    options.appPath = ketrel::ResolveAppFolder(programDir);
    options.configRoot = ketrel::DefaultConfigRoot();
    // Ports have nothing behind them until the serial backend is wired in.
    ketrel::DesktopApp desktop(options);
    desktop.start();
    if (quitAfterStart) {
        std::cout << "Application folder: " << options.appPath.string() << std::endl;
        return 0;
    }
    if (!desktop.app().frmMain().loaded()) return 0;
    return qapp.exec();
}
