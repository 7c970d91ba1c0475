#include "screens/frm_new_pids.h"

namespace ketrel {

FrmNewPids::FrmNewPids(EventLoop& loop) : Screen(loop, "frmNewPids", "EXTENDED DATA PARAMETER") {
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
    for (int i : {4, 15})
        lblSpeed[i].setText("Miles");
    markDesign();
}

}  // namespace ketrel
