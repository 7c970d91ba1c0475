#pragma once
#include "platform/desktop.h"

namespace ketrel {

// Opens files with the desktop's default application and starts its display settings.
class QtLauncher : public Launcher {
  public:
    bool openTextFile(const std::string& path) override;
    // Starts the first display settings program found on this desktop; false if none is.
    bool openDisplaySettings() override;
};

// The screen the program shows on, as Qt reports it. Qt knows only the present mode and
// can't switch modes, so the list holds that one mode and a change is refused.
class QtDisplayInfo : public DisplayInfo {
  public:
    std::optional<DisplayMode> current() override;
    std::vector<DisplayMode> modes() override;
    bool change(const DisplayMode& mode) override;
};

}  // namespace ketrel
