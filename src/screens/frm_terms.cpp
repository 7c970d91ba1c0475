#include "screens/frm_terms.h"

namespace ketrel {

FrmTerms::FrmTerms(EventLoop& loop) : Screen(loop, "frmTerms", "OBD II vs OBD I TERMS") {
    Frame1.setText("COMPONENT - OBD II TERM- OBD I TERMS:");
    markDesign();
}

}  // namespace ketrel
