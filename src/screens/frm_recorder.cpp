#include "screens/frm_recorder.h"

namespace ketrel {

FrmRecorder::FrmRecorder(EventLoop& loop)
    : Screen(loop, "frmRecorder", "Log Controller - Untitled.log"), Timer1(makeTimer(100)) {
    cmdRecord.setText("&RECORD");
    cmdPlay.setText("&PLAY");
    cmdStop.setText("&STOP");
    sldSpeed.setValue(100);
    Label1[54].setText("Delay Between Frame (ms)");
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
