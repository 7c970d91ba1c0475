#pragma once
#include <string>
#include <vector>

namespace ketrel {

class App;
class Control;

// Installs the main window's own logic: the menu entries and toolbar buttons that are not part
// of the session, the PID indicators, the debug buttons, the help texts, the start state of
// the session-only controls and the guard that keeps entries of absent screens off.
void InstallMainScreen(App& app);

// A click on indicator Image1(item): with "PIDS Override" checked and a session up, turns the
// PID's polling off (when supported) or forces it on (when not), then lets a reply in flight
// land during a short pumped wait.
void IndicatorClick(App& app, int item);

// Command1 "Debug Data": shows or hides every debug field together, the opposite of LogData.
void ToggleDebugFields(App& app);

// Opens System/<fileName> under the application's folder in the desktop's text viewer; a
// missing file or a viewer that can't start shows a message titled "Error".
void OpenSystemText(App& app, const std::string& fileName);

// Whether the Mode 5 and Mode 6 test screens can run for this converter and protocol: BR3 on
// protocols "01" to "04", KESH and TACTRIX on "03" and "04"; never on DORVANE.
bool ModeTestsAvailable(const std::string& hardware, const std::string& protocolCode);

// The screen that a main-window entry or button opens, for the controls that need a screen of
// their own; "" for any other control.
std::string ScreenNeededBy(App& app, const Control& control);

}  // namespace ketrel
