#pragma once
#include <functional>
#include <string>
#include <string_view>

#include "platform/event_loop.h"
#include "state/c_time_it.h"

namespace ketrel {

// The received byte as two upper-case hex digits ("0A", "FF"); what every receive path does
// to each character of Input.
std::string ByteToHex(unsigned char byte);
// A run of received bytes as hex text, pairs joined with no separator ("410C1AF8").
std::string BytesToHex(std::string_view bytes);
// The same with a blank after each pair ("41 0C "), as the auto-detect buffer shows it.
std::string BytesToSpacedHex(std::string_view bytes);

// The four kinds of wait. A timer callback is a Timer on the event thread and needs no helper;
// the other three follow.

// Blocking sleep: time passes, no handler runs, received bytes wait in the port buffer.
void BlockingSleep(EventLoop& loop, int ms);

// Busy timing on the stopwatch: Start, then StopNow and Result over and over until the result
// reaches `seconds`. Nothing else runs meanwhile. A stopwatch without a counter (frequency 0)
// would never reach the limit; the wait then returns at once instead of hanging the program.
void BusyWait(cTimeIt& timer, double seconds);

// Like BusyWait, but `poll` runs on every turn of the loop (a wait that watches the port
// without pumping). Returns early, with true, as soon as poll returns true.
bool BusyWaitPolling(cTimeIt& timer, double seconds, const std::function<bool()>& poll);

// Pumped wait: runs the event loop until `done` holds. Handlers of timers and ports run
// inside, so anything the caller reads may change under it.
void PumpedWait(EventLoop& loop, const std::function<bool()>& done);

}  // namespace ketrel
