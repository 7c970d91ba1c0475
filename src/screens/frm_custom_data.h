#pragma once
#include <cstdint>
#include <string>

#include "screens/screen.h"

namespace ketrel {

// One item of the custom list: a check box whose caption is its word ("ENABLED", "DISABLED",
// "N/A") and whose background says the same in colour.
class CustomCheck : public Toggle {
  public:
    CustomCheck(Screen* owner, std::string name, int index)
        : Toggle(owner, std::move(name), ControlKind::Check, index) {}
    std::int64_t backColor() const { return back_; }
    void setBackColor(std::int64_t c) {
        if (back_ == c) return;
        back_ = c;
        notify();
    }

  protected:
    void saveDesignState() override {
        Toggle::saveDesignState();
        dBack_ = back_;
    }
    void restoreDesignState() override {
        Toggle::restoreDesignState();
        back_ = dBack_;
    }

  private:
    std::int64_t back_ = kDefaultColor, dBack_ = kDefaultColor;
};

// The custom data list: which of the supported PIDs 01 to 4F the request cycles poll, one
// check box per PID in three sections, with a select-all box.
class FrmCustomData : public Screen {
  public:
    explicit FrmCustomData(EventLoop& loop);

    // Item i is PID i, 1 to 79; Label1(i) is its name.
    ControlArray<CustomCheck> Check1{this, "Check1"};
    ControlArray<Field> Label1{this, "Label1"};
    Tabs SSTab1{this, "SSTab1", {"PID 01 - 1F", "PID 21 - 3F", "PID 41 - 5F"}};
    ControlArray<Field> lblAttention{this, "lblAttention"};  // one per section
    Toggle Check2{this, "Check2", ControlKind::Check};
    Field cmdOk{this, "cmdOk"}, cmdCancel{this, "cmdCancel"};
    StatusPanel Panel1{this, "StatusBar1.Panels", 1};

    // Opened from the extended screen: its section must keep a PID too.
    bool CustomFromExtended = false;

  protected:
    void resetVariables() override { CustomFromExtended = false; }
};

// The section (0 to 2) that holds the item of a PID.
inline int CustomSection(int pid) {
    return pid < 0x20 ? 0 : pid < 0x40 ? 1 : 2;
}

}  // namespace ketrel
