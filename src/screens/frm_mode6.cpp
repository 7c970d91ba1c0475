#include "screens/frm_mode6.h"

namespace ketrel {

FrmMode6::FrmMode6(EventLoop& loop) : Screen(loop, "frmMode6", "MODE 6"), Timer1(makeTimer(50)) {
    cmdCancelMode6.setText("&Cancel");
    cmdFordDef.setText("&FORD DEFINITION");
    List1.setVisible(false);
    markDesign();
}

}  // namespace ketrel
