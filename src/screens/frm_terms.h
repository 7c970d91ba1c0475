#pragma once
#include "screens/screen.h"

namespace ketrel {

// The glossary "OBD II vs OBD I TERMS": a read-only grid setting the OBD II names of engine
// components beside their older names, read from the glossary table.
class FrmTerms : public Screen {
  public:
    explicit FrmTerms(EventLoop& loop);

    Field Frame1{this, "Frame1"};
    Grid MSFlexGrid1{this, "MSFlexGrid1", 1, 3};
    MenuItem mnuFile{this, "mnuFile", "&File"};
    MenuItem mnuFileExit{this, "mnuFileExit", "E&xit", &mnuFile};
};

}  // namespace ketrel
