#pragma once
#include "platform/sqlite_db.h"
#include "screens/screen.h"

namespace ketrel {

// The fuel-economy screen: the instantaneous figure that the mass air flow decoder works out
// and the average over every sample kept in the sample table.
class FrmMPG : public Screen {
  public:
    explicit FrmMPG(EventLoop& loop);

    Field lblInstMPG{this, "lblInstMPG"}, lblMPGAve{this, "lblMPGAve"};
    ControlArray<Field> Label1{this, "Label1"};  // 1 and 2: the unit
    ControlArray<Field> Label2{this, "Label2"};  // 1 and 2: the figures' captions
    // Takes the average every 10 s.
    Timer& Timer1;

    // The screen is open: the decoder works out the figure only then.
    bool MPGScreenOpen = false;
    // The sample table is being replaced: no sample may be added.
    bool MPGResetting = false;
    // The sample table, open while the screen is.
    SqliteDb store;

  protected:
    void resetVariables() override { store.close(); }
};

}  // namespace ketrel
