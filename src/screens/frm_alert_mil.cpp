#include "screens/frm_alert_mil.h"

namespace ketrel {

FrmAlertMIL::FrmAlertMIL(EventLoop& loop) : Screen(loop, "frmAlertMIL", "CODE(S) ALERT") {
    markDesign();
}

}  // namespace ketrel
