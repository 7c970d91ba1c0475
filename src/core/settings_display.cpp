#include <cstdio>

#include "core/settings_screen.h"
#include "platform/text_convert.h"
#include "state/app.h"

namespace ketrel {

std::string ColorDepthWords(int depth) {
    if (depth >= 24) return "True Color";
    if (depth >= 15) return "High Color";
    if (depth >= 1) return std::to_string(1 << depth) + " Color";
    return "Unknown Color";
}

std::string DisplayModeText(const DisplayMode& mode) {
    char hz[16];
    std::snprintf(hz, sizeof hz, "%3d Hz", mode.refresh);
    return std::to_string(mode.width) + " x " + std::to_string(mode.height) + ", " +
           ColorDepthWords(mode.depth) + ", " + hz;
}

void MeasureDisplay(App& app) {
    FrmSettings& s = app.frmSettings();
    DisplayInfo& display = app.platform.display;
    s.lstDisplaySettings.clear();
    for (const DisplayMode& mode : display.modes())
        s.lstDisplaySettings.addItem(DisplayModeText(mode));
    std::optional<DisplayMode> current = display.current();
    if (!current) {
        s.lblCurrentDisplaySettings.setText("");
        app.dialogs().message("Error Evaluating The Current Display Settings", "Ketrel",
                              MsgIcon::Exclamation);
        return;
    }
    s.lblCurrentDisplaySettings.setText(DisplayModeText(*current));
    app.DisplayWidth = current->width;
    app.DisplayHeight = current->height;
    app.DisplayDepth = current->depth;
}

namespace {

void changeDisplay(App& app) {
    FrmSettings& s = app.frmSettings();
    DisplayInfo& display = app.platform.display;
    std::vector<DisplayMode> modes = display.modes();
    int i = s.lstDisplaySettings.listIndex();
    if (i < 0 || i >= int(modes.size())) {
        app.dialogs().message("No items selected !", "Ketrel", MsgIcon::Exclamation);
        return;
    }
    MsgAnswer answer = app.dialogs().message(
        "Ketrel is best viewed using 1024 X 768 High Color Or Greater.\nProceed in change "
        "settings?",
        "Ketrel", MsgIcon::Question, MsgButtons::YesNo);
    if (answer != MsgAnswer::Yes) return;
    const DisplayMode& mode = modes[std::size_t(i)];
    if (!display.change(mode)) {
        app.dialogs().message("Display settings could not be changed!", "Ketrel",
                              MsgIcon::Exclamation);
        // Where the program may not switch modes itself, the desktop's own display settings
        // are the way to do it.
        app.platform.launcher.openDisplaySettings();
        return;
    }
    std::string text = DisplayModeText(mode);
    s.lblCurrentDisplaySettings.setText(text);
    app.frmMain().panel(kDisplayPanel).setText("Display Setting:  " + UpperCase(text));
    app.DisplayWidth = mode.width;
    app.DisplayHeight = mode.height;
    app.DisplayDepth = mode.depth;
    app.SaveSetting("AppDisplay", text);
}

}  // namespace

// Wires the buttons of the display page.
void InstallDisplayPage(App& app) {
    FrmSettings& s = app.frmSettings();
    s.cmdCurrentDisplaySettings.onClick = [&app] { MeasureDisplay(app); };
    s.cmdChangeDisplaySettings.onClick = [&app] { changeDisplay(app); };
}

}  // namespace ketrel
