#pragma once
#include <array>
#include <functional>

#include "screens/picture_box.h"
#include "screens/screen.h"

namespace ketrel {

// The scope "SCOPE GRAPH": one PID drawn as a green trace that scrolls right to left over a
// red grid, with its current, highest and lowest value, its scale and the sampling speed.
class FrmScope : public Screen {
  public:
    explicit FrmScope(EventLoop& loop);

    PictureBox Signal{this, "Signal", 600, 300};
    Field lblScopePID{this, "lblScopePID"};
    Field lblValue{this, "lblValue"}, lblMax{this, "lblMax"}, lblMin{this, "lblMin"},
        lblUnits{this, "lblUnits"};
    // The scale captions, bottom to top.
    Field lbl0{this, "lbl0"}, lbl1{this, "lbl1"}, lbl2{this, "lbl2"}, lbl3{this, "lbl3"},
        lbl4{this, "lbl4"}, lbl5{this, "lbl5"};
    Field lblSpeed{this, "lblSpeed"};
    Field cmdIncrease{this, "cmdIncrease"}, cmdDecrease{this, "cmdDecrease"};
    Field cmdPIDSAvailable{this, "cmdPIDSAvailable"};
    // Captions beside the values: "CURRENT", "MAX", "MIN".
    ControlArray<Field> Label1{this, "Label1"};

    MenuItem mnuFile{this, "mnuFile", "&File"};
    MenuItem mnuFileExit{this, "mnuFileExit", "E&xit", &mnuFile};
    // The pop-up of the PIDs the scope can draw.
    MenuItem mnuView{this, "mnuView", "PIDS"};
    MenuItem mnuO2B1S1{this, "mnuO2B1S1", "O2 Sensor B1S1...", &mnuView};
    MenuItem mnuO2B1S2{this, "mnuO2B1S2", "O2 Sensor B1S2...", &mnuView};
    MenuItem mnuO2B1S3{this, "mnuO2B1S3", "O2 Sensor B1S3...", &mnuView};
    MenuItem mnuO2B1S4{this, "mnuO2B1S4", "O2 Sensor B1S4...", &mnuView};
    MenuItem mnuO2B2S1{this, "mnuO2B2S1", "O2 Sensor B2S1...", &mnuView};
    MenuItem mnuO2B2S2{this, "mnuO2B2S2", "O2 Sensor B2S2...", &mnuView};
    MenuItem mnuO2B2S3{this, "mnuO2B2S3", "O2 Sensor B2S3...", &mnuView};
    MenuItem mnuO2B2S4{this, "mnuO2B2S4", "O2 Sensor B2S4...", &mnuView};
    MenuItem mnuThrottle{this, "mnuThrottle", "Throttle Position...", &mnuView};
    MenuItem mnuLoad{this, "mnuLoad", "Calculated Load...", &mnuView};
    MenuItem mnuTiming{this, "mnuTiming", "Spark Advance...", &mnuView};
    MenuItem mnuMAF{this, "mnuMAF", "Mass Air Flow...", &mnuView};
    MenuItem mnuMAP{this, "mnuMAP", "Manifold Absolute Pressure...", &mnuView};
    MenuItem mnuRPM{this, "mnuRPM", "Engine RPM...", &mnuView};
    MenuItem mnuSpeed{this, "mnuSpeed", "Vehicle Speed...", &mnuView};
    MenuItem mnuFuelPressure{this, "mnuFuelPressure", "Fuel Pressure...", &mnuView};

    // The eight O2 entries, in the order of PIDs 20 to 27.
    std::array<MenuItem*, 8> o2Entries() {
        return {&mnuO2B1S1, &mnuO2B1S2, &mnuO2B1S3, &mnuO2B1S4,
                &mnuO2B2S1, &mnuO2B2S2, &mnuO2B2S3, &mnuO2B2S4};
    }

    // Takes the samples at the chosen period.
    Timer& SampleTimer;
    // Set by the view: shows a menu as a pop-up where the pointer is.
    std::function<void(MenuItem&)> popupMenu;

    // The screen's own variables.
    bool ScopeRunning = false;
    int ScopeWidth = 0, ScopeHeight = 0;
    float ScopeUnit = 0, ScopeSample = 0;
    int ScopeY = 0, ScopeLastY = -1;
    float ScopeMax = 0, ScopeMin = 11000;
    std::string ScopeLabelText;
    // The sample period in ms that the timer runs at.
    int ScopePeriod = 75;
    // The 42 polling flags as they were when the screen opened.
    std::array<bool, 42> SavedPidWanted{};

  protected:
    void resetVariables() override;
};

}  // namespace ketrel
