#pragma once
#include <string>

namespace ketrel {

class App;

// A log is about to be played: no session, the receive routines take RawFrame as the player
// sets it and skip the port, the record step and the watchdog; the code grids and lists are
// emptied and set up anew, and LogType names the receive routine of every frame.
void BeginReplay(App& app, const std::string& logType);
// The log has been played to its end or stopped.
void EndReplay(App& app);

}  // namespace ketrel
