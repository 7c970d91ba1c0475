#include "screens/frm_new_pids.h"

#include "screens/frm_main.h"
#include "screens/new_pids_layout.h"

namespace ketrel {

FrmNewPids::FrmNewPids(EventLoop& loop)
    : Screen(loop, "frmNewPids", "EXTENDED DATA PARAMETER"), Timer1(makeTimer(100)) {
    valueFields_ = {&lblDisMilOn, &lblRelFuelPres, &lblRailPres};
    for (int n = 1; n <= 8; ++n) {
        valueFields_.push_back(&lblO2wrvE(n));
        valueFields_.push_back(&lblO2wr(n));
    }
    for (Field* f : {&lblComEGR, &lblEgrError, &lblEvapPurge, &lblFuelLevel, &lblWarmUp,
                     &lblDisClear, &lblVaporPres, &lblBaro})
        valueFields_.push_back(f);
    for (int n = 1; n <= 8; ++n) {
        valueFields_.push_back(&lblO2wrE(n));
        valueFields_.push_back(&lblO2wra(n));
    }
    for (Field* f : {&LBLCatB1S1, &lblCatB1S2, &lblCatB2S1, &lblCatB2S2, &lblVolt, &lblAbosLoad,
                     &lblEquivRatio, &lblTps, &lblAmbientAir, &lblTpsB, &lblTpsC, &lblTpsD,
                     &lblTpsE, &lblTpsF, &lblActuator, &lblMinutes, &lblTimeClearDTC})
        valueFields_.push_back(f);
    // Unit captions as the screen is designed; the unit routine rewrites them.
    for (int i : {0, 1, 2, 3, 20})
        lblTemp[i].setText("Deg {F}");
    for (int i : {7, 8, 17})
        lblPressure[i].setText("PSI");
    lblPressure[16].setText("In/H2O");
    lblPressure[18].setText("In/Hg");  // barometric pressure
    for (int i : {4, 15})
        lblSpeed[i].setText("Miles");
    for (const NewPidRow& row : kNewPidRows)
        if (row.captionItem >= 0) Label1[row.captionItem].setText(row.caption);
    // One status picture per PID 21 to 4E, item n for PID n + 32.
    for (int n = 1; n <= 46; ++n)
        Image1[n].setPicture(kImgRed);
    Command1.setText("RECORD");
    markDesign();
}

}  // namespace ketrel
