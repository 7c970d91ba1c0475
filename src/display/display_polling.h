#pragma once
#include <string_view>

namespace ketrel {

class App;

// The number at the start of a value field's text ("23.4", "-40", "0.450 V"); 0 when the text
// does not start with one ("N/A", "-"). A decimal comma reads as a point.
double TextValue(std::string_view text);

// A display that takes over the polling keeps PidWanted(0..41) in SavedPidWanted and clears
// them; it asks for its own PIDs afterwards.
void SavePolling(App& app);
// Gives PidWanted(0..41) back from SavedPidWanted, pumping the event loop at each flag.
void RestorePolling(App& app);

// Waits `seconds` on the high-resolution stopwatch with the event loop pumped, so replies in
// flight land first.
void SettleWait(App& app, double seconds);

}  // namespace ketrel
