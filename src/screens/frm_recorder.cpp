#include "screens/frm_recorder.h"

namespace ketrel {

FrmRecorder::FrmRecorder(EventLoop& loop)
    : Screen(loop, "frmRecorder", "Log Controller - Untitled.log"), Timer1(makeTimer(100)) {
    cmdRecord.setText("&RECORD");
    cmdPlay.setText("&PLAY");
    cmdStop.setText("&STOP");
    sldSpeed.setValue(100);
    Label1[54].setText("Delay Between Frame (ms)");
    lblSpeed.setText("100");
    // The buttons follow the state the controller is opened in; the delay is only for a
    // replay, so it starts off.
    for (Control* c : {static_cast<Control*>(&cmdRecord), static_cast<Control*>(&cmdPlay),
                       static_cast<Control*>(&cmdStop), static_cast<Control*>(&sldSpeed),
                       static_cast<Control*>(&Label1[54]), static_cast<Control*>(&lblSpeed)})
        c->setEnabled(false);
    markDesign();
}

StatusPanel& FrmRecorder::panel(int number) {
    switch (number) {
        case 1:
            return Panel1;
        case 2:
            return Panel2;
        default:
            return Panel3;
    }
}

}  // namespace ketrel
