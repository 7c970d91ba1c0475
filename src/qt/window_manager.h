#pragma once
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "screens/screen.h"

namespace ketrel {

class App;

// Gives each screen a window while it is loaded: made when the screen first shows, shown,
// hidden, enabled, made modal or topmost as the screen says, and destroyed when it unloads.
// Closing a window asks the screen to close; the screen decides.
class WindowManager : public QObject {
  public:
    using Factory = std::function<QWidget*(Screen&)>;
    explicit WindowManager(App& app);
    ~WindowManager() override;

    // The layout of one screen; screens without one get a plain generic window.
    void registerView(const std::string& screenName, Factory factory);
    // Starts following every screen the application has now.
    void adoptScreens();
    // The window of a screen while it exists.
    QWidget* windowOf(const std::string& screenName) const;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Entry {
        Screen* screen = nullptr;
        QPointer<QWidget> window;
        Geometry placed{};
        int observer = 0;
    };
    void sync(Entry& e);
    QWidget* make(Screen& s);

    App& app_;
    std::map<std::string, Factory> factories_;
    std::map<Screen*, Entry> entries_;
    std::vector<QPointer<QWidget>> retired_;
};

// A plain window that shows every control of a screen one under the other.
QWidget* MakeGenericWindow(Screen& screen);

}  // namespace ketrel
