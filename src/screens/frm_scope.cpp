#include "screens/frm_scope.h"

namespace ketrel {

FrmScope::FrmScope(EventLoop& loop)
    : Screen(loop, "frmScope", "SCOPE GRAPH"), SampleTimer(makeTimer(75)) {
    lblScopePID.setText("-SELECT-");
    Label1[0].setText("CURRENT");
    Label1[1].setText("MAX");
    Label1[2].setText("MIN");
    lblSpeed.setText("1x");
    cmdIncrease.setText("Faster >>");
    cmdDecrease.setText("<< Slower");
    cmdPIDSAvailable.setText("PIDS Available");
    cmdIncrease.setEnabled(false);
    cmdDecrease.setEnabled(false);
    for (MenuItem* m : mnuView.children())
        m->setEnabled(false);
    markDesign();
}

void FrmScope::resetVariables() {
    ScopeRunning = false;
    ScopeWidth = ScopeHeight = 0;
    ScopeUnit = ScopeSample = 0;
    ScopeY = 0;
    ScopeLastY = -1;
    ScopeMax = 0;
    ScopeMin = 11000;
    ScopeLabelText.clear();
    ScopePeriod = 75;
}

}  // namespace ketrel
