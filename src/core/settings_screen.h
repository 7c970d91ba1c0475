#pragma once
#include <cstdint>
#include <string>

#include "platform/desktop.h"

namespace ketrel {

class App;

// The status-bar panel of frmMain that shows the display measurement.
inline constexpr int kDisplayPanel = 4;

// Installs the handlers of frmSettings: its load, the five pages with their Apply, Default
// and Close buttons, the connecting-log page and the display page.
void InstallSettingsScreen(App& app);

// Words for a colour depth in bits: "256 Color", "High Color", "True Color".
std::string ColorDepthWords(int depth);
// One line of the display list: width x height, colours and refresh rate.
std::string DisplayModeText(const DisplayMode& mode);
// A file size in kilobytes with one decimal, as "12.5 KB".
std::string FileSizeText(std::uintmax_t bytes);
// The hint beside the request-delay slider for the protocol a delay suits, or "".
std::string RecommendedDelayText(int ms);

// Fills the display page from what the platform reports, and measures the current mode
// into the values the start-up check reads.
void MeasureDisplay(App& app);
// Wires the buttons of the display page (part of InstallSettingsScreen).
void InstallDisplayPage(App& app);

}  // namespace ketrel
