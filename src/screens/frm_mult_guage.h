#pragma once
#include <array>

#include "screens/picture_box.h"
#include "screens/screen.h"

namespace ketrel {

// "MULTIPLE GAUGES": five small dials at once, for RPM, fuel pressure, speed, intake air and
// coolant temperature, each with its readout.
class FrmMultGuage : public Screen {
  public:
    explicit FrmMultGuage(EventLoop& loop);

    // Each needle Line1(i) turns over its own dial face Picture1(i); the five are laid out
    // alike, so one centre and radius serve all.
    ControlArray<PictureBox> Picture1{this, "Picture1"};
    ControlArray<LineShape> Line1{this, "Line1"};
    // Readouts Label1(9) to Label1(13); captions Label1(0) to Label1(4).
    ControlArray<Field> Label1{this, "Label1"};
    Timer& GuageStartTimer;
    Timer& TimerDelay;
    Timer& TimerDelay2;
    MenuItem mnuFile{this, "mnuFile", "&File"};
    MenuItem mnuFileExit{this, "mnuFileExit", "E&xit", &mnuFile};

    // The needles' centre and length, read when the screen opens.
    double CX = 0, CY = 0, R = 0;
    // Whether the screen took the 42 polling flags over, and what they were.
    bool PollingSaved = false;
    std::array<bool, 42> SavedPidWanted{};
    // The angle each needle stands at, by needle number.
    std::array<double, 5> NeedleAngle{};

  protected:
    void resetVariables() override;
};

}  // namespace ketrel
