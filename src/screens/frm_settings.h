#pragma once
#include "screens/screen.h"

namespace ketrel {

// The settings screen "SETTINGS": five pages, each with its own Apply, Default and Close.
class FrmSettings : public Screen {
  public:
    explicit FrmSettings(EventLoop& loop);

    Tabs SSTab1{this,
                "SSTab1",
                {"Measure &Units", "&Port/Device", "&Screen Display", "&Log/Alerts", "Se&quence"}};

    // Page 0: units
    Toggle optFarenheit{this, "optFarenheit", ControlKind::Option};
    Toggle optCelcius{this, "optCelcius", ControlKind::Option};
    Toggle optMiles{this, "optMiles", ControlKind::Option};
    Toggle optKilometers{this, "optKilometers", ControlKind::Option};
    Toggle optPSI{this, "optPSI", ControlKind::Option};
    Toggle optKPA{this, "optKPA", ControlKind::Option};
    Field lblSpeedNote{this, "lblSpeedNote"};
    Field cmdApplyUnits{this, "cmdApplyUnits"}, cmdDefault{this, "cmdDefault"},
        cmdClose0{this, "cmdClose", 0};

    // Page 1: port and device
    ComboBox cmbInterface{this, "cmbInterface"};
    ComboBox cmbPort{this, "cmbPort"};
    ComboBox cmbTimedOut{this, "cmbTimedOut"};
    Toggle chkSetDelay{this, "chkSetDelay", ControlKind::Check};
    Slider sldBR3Speed{this, "sldBR3Speed", 125, 500};
    Field lblBR3Delay{this, "lblBR3Delay"};
    ControlArray<Field> lblRecommend{this, "lblRecommend"};
    Field lblDevicePath{this, "lblDevicePath"};  // the device the chosen port number maps to
    Field txtDevicePath{this, "txtDevicePath"};  // a device path typed by the user
    Field lblAdapter{this, "lblAdapter"};        // the adapter behind that device: driver, latency
    Field cmdAutoDetect{this, "cmdAutoDetect"};
    Field cmdApplyDevice{this, "cmdApplyDevice"}, cmdClose1{this, "cmdClose", 1};

    // Page 2: screen display
    ListBox lstDisplaySettings{this, "lstDisplaySettings"};
    Field lblCurrentDisplaySettings{this, "lblCurrentDisplaySettings"};
    Field cmdCurrentDisplaySettings{this, "cmdCurrentDisplaySettings"};
    Field cmdChangeDisplaySettings{this, "cmdChangeDisplaySettings"};
    Field cmdClose2{this, "cmdClose", 2};

    // Page 3: log and alerts
    Toggle optDisplayOn{this, "optDisplayOn", ControlKind::Option};
    Toggle optDisplayOff{this, "optDisplayOff", ControlKind::Option};
    Toggle optMilOn{this, "optMilOn", ControlKind::Option};
    Toggle optMilOff{this, "optMilOff", ControlKind::Option};
    Toggle optYES{this, "optYES", ControlKind::Option};
    Toggle optNO{this, "optNO", ControlKind::Option};
    Toggle chConLog{this, "chConLog", ControlKind::Check};
    Field lblFileSize{this, "lblFileSize"};
    Field Command1{this, "Command1"}, Command2{this, "Command2"};
    Field cmdApplyOther{this, "cmdApplyOther"}, cmdDefault1{this, "cmdDefault1"},
        cmdClose3{this, "cmdClose", 3};

    // Page 4: connect sequence
    Toggle KWP1{this, "KWP1", ControlKind::Option}, KWP2{this, "KWP2", ControlKind::Option},
        KWP3{this, "KWP3", ControlKind::Option};
    Toggle BR1{this, "BR1", ControlKind::Option}, BR2{this, "BR2", ControlKind::Option},
        BR3{this, "BR3", ControlKind::Option}, BR4{this, "BR4", ControlKind::Option},
        BR5{this, "BR5", ControlKind::Option};
    Toggle ck2ndConnect{this, "ck2ndConnect", ControlKind::Check};
    Field cmdApplyKWP{this, "cmdApplyKWP"}, cmdDefault2{this, "cmdDefault2"},
        cmdClose4{this, "cmdClose", 4};

    // Fixed captions of the pages, by name, for the views.
    ControlArray<Field> Label{this, "Label"};
};

}  // namespace ketrel
