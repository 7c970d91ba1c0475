#pragma once
#include "screens/screen.h"

namespace ketrel {

// The extended data screen: values of Mode 01 PIDs 21 to 4E.
class FrmNewPids : public Screen {
  public:
    explicit FrmNewPids(EventLoop& loop);
};

}  // namespace ketrel
