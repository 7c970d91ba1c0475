#pragma once
#include <cstdint>

#include "platform/clock.h"
#include "platform/dialogs.h"

namespace ketrel {

// The high-resolution stopwatch: start, stop, and the elapsed seconds at a grain of 0.1 ms.
class cTimeIt {
  public:
    cTimeIt(Clock& clock, Dialogs& dialogs);
    std::int64_t Frequency() const { return frequency_; }
    void Start();
    void StopNow();
    // Elapsed seconds rounded to four decimals; -1 if StopNow has not run or no counter exists.
    double Result() const;

  private:
    Clock& clock_;
    std::int64_t frequency_ = 0, start_ = 0, stop_ = 0;
};

}  // namespace ketrel
