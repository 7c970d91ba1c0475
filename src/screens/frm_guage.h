#pragma once
#include <array>

#include "screens/picture_box.h"
#include "screens/screen.h"

namespace ketrel {

// "RPM GAUGES": a large tachometer with a needle, a digital readout in three colours and a bar
// in three parts under three scales.
class FrmGuage : public Screen {
  public:
    explicit FrmGuage(EventLoop& loop);

    // The dial's face, drawn once per scale; the needle Line4 turns over it.
    PictureBox Dial{this, "Dial", 360, 360};
    LineShape Line4{this, "Line4"};
    // The digital readout is lblRPM(27).
    ControlArray<Field> lblRPM{this, "lblRPM"};
    Shape BarLow{this, "BarLow"}, BarMid{this, "BarMid"}, BarHigh{this, "BarHigh"};
    // The scale numbers Label1(12) to Label1(22), one per thousand.
    ControlArray<Field> Label1{this, "Label1"};
    Timer& Timer1;

    MenuItem mnuFile{this, "mnuFile", "&File"};
    MenuItem mnuFileExit{this, "mnuFileExit", "E&xit", &mnuFile};
    MenuItem mnuView{this, "mnuView", "&View"};
    MenuItem mnuViewBig{this, "mnuViewBig", "Large Scale", &mnuView};
    MenuItem mnuViewMid{this, "mnuViewMid", "Mid Scale", &mnuView};
    MenuItem mnuViewSmall{this, "mnuViewSmall", "Small Scale", &mnuView};
    MenuItem mnuViewSolid{this, "mnuViewSolid", "Solid Type", &mnuView};
    MenuItem mnuViewUpward{this, "mnuViewUpward", "Upward Diagonal Type", &mnuView};

    // The screen's own variables.
    long GaugeRPM = 0;
    std::string GaugeScale = "1";
    float GaugeAngle = 0;
    // The needle's centre and length, taken from Line4 when the screen opens.
    double CX = 0, CY = 0, R = 0;
    std::array<bool, 42> SavedPidWanted{};

  protected:
    void resetVariables() override;
};

}  // namespace ketrel
