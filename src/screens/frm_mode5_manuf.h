#pragma once
#include <array>
#include <string>

#include "screens/screen.h"

namespace ketrel {

// The sweep of the maker's own oxygen-sensor tests (ids above $20) of one sensor: the result
// grid, three status panels, the hidden support list, the cancel button and the one-shot
// timer that starts the sweep once the screen is up.
class FrmMode5Manuf : public Screen {
  public:
    explicit FrmMode5Manuf(EventLoop& loop);

    Grid MSFlexGrid1{this, "MSFlexGrid1", 2, 7};
    StatusPanel Panel1{this, "StatusBar1.Panels", 1}, Panel2{this, "StatusBar1.Panels", 2},
        Panel3{this, "StatusBar1.Panels", 3};
    StatusPanel& panel(int number) { return number == 1 ? Panel1 : number == 2 ? Panel2 : Panel3; }
    ListBox List1{this, "List1"};
    Field cmdCancelMode5{this, "cmdCancelMode5"};
    Timer& Timer1;

    // The sweep's own variables.
    bool Mode5ManufCancel = false;
    std::array<bool, 256> Mode5ManufSupported{};
    int Mode5ManufCount = 0;  // ids found supported; kept from one sweep to the next
    int Mode5ManufTestID = 0;
    int Mode5ManufRow = 0;
    std::string Mode5ManufRaw;
    // The first 42 request flags of the scan, held while the sweep owns the line.
    std::array<bool, 42> SavedPidWanted{};
};

}  // namespace ketrel
