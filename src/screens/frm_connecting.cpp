#include "screens/frm_connecting.h"

namespace ketrel {

FrmConnecting::FrmConnecting(EventLoop& loop)
    : Screen(loop, "frmConnecting", "CONNECTING"),
      StartTimer(makeTimer(10)),
      Timer1(makeTimer(600)),
      Timer2(makeTimer(200)),
      BR3Unload(makeTimer(500)),
      ConnectTimeOut(makeTimer(1000)),
      BR3ConnectDelay(makeTimer(150)),
      KeshTimeOut(makeTimer(12000)),
      DORVANEConnectingTimeOut(makeTimer(1)) {
    lblStatusCaption.setText("STATUS:");
    lblControlStatus[1].setText("");
    cmdConnectingCancel.setText("&CANCEL");
    txtConnectingInput.setVisible(false);
    for (int i = 0; i < 4; ++i)
        Image1[i].setPicture(i == 0 || i == 3 ? "imgLinkOn" : "imgLinkOff");
    markDesign();
}

}  // namespace ketrel
