#include "screens/frm_auto_detect.h"

namespace ketrel {

FrmAutoDetect::FrmAutoDetect(EventLoop& loop, SerialPortFactory& ports)
    : Screen(loop, "frmAutoDetect", "AUTO DETECT"),
      TimeOut(makeTimer(250)),
      Timer1(makeTimer(600)),
      DetectBR3Delay(makeTimer(300)),
      MSComm2(ports.create("MSComm2")),
      BR3AutoDetect(ports.create("BR3AutoDetect")) {
    // Both probe ports run at the designed 19200,n,8,1; only the text converter's raises the
    // received-data event.
    for (SerialPort* port : {MSComm2.get(), BR3AutoDetect.get()}) {
        port->setCommPort(1);
        port->setSettings("19200,n,8,1");
    }
    MSComm2->setRThreshold(1);
    BR3AutoDetect->setRThreshold(0);
    Label1[0].setText("Please Wait Detection In Progress...");
    ProgrammerStatus.setText("");
    txtBuffer.setVisible(false);
    cmdConnectAD.setText("Connect");
    cmdConnectAD.setVisible(false);
    Image1.setPicture(kImgDetectOn);
    markDesign();
}

}  // namespace ketrel
