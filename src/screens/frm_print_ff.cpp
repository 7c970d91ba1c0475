#include "screens/frm_print_ff.h"

namespace ketrel {

FrmPrintFF::FrmPrintFF(EventLoop& loop) : Screen(loop, "frmPrintFF", "") {
    lblLogo.setText("KETREL REPORT");
    markDesign();
}

}  // namespace ketrel
