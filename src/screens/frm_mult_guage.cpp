#include "screens/frm_mult_guage.h"

#include <cmath>

namespace ketrel {

FrmMultGuage::FrmMultGuage(EventLoop& loop)
    : Screen(loop, "frmMultGuage", "MULTIPLE GAUGES"),
      GuageStartTimer(makeTimer(1)),
      TimerDelay(makeTimer(500)),
      TimerDelay2(makeTimer(1000)) {
    const char* captions[] = {"FUEL PRESSURE", "INTAKE AIR", "RPM", "SPEED", "COOLANT"};
    for (int i = 0; i < 5; ++i) {
        Picture1[i].setSize(200, 200);
        // Every needle rests at the bottom of its dial, 2.36 radians, 75 pixels long.
        Line1[i].setEnds(100, 100, 100 + 75 * std::cos(2.36), 100 + 75 * std::sin(2.36));
        Line1[i].setPen(0xFF0000, 2);
        Label1[i].setText(captions[i]);
        Label1[9 + i].setText("NA");
    }
    markDesign();
}

void FrmMultGuage::resetVariables() {
    CX = CY = R = 0;
    PollingSaved = false;
    NeedleAngle = {};
}

}  // namespace ketrel
