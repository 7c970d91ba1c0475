#pragma once
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/event_loop.h"
#include "platform/scheduler.h"
#include "screens/controls.h"

namespace ketrel {

// Pixel placement of a screen.
struct Geometry {
    int left = 0, top = 0, width = 0, height = 0;
};

// A screen: its named controls and timers, and its lifecycle. Loading runs onLoad once;
// showing loads first; a modal show waits, pumping events, until the screen is hidden or
// unloaded; unloading asks onQueryUnload (which may refuse), runs onUnload, stops the timers
// and returns every control to its design state.
class Screen : public Observable {
  public:
    Screen(EventLoop& loop, std::string name, std::string caption);
    virtual ~Screen() = default;

    const std::string& name() const { return name_; }
    const std::string& caption() const { return caption_; }
    void setCaption(const std::string& c);

    bool loaded() const { return loaded_; }
    bool visible() const { return visible_; }
    bool modal() const { return modal_; }
    bool enabled() const { return enabled_; }
    bool topmost() const { return topmost_; }
    bool active() const { return active_; }
    const Geometry& geometry() const { return geometry_; }

    void load();
    // Shows modeless; returns at once.
    void show();
    // Shows modally: returns when the screen has been hidden or unloaded.
    void showModal();
    void hide();
    // Returns false if onQueryUnload refused.
    bool unload();
    void setEnabled(bool on);
    // Places the screen above all others at the given place and size.
    void setTopmost(const Geometry& g);
    void setGeometry(const Geometry& g);
    // The screen becomes the active window (views call this; so may the logic).
    void activate();

    std::function<void()> onLoad;
    std::function<void()> onActivate;
    // Set cancel to true to refuse the unload.
    std::function<void(bool& cancel)> onQueryUnload;
    std::function<void()> onUnload;
    // A view asks to close the window (the user pressed its close button): runs onUserClose
    // where the screen has one, else unloads. True when the screen is gone.
    bool requestClose() {
        if (onUserClose) {
            onUserClose();
            return !loaded_;
        }
        return unload();
    }
    std::function<void()> onUserClose;

    // Every control, in the order made.
    const std::vector<Control*>& controls() const { return controls_; }
    Control* findControl(const std::string& fullName) const;
    EventLoop& loop() { return loop_; }

    // Called by Control's constructor.
    void registerControl(Control* c) { controls_.push_back(c); }
    // Timers owned by the screen; stopped when it unloads.
    Timer& makeTimer(int intervalMs);

  protected:
    // Remembers the present state of every control as its design state.
    void markDesign();
    // Variables of the screen's own that an unload returns to their start.
    virtual void resetVariables() {}

  private:
    EventLoop& loop_;
    std::string name_, caption_, designCaption_;
    bool loaded_ = false, visible_ = false, modal_ = false, enabled_ = true, topmost_ = false;
    bool active_ = false;
    Geometry geometry_;
    std::vector<Control*> controls_;
    std::vector<std::unique_ptr<Timer>> timers_;
};

}  // namespace ketrel
