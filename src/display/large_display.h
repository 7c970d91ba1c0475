#pragma once
#include <optional>
#include <string>

namespace ketrel {

class App;

// The main screen's field that the large display shows under the name in lblDisplayPID;
// nullptr for a name that matches no slot (the screen then stays as it was).
const char* LargeDisplaySource(const std::string& displayName);

// Where the bar goes for the source's text, under the unit settings and the bar maximum of
// the scale in use; nullopt leaves the bar where it is.
std::optional<int> LargeBarValue(const std::string& displayName, const std::string& text,
                                 const std::string& temp, const std::string& speed, int barMax);

// Opens the large display on the value of one entry of mnuViewRealTime (its name).
void OpenLargeDisplay(App& app, const std::string& menuName);

// Sets the handlers of frmRealDisplay and of the entries of mnuViewRealTime.
void InstallLargeDisplay(App& app);

}  // namespace ketrel
