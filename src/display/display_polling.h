#pragma once
#include <array>
#include <initializer_list>

#include "platform/text_convert.h"

namespace ketrel {

class App;

// The displays that take the line over keep the first 42 polling flags while they run.
using SavedFlags = std::array<bool, 42>;

// Keeps PidWanted(0) to PidWanted(41) in `saved`, then leaves only the given PIDs wanted.
void NarrowPolling(App& app, SavedFlags& saved, std::initializer_list<int> pids);
// Puts the kept flags back; with pumpEach the event loop runs after each one, so replies in
// flight land while the cycle turns back to the full list.
void RestorePolling(App& app, const SavedFlags& saved, bool pumpEach);

// The same over the program's SavedPidWanted: all 42 flags cleared, then given back with the
// loop pumped at each.
void SavePolling(App& app);
void RestorePolling(App& app);

// Waits `seconds` on the high-resolution stopwatch with the event loop pumped, so replies in
// flight land first.
void SettleWait(App& app, double seconds);

}  // namespace ketrel
