#pragma once
#include "screens/screen.h"

namespace ketrel {

// The log controller: records the frames of a live session into Log/Untitled.log and plays a
// saved log back through the receive routines, with a delay between frames.
class FrmRecorder : public Screen {
  public:
    explicit FrmRecorder(EventLoop& loop);

    Field cmdRecord{this, "cmdRecord"}, cmdPlay{this, "cmdPlay"}, cmdStop{this, "cmdStop"},
        cmdRewind{this, "cmdRewind"};
    Slider sldSpeed{this, "sldSpeed", 0, 500};
    ControlArray<Field> Label1{this, "Label1"};  // 54: the slider's caption
    Field lblSpeed{this, "lblSpeed"};
    // Status bar: 1 status, 2 frame count, 3 elapsed time.
    StatusPanel Panel1{this, "StatusBar1.Panels", 1}, Panel2{this, "StatusBar1.Panels", 2},
        Panel3{this, "StatusBar1.Panels", 3};
    StatusPanel& panel(int number);
    Timer& Timer1;
};

}  // namespace ketrel
