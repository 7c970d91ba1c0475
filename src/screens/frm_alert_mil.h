#pragma once
#include "screens/screen.h"

namespace ketrel {

// The code alert "CODE(S) ALERT", shown when stored codes arrive.
class FrmAlertMIL : public Screen {
  public:
    explicit FrmAlertMIL(EventLoop& loop);
};

}  // namespace ketrel
