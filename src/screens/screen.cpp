#include "screens/screen.h"

namespace ketrel {

Screen::Screen(EventLoop& loop, std::string name, std::string caption)
    : loop_(loop), name_(std::move(name)), caption_(caption), designCaption_(std::move(caption)) {}

void Screen::setCaption(const std::string& c) {
    if (caption_ == c) return;
    caption_ = c;
    notify();
}

void Screen::load() {
    if (loaded_) return;
    loaded_ = true;
    notify();
    if (onLoad) onLoad();
}

void Screen::show() {
    load();
    if (!loaded_) return;
    modal_ = false;
    if (!visible_) {
        visible_ = true;
        notify();
    }
    activate();
}

void Screen::showModal() {
    load();
    if (!loaded_) return;
    modal_ = true;
    visible_ = true;
    notify();
    activate();
    // The caller waits here while timers and serial events go on.
    while (visible_ && loaded_)
        loop_.waitAndPump();
    modal_ = false;
}

void Screen::hide() {
    if (!visible_) return;
    visible_ = false;
    active_ = false;
    notify();
}

bool Screen::unload() {
    if (!loaded_) return true;
    bool cancel = false;
    if (onQueryUnload) onQueryUnload(cancel);
    if (cancel) return false;
    if (onUnload) onUnload();
    loaded_ = false;
    visible_ = false;
    active_ = false;
    modal_ = false;
    for (auto& t : timers_)
        t->stop();
    for (Control* c : controls_)
        c->restoreDesign();
    caption_ = designCaption_;
    enabled_ = true;
    topmost_ = false;
    resetVariables();
    notify();
    return true;
}

void Screen::setEnabled(bool on) {
    if (enabled_ == on) return;
    enabled_ = on;
    notify();
}

void Screen::setTopmost(const Geometry& g) {
    topmost_ = true;
    geometry_ = g;
    notify();
}

void Screen::setGeometry(const Geometry& g) {
    geometry_ = g;
    notify();
}

void Screen::activate() {
    if (!visible_) return;
    bool was = active_;
    active_ = true;
    if (!was && onActivate) onActivate();
}

Control* Screen::findControl(const std::string& fullName) const {
    for (Control* c : controls_) {
        if (c->fullName() == fullName) return c;
    }
    return nullptr;
}

Timer& Screen::makeTimer(int intervalMs) {
    timers_.push_back(std::make_unique<Timer>(loop_.scheduler(), intervalMs));
    return *timers_.back();
}

void Screen::markDesign() {
    designCaption_ = caption_;
    for (Control* c : controls_)
        c->markDesign();
}

}  // namespace ketrel
