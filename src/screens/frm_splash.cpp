#include "screens/frm_connecting.h"

namespace ketrel {

FrmSplash::FrmSplash(EventLoop& loop) : Screen(loop, "frmSplash", "Ketrel") {
    lblTitle.setText("Ketrel");
    lblVersion.setText("OBD II Generic  Version 0.77");
    lblNote.setText("Loading...");
    markDesign();
}

}  // namespace ketrel
