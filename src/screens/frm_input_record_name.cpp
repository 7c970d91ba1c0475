#include "screens/frm_input_record_name.h"

namespace ketrel {

FrmInputRecordName::FrmInputRecordName(EventLoop& loop)
    : Screen(loop, "frmInputRecordName", "SAVE FILE AS...") {
    lblSaveName.setText("ENTER A NAME DESCRIPTION:");
    cmdSave.setText("&SAVE");
    cmdCancel.setText("&CANCEL");
    markDesign();
}

}  // namespace ketrel
