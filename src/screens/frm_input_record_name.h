#pragma once
#include "screens/screen.h"

namespace ketrel {

// The save dialogue of a finished recording: the name under which Log/Untitled.log is kept and
// listed in the catalogue.
class FrmInputRecordName : public Screen {
  public:
    explicit FrmInputRecordName(EventLoop& loop);

    Field lblSaveName{this, "lblSaveName"};  // the prompt above the name
    Field txtSaveName{this, "txtSaveName"};
    Field cmdSave{this, "cmdSave"}, cmdCancel{this, "cmdCancel"};
};

}  // namespace ketrel
