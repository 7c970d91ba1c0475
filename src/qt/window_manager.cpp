#include "qt/window_manager.h"

#include <QCloseEvent>
#include <QEvent>

#include "state/app.h"

namespace ketrel {

WindowManager::WindowManager(App& app) : app_(app) {}

WindowManager::~WindowManager() {
    for (auto& [screen, e] : entries_) {
        screen->unobserve(e.observer);
        delete e.window.data();
    }
    // Windows of unloaded screens whose deletion is still queued observe controls that go
    // with the application: they go now.
    for (QPointer<QWidget>& w : retired_)
        delete w.data();
}

void WindowManager::registerView(const std::string& screenName, Factory factory) {
    factories_[screenName] = std::move(factory);
}

void WindowManager::adoptScreens() {
    for (Screen* s : app_.screens()) {
        if (entries_.count(s)) continue;
        Entry& e = entries_[s];
        e.screen = s;
        e.observer = s->observe([this, s] { sync(entries_[s]); });
        sync(e);
    }
}

QWidget* WindowManager::windowOf(const std::string& screenName) const {
    for (auto& [screen, e] : entries_)
        if (screen->name() == screenName) return e.window.data();
    return nullptr;
}

QWidget* WindowManager::make(Screen& s) {
    auto it = factories_.find(s.name());
    QWidget* w = it != factories_.end() ? it->second(s) : MakeGenericWindow(s);
    w->setAttribute(Qt::WA_DeleteOnClose, false);
    w->installEventFilter(this);
    w->setProperty("ketrelScreen", QString::fromStdString(s.name()));
    return w;
}

void WindowManager::sync(Entry& e) {
    Screen& s = *e.screen;
    if (!s.loaded()) {
        if (e.window) {
            e.window->hide();
            e.window->deleteLater();  // the unload may come from inside the window's own event
            std::erase_if(retired_, [](const QPointer<QWidget>& p) { return p.isNull(); });
            retired_.push_back(e.window);
            e.window = nullptr;
        }
        e.placed = Geometry{};
        return;
    }
    if (!e.window) {
        if (!s.visible()) return;  // made on first show
        e.window = make(s);
    }
    QWidget* w = e.window;
    w->setWindowTitle(QString::fromStdString(s.caption()));
    w->setEnabled(s.enabled());
    const Geometry& g = s.geometry();
    if (g.width > 0 && (g.left != e.placed.left || g.top != e.placed.top ||
                        g.width != e.placed.width || g.height != e.placed.height)) {
        e.placed = g;
        QSize min = w->minimumSizeHint();
        w->move(g.left, g.top);
        w->resize(std::max(g.width, min.width()), std::max(g.height, min.height()));
    }
    Qt::WindowModality modality = s.modal() ? Qt::ApplicationModal : Qt::NonModal;
    bool topmost = s.topmost();
    bool flagsChange = w->windowModality() != modality ||
                       w->windowFlags().testFlag(Qt::WindowStaysOnTopHint) != topmost;
    if (flagsChange) {
        bool wasVisible = w->isVisible();
        if (wasVisible) w->hide();
        w->setWindowModality(modality);
        w->setWindowFlag(Qt::WindowStaysOnTopHint, topmost);
        if (wasVisible && s.visible()) w->show();
    }
    if (s.visible() && !w->isVisible()) {
        w->show();
        w->raise();
        w->activateWindow();
    } else if (!s.visible() && w->isVisible()) {
        w->hide();
    }
}

bool WindowManager::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Close && event->type() != QEvent::WindowActivate)
        return QObject::eventFilter(watched, event);
    for (auto& [screen, e] : entries_) {
        if (e.window != watched) continue;
        if (event->type() == QEvent::WindowActivate) {
            screen->activate();
            return false;
        }
        // The window stays until its screen unloads; the screen may refuse.
        event->ignore();
        screen->requestClose();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace ketrel
