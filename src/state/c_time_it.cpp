#include "state/c_time_it.h"

#include <cmath>

namespace ketrel {

cTimeIt::cTimeIt(Clock& clock, Dialogs& dialogs) : clock_(clock) {
    frequency_ = clock_.frequency();
    if (frequency_ <= 0) {
        dialogs.message("This timer class doesn't support high frequency clock's!");
        frequency_ = 0;
    }
}

void cTimeIt::Start() {
    start_ = clock_.counter();
    stop_ = 0;
}

void cTimeIt::StopNow() {
    stop_ = clock_.counter();
}

double cTimeIt::Result() const {
    if (stop_ == 0 || frequency_ == 0) return -1;
    double seconds = double(stop_ - start_) / double(frequency_);
    return std::round(seconds * 10000.0) / 10000.0;
}

}  // namespace ketrel
