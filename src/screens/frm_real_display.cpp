#include "screens/frm_real_display.h"

namespace ketrel {

// Timer2 copies a field's text and parses it, nothing more: 50 ms reads as instant on the
// display and leaves the processor idle in between, where the quickest tick of the timer
// would keep a core busy for no visible gain.
FrmRealDisplay::FrmRealDisplay(EventLoop& loop)
    : Screen(loop, "frmRealDisplay", "LARGE DISPLAY"),
      Timer2(makeTimer(50)),
      DisableTimer(makeTimer(500)) {
    lblDisabled[0].setText("DISABLED");
    lblDisabled[0].setVisible(false);
    cmdPIDSAvailable.setText("PIDS AVAILABLE");
    // A blue bar on yellow.
    ProgressBar1.setBarColor(0x0000FF);
    ProgressBar1.setBackColor(0xFFFF00);
    markDesign();
}

}  // namespace ketrel
