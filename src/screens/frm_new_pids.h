#pragma once
#include <array>
#include <vector>

#include "screens/screen.h"

namespace ketrel {

// The extended data screen: values of Mode 01 PIDs 21 to 4E, their captions, unit captions and
// status pictures, and the grid that mirrors them in grid style.
class FrmNewPids : public Screen {
  public:
    explicit FrmNewPids(EventLoop& loop);

    // Value fields, as the decoders name them.
    Field lblDisMilOn{this, "lblDisMilOn"}, lblRelFuelPres{this, "lblRelFuelPres"},
        lblRailPres{this, "lblRailPres"};
    Field lblO2wrvE1{this, "lblO2wrvE1"}, lblO2wrvE2{this, "lblO2wrvE2"},
        lblO2wrvE3{this, "lblO2wrvE3"}, lblO2wrvE4{this, "lblO2wrvE4"},
        lblO2wrvE5{this, "lblO2wrvE5"}, lblO2wrvE6{this, "lblO2wrvE6"},
        lblO2wrvE7{this, "lblO2wrvE7"}, lblO2wrvE8{this, "lblO2wrvE8"};
    Field lblO2wr1{this, "lblO2wr1"}, lblO2wr2{this, "lblO2wr2"}, lblO2wr3{this, "lblO2wr3"},
        lblO2wr4{this, "lblO2wr4"}, lblO2wr5{this, "lblO2wr5"}, lblO2wr6{this, "lblO2wr6"},
        lblO2wr7{this, "lblO2wr7"}, lblO2wr8{this, "lblO2wr8"};
    Field lblComEGR{this, "lblComEGR"}, lblEgrError{this, "lblEgrError"},
        lblEvapPurge{this, "lblEvapPurge"}, lblFuelLevel{this, "lblFuelLevel"},
        lblWarmUp{this, "lblWarmUp"}, lblDisClear{this, "lblDisClear"},
        lblVaporPres{this, "lblVaporPres"}, lblBaro{this, "lblBaro"};
    Field lblO2wrE1{this, "lblO2wrE1"}, lblO2wrE2{this, "lblO2wrE2"}, lblO2wrE3{this, "lblO2wrE3"},
        lblO2wrE4{this, "lblO2wrE4"}, lblO2wrE5{this, "lblO2wrE5"}, lblO2wrE6{this, "lblO2wrE6"},
        lblO2wrE7{this, "lblO2wrE7"}, lblO2wrE8{this, "lblO2wrE8"};
    Field lblO2wra1{this, "lblO2wra1"}, lblO2wra2{this, "lblO2wra2"}, lblO2wra3{this, "lblO2wra3"},
        lblO2wra4{this, "lblO2wra4"}, lblO2wra5{this, "lblO2wra5"}, lblO2wra6{this, "lblO2wra6"},
        lblO2wra7{this, "lblO2wra7"}, lblO2wra8{this, "lblO2wra8"};
    Field LBLCatB1S1{this, "LBLCatB1S1"}, lblCatB1S2{this, "lblCatB1S2"},
        lblCatB2S1{this, "lblCatB2S1"}, lblCatB2S2{this, "lblCatB2S2"};
    Field lblVolt{this, "lblVolt"}, lblAbosLoad{this, "lblAbosLoad"},
        lblEquivRatio{this, "lblEquivRatio"}, lblTps{this, "lblTps"},
        lblAmbientAir{this, "lblAmbientAir"};
    Field lblTpsB{this, "lblTpsB"}, lblTpsC{this, "lblTpsC"}, lblTpsD{this, "lblTpsD"},
        lblTpsE{this, "lblTpsE"}, lblTpsF{this, "lblTpsF"};
    Field lblActuator{this, "lblActuator"}, lblMinutes{this, "lblMinutes"},
        lblTimeClearDTC{this, "lblTimeClearDTC"};

    // Pairs of the wide-range O2 sensors, n = 1 to 8: equivalence ratio and voltage (PIDs 24
    // to 2B), equivalence ratio and current (PIDs 34 to 3B).
    Field& lblO2wrvE(int n) { return *o2wrvE_.at(std::size_t(n - 1)); }
    Field& lblO2wr(int n) { return *o2wr_.at(std::size_t(n - 1)); }
    Field& lblO2wrE(int n) { return *o2wrE_.at(std::size_t(n - 1)); }
    Field& lblO2wra(int n) { return *o2wra_.at(std::size_t(n - 1)); }

    // Every value field, in the order of the PIDs.
    const std::vector<Field*>& valueFields() const { return valueFields_; }

    // Captions, status pictures, unit captions and the grid style.
    ControlArray<Field> Label1{this, "Label1"};
    ControlArray<Field> Image1{this, "Image1"};
    ControlArray<Field> lblTemp{this, "lblTemp"};
    ControlArray<Field> lblPressure{this, "lblPressure"};
    ControlArray<Field> lblSpeed{this, "lblSpeed"};
    Grid GridData{this, "GridData", 25, 9};

    // Menus and the button that starts recording at once.
    MenuItem mnuFile{this, "mnuFile", "&File"};
    MenuItem mnuFileExit{this, "mnuFileExit", "E&xit", &mnuFile};
    MenuItem mnuOption{this, "mnuOption", "&Option"};
    MenuItem mnuCustom{this, "mnuCustom", "Custom Display List...", &mnuOption};
    Field Command1{this, "Command1"};
    // Runs one tick after a close request, so the request cycle sees CustomListActive drop
    // before the screen goes.
    Timer& Timer1;
    // Set by Timer1: the next close request goes through.
    bool closeReady = false;

  protected:
    void resetVariables() override { closeReady = false; }

  private:
    std::array<Field*, 8> o2wrvE_{&lblO2wrvE1, &lblO2wrvE2, &lblO2wrvE3, &lblO2wrvE4,
                                  &lblO2wrvE5, &lblO2wrvE6, &lblO2wrvE7, &lblO2wrvE8};
    std::array<Field*, 8> o2wr_{&lblO2wr1, &lblO2wr2, &lblO2wr3, &lblO2wr4,
                                &lblO2wr5, &lblO2wr6, &lblO2wr7, &lblO2wr8};
    std::array<Field*, 8> o2wrE_{&lblO2wrE1, &lblO2wrE2, &lblO2wrE3, &lblO2wrE4,
                                 &lblO2wrE5, &lblO2wrE6, &lblO2wrE7, &lblO2wrE8};
    std::array<Field*, 8> o2wra_{&lblO2wra1, &lblO2wra2, &lblO2wra3, &lblO2wra4,
                                 &lblO2wra5, &lblO2wra6, &lblO2wra7, &lblO2wra8};
    std::vector<Field*> valueFields_;
};

}  // namespace ketrel
