#include "obd/value_fields.h"

#include "state/app.h"

namespace ketrel {

std::vector<Field*> MainDataFields(App& app) {
    FrmMain& m = app.frmMain();
    return {&m.lblAirCommand, &m.lblSTO2B1S1, &m.lblSTO2B1S2, &m.lblSTO2B1S3, &m.LBLSTO2B1S4,
            &m.LBLSTO2B2S1,   &m.LBLSTO2B2S2, &m.LBLSTO2B2S3, &m.LBLSTO2B2S4, &m.lblCoolant,
            &m.lblIntakeAir,  &m.lblRPM,      &m.lblO2b1s1,   &m.lblO2b1s2,   &m.lblO2b1s3,
            &m.lblO2b1s4,     &m.lblO2b2s1,   &m.lblO2b2s2,   &m.lblO2b2s3,   &m.lblO2b2s4,
            &m.lblFuelSys1,   &m.lblFuelSys2, &m.lblFuelPres, &m.lblTps,      &m.lblSpeed,
            &m.lblTiming,     &m.lblMAF,      &m.lblLoad,     &m.lblMAP,      &m.lblLTB1,
            &m.lblLTB2,       &m.lblSTB1,     &m.lblSTB2,     &m.lblMil,      &m.lblNumberCodes,
            &m.lblPTO,        &m.lblTimeStart};
}

std::vector<Field*> FreezeFrameFields(App& app) {
    FrmMain& m = app.frmMain();
    return {&m.lblFFLoad,     &m.lblFFCoolant, &m.lblFFRPM,      &m.lblFFSpeed,
            &m.lblFFTiming,   &m.lblFFTPS,     &m.lblFFLTFTB1,   &m.lblFFLTFTB2,
            &m.lblFFSTFTB1,   &m.lblFFSTFTB2,  &m.lblFFFuelSys1, &m.lblFFFuelSys2,
            &m.lblFFFuelPres, &m.lblFFMAF,     &m.lblFFMAP,      &m.lblFFIntakeAir};
}

}  // namespace ketrel
