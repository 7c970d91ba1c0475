#include "screens/frm_new_pids.h"

namespace ketrel {

FrmNewPids::FrmNewPids(EventLoop& loop) : Screen(loop, "frmNewPids", "EXTENDED DATA PARAMETER") {
    markDesign();
}

}  // namespace ketrel
