#pragma once
#include <functional>

#include "screens/progress_bar.h"
#include "screens/screen.h"

namespace ketrel {

// The large display: one value of the main screen as a large number and a bar, readable from
// the driver's seat, with the scale under the bar and a warning that blinks while the value is
// not polled.
class FrmRealDisplay : public Screen {
  public:
    explicit FrmRealDisplay(EventLoop& loop);

    Field lblDisplayPID{this, "lblDisplayPID"};  // the value's name; it selects the source
    Field lblValue{this, "lblValue"};
    ProgressBar ProgressBar1{this, "ProgressBar1"};
    Field lblMin{this, "lblMin"}, lblMid{this, "lblMid"}, lblMax{this, "lblMax"};
    ControlArray<Field> lblDisabled{this, "lblDisabled"};
    Field cmdPIDSAvailable{this, "cmdPIDSAvailable"};

    // Copies the source field into the number and the bar.
    Timer& Timer2;
    // Blinks lblDisabled.
    Timer& DisableTimer;

    // Shows a menu of another screen as a pop-up beside the pointer; the view sets it.
    std::function<void(MenuItem&)> showPopupMenu;
};

}  // namespace ketrel
