#include "screens/frm_custom_data.h"

namespace ketrel {

namespace {

constexpr const char* kAttention =
    "Attention:  To Keep Communication Alive Leave 1 Of Any Pids Enabled!";

}  // namespace

FrmCustomData::FrmCustomData(EventLoop& loop) : Screen(loop, "frmCustomData", "CUSTOM DATA LIST") {
    for (int i = 1; i <= 79; ++i) {
        Check1[i].setCaption("N/A");
        Check1[i].setEnabled(false);
        Label1[i];
    }
    for (int s = 0; s < 3; ++s)
        lblAttention[s].setText(kAttention);
    Check2.setCaption("SELECT / DESELECT ALL");
    cmdOk.setText("&OK");
    cmdCancel.setText("&CANCEL");
    markDesign();
}

}  // namespace ketrel
