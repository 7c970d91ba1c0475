#pragma once
#include "screens/screen.h"

namespace ketrel {

// The picture the code alert shows beside its message.
inline constexpr const char* kImgAlertMIL = "imgAlertMIL";

// The code alert "CODE(S) ALERT", shown without blocking when new codes arrive. It places
// itself on top of other windows at 100,100, 390 x 300 when it loads; lblCodeSection(0) names
// where the codes were found.
class FrmAlertMIL : public Screen {
  public:
    explicit FrmAlertMIL(EventLoop& loop);

    Field Label1{this, "Label1"};
    Field imgAlert{this, "imgAlert"};
    ControlArray<Field> lblCodeSection{this, "lblCodeSection"};
};

}  // namespace ketrel
