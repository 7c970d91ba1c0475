#pragma once
#include <memory>

#include "platform/serial_port.h"
#include "screens/screen.h"

namespace ketrel {

// The pictures Image1 flips between while a sweep runs.
inline constexpr const char* kImgDetectOn = "imgLinkOn";
inline constexpr const char* kImgDetectOff = "imgLinkOff";

// The auto-detect screen: sweeps the ports 1 to 4 for a text converter, then for a count-byte
// converter, and shows what it found. Its two probe ports are made here, through the factory.
class FrmAutoDetect : public Screen {
  public:
    FrmAutoDetect(EventLoop& loop, SerialPortFactory& ports);

    ControlArray<Field> Label1{this, "Label1"};
    Field ProgrammerStatus{this, "ProgrammerStatus"};
    Field txtBuffer{this, "txtBuffer"};
    Field cmdConnectAD{this, "cmdConnectAD"};
    Field Image1{this, "Image1"};

    Timer& TimeOut;
    Timer& Timer1;
    Timer& DetectBR3Delay;

    std::unique_ptr<SerialPort> MSComm2, BR3AutoDetect;

    // The screen's own variables.
    bool DetectRunning = false;
    // Retries of a failed sweep; kept for the life of the program, across unloads.
    int DetectAttempts = 0;
    // Bumped by every start of the text-converter sweep: a sweep started inside another one
    // (a sync arriving during the wait) takes over, and the older one ends when it resumes.
    int sweepGeneration = 0;

  protected:
    void resetVariables() override { DetectRunning = false; }
};

}  // namespace ketrel
