#pragma once
#include "platform/dialogs.h"

class QWidget;

namespace ketrel {

// Message boxes on the desktop: a modal QMessageBox; the event loop and with it the timers
// and serial events go on while it shows.
class QtDialogs : public Dialogs {
  public:
    MsgAnswer show(const MessageBox& box) override;
    // The desktop's file dialogue, over the active window.
    std::string askSaveFile(const SaveFileQuestion& question) override;
};

}  // namespace ketrel
