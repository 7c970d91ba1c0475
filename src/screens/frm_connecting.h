#pragma once
#include <memory>

#include "platform/serial_port.h"
#include "screens/screen.h"

namespace ketrel {

// The connecting screen: status line, blinking pictures, cancel, its timers and the two
// connecting ports. Modal while a connect runs.
class FrmConnecting : public Screen {
  public:
    explicit FrmConnecting(EventLoop& loop);

    ControlArray<Field> lblControlStatus{this, "lblControlStatus"};
    Field lblStatusCaption{this, "lblStatusCaption"};
    Field cmdConnectingCancel{this, "cmdConnectingCancel"};
    Field txtConnectingInput{this, "txtConnectingInput"};
    ControlArray<Field> Image1{this, "Image1"};

    Timer& StartTimer;
    Timer& Timer1;
    Timer& Timer2;
    Timer& BR3Unload;
    Timer& ConnectTimeOut;
    Timer& BR3ConnectDelay;
    Timer& KeshTimeOut;
    Timer& DORVANEConnectingTimeOut;

    std::unique_ptr<SerialPort> ConnectingMscomm, BR3Connecting;

    // The screen's own variables.
    bool ConnectDone = false;
    bool ConnectStopped = false;

  protected:
    void resetVariables() override {
        ConnectDone = false;
        ConnectStopped = false;
    }
};

// The splash screen shown while the main window loads.
class FrmSplash : public Screen {
  public:
    explicit FrmSplash(EventLoop& loop);
    Field lblTitle{this, "lblTitle"};
    Field lblVersion{this, "lblVersion"};
    Field lblNote{this, "lblNote"};
};

}  // namespace ketrel
