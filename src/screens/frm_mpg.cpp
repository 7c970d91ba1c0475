#include "screens/frm_mpg.h"

namespace ketrel {

FrmMPG::FrmMPG(EventLoop& loop) : Screen(loop, "frmMPG", "MPG"), Timer1(makeTimer(10000)) {
    Label2[1].setText("INSTANTANEOUS");
    Label2[2].setText("AVERAGE");
    Label1[1].setText("MPG");
    Label1[2].setText("MPG");
    markDesign();
}

}  // namespace ketrel
