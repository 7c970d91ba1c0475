#pragma once
#include <optional>
#include <string>
#include <vector>

namespace ketrel {

// Opens a file in the desktop's text viewer.
class Launcher {
  public:
    virtual ~Launcher() = default;
    // False when the viewer could not be started.
    virtual bool openTextFile(const std::string& path) = 0;
    // Opens the desktop's display settings; false when there is none.
    virtual bool openDisplaySettings() = 0;
};

// A launcher for tests: remembers what was opened.
class RecordingLauncher : public Launcher {
  public:
    bool openTextFile(const std::string& path) override {
        opened.push_back(path);
        return true;
    }
    bool openDisplaySettings() override {
        displaySettingsOpened++;
        return true;
    }
    std::vector<std::string> opened;
    int displaySettingsOpened = 0;
};

// One display mode of a screen.
struct DisplayMode {
    int width = 0;
    int height = 0;
    int depth = 0;    // bits per pixel
    int refresh = 0;  // Hz
};

// What the platform reports of the screen the program runs on.
class DisplayInfo {
  public:
    virtual ~DisplayInfo() = default;
    // The current mode; nothing when it can't be read.
    virtual std::optional<DisplayMode> current() = 0;
    // Every mode the platform reports.
    virtual std::vector<DisplayMode> modes() = 0;
    // Asks the platform to switch mode; false when it refuses.
    virtual bool change(const DisplayMode& mode) = 0;
};

// A fixed display for tests and headless runs.
class FixedDisplayInfo : public DisplayInfo {
  public:
    std::optional<DisplayMode> current() override { return mode; }
    std::vector<DisplayMode> modes() override {
        if (mode) return {*mode};
        return {};
    }
    bool change(const DisplayMode& m) override {
        if (!allowChange) return false;
        mode = m;
        return true;
    }
    std::optional<DisplayMode> mode = DisplayMode{1280, 1024, 32, 60};
    bool allowChange = false;
};

}  // namespace ketrel
