#include "screens/frm_alert_mil.h"

namespace ketrel {

FrmAlertMIL::FrmAlertMIL(EventLoop& loop) : Screen(loop, "frmAlertMIL", "CODE(S) ALERT") {
    Label1.setText("Code(s) Have Been Detected!");
    imgAlert.setPicture(kImgAlertMIL);
    lblCodeSection[0];  // made now so that it belongs to the design state
    onLoad = [this] { setTopmost({100, 100, 390, 300}); };
    markDesign();
}

}  // namespace ketrel
