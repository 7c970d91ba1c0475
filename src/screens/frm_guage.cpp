#include "screens/frm_guage.h"

#include <cmath>

namespace ketrel {

FrmGuage::FrmGuage(EventLoop& loop) : Screen(loop, "frmGuage", "RPM GAUGES"), Timer1(makeTimer(1)) {
    // The needle rests at the dial's start, 1.71 radians, 150 pixels long.
    Line4.setEnds(180, 180, 180 + 150 * std::cos(1.71), 180 + 150 * std::sin(1.71));
    Line4.setPen(0xFF0000, 3);
    lblRPM[27].setText("0");
    lblRPM[27].setForeColor(0x00FF00);
    for (Shape* bar : {&BarLow, &BarMid, &BarHigh})
        bar->setFillStyle(FillStyle::UpwardDiagonal);
    BarLow.setFillColor(0x00FF00);
    BarMid.setFillColor(0xFFFF00);
    BarHigh.setFillColor(0xFF0000);
    BarMid.setVisible(false);
    BarHigh.setVisible(false);
    for (int i = 12; i <= 22; ++i)
        Label1[i].setText(std::to_string(i - 11));
    markDesign();
}

void FrmGuage::resetVariables() {
    GaugeRPM = 0;
    GaugeScale = "1";
    GaugeAngle = 0;
    CX = CY = R = 0;
}

}  // namespace ketrel
