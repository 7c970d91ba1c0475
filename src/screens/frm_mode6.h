#pragma once
#include "screens/screen.h"

namespace ketrel {

// The Mode 6 screen: the grid of on-board test results, the two status panels, the hidden list
// of each test id's support, the cancel and definition buttons and the timer that starts the
// sweep once the screen is up.
class FrmMode6 : public Screen {
  public:
    explicit FrmMode6(EventLoop& loop);

    // Nine columns under a fixed header row: ids, description, raw and unit values, verdict.
    Grid MSFlexGrid1{this, "MSFlexGrid1", 2, 9};
    StatusPanel Panel1{this, "StatusBar1.Panels", 1}, Panel2{this, "StatusBar1.Panels", 2};
    ListBox List1{this, "List1"};
    Field cmdCancelMode6{this, "cmdCancelMode6"};
    Field cmdFordDef{this, "cmdFordDef"};
    // One-shot, 50 ms: lets the opening return to the event loop before the sweep begins.
    Timer& Timer1;
};

}  // namespace ketrel
