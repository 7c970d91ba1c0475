#pragma once
#include "screens/screen.h"

namespace ketrel {

// The printed freeze-frame page: the vehicle fields, the freeze-frame values and the text block
// of trouble codes. Never shown as a window; loading it prints it.
class FrmPrintFF : public Screen {
  public:
    explicit FrmPrintFF(EventLoop& loop);

    Field Frame1{this, "Frame1"};  // the page body
    Field lblLogo{this, "lblLogo"};
    // Vehicle
    Field lblYear{this, "lblYear"}, lblMake{this, "lblMake"}, lblModel{this, "lblModel"},
        lblAC{this, "lblAC"}, lblCylinder{this, "lblCylinder"},
        lblTransmission{this, "lblTransmission"}, lblMileage{this, "lblMileage"},
        lblVin{this, "lblVin"};
    // Freeze frame
    Field lblLoad{this, "lblLoad"}, lblSpark{this, "lblSpark"}, lblLTFTB1{this, "lblLTFTB1"},
        lblLTFTB2{this, "lblLTFTB2"}, lblSTFTB1{this, "lblSTFTB1"}, lblSTFTB2{this, "lblSTFTB2"},
        lblCoolant{this, "lblCoolant"}, lblIntake{this, "lblIntake"}, lblRPM{this, "lblRPM"},
        lblSpeed{this, "lblSpeed"}, lblMAF{this, "lblMAF"}, lblMAP{this, "lblMAP"},
        lblFS1{this, "lblFS1"}, lblFS2{this, "lblFS2"}, lblFPressure{this, "lblFPressure"},
        lblTps{this, "lblTps"};
    Field lblFFCodes{this, "lblFFCodes"};  // captioned "CODE:", never written
    Field txtFaultCodes{this, "txtFaultCodes"};
    Field Command1{this, "Command1"};  // unloads the page
};

}  // namespace ketrel
