#include "screens/frm_mode5_manuf.h"

namespace ketrel {

FrmMode5Manuf::FrmMode5Manuf(EventLoop& loop)
    : Screen(loop, "frmMode5Manuf", "MODE 5 (MANUFACTURE TEST ID)"), Timer1(makeTimer(50)) {
    cmdCancelMode5.setText("&Cancel");
    List1.setVisible(false);
    markDesign();
}

}  // namespace ketrel
