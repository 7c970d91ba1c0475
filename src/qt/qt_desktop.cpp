#include "qt/qt_desktop.h"

#include <QDesktopServices>
#include <QGuiApplication>
#include <QProcess>
#include <QScreen>
#include <QStandardPaths>
#include <QStringList>
#include <QUrl>
#include <cmath>

namespace ketrel {

bool QtLauncher::openTextFile(const std::string& path) {
    return QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(path)));
}

bool QtLauncher::openDisplaySettings() {
    // The display settings programs of the common Linux desktops, with their arguments.
    const QList<QStringList> candidates{
        {"gnome-control-center", "display"},
        {"systemsettings", "kcm_kscreen"},
        {"kcmshell6", "kcm_kscreen"},
        {"kcmshell5", "kcm_kscreen"},
        {"xfce4-display-settings"},
        {"cinnamon-settings", "display"},
        {"mate-display-properties"},
        {"lxqt-config-monitor"},
        {"arandr"},
        {"lxrandr"},
    };
    for (const QStringList& c : candidates) {
        QString exe = QStandardPaths::findExecutable(c.front());
        if (exe.isEmpty()) continue;
        if (QProcess::startDetached(exe, c.mid(1))) return true;
    }
    return false;
}

std::optional<DisplayMode> QtDisplayInfo::current() {
    QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen) return std::nullopt;
    QSize size = screen->size() * screen->devicePixelRatio();
    return DisplayMode{size.width(), size.height(), screen->depth(),
                       int(std::lround(screen->refreshRate()))};
}

std::vector<DisplayMode> QtDisplayInfo::modes() {
    if (auto m = current()) return {*m};
    return {};
}

bool QtDisplayInfo::change(const DisplayMode&) {
    return false;
}

}  // namespace ketrel
