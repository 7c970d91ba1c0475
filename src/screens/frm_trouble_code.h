#pragma once
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "screens/screen.h"

namespace ketrel {

// One section option of the code library screen: the tab it stands on, its name and caption.
struct SectionOption {
    int tab = 0;
    std::string name, caption;
};

// The code library "TROUBLE CODES LIBRARY": four tabs of section options over one list of
// code numbers, the definition of the number picked, and the codes the vehicle reported.
class FrmTroubleCode : public Screen {
  public:
    FrmTroubleCode(EventLoop& loop, const std::vector<SectionOption>& options);

    Tabs SSTab1{this, "SSTab1", {"&SAE", "&GM", "&FORD", "&CHRYSLER"}};
    ListBox List1{this, "List1"};
    Field lblDefine{this, "lblDefine"};
    Field Label1{this, "Label1"};
    ListBox lstTCodes{this, "lstTCodes"}, lstPend{this, "lstPend"};
    // Frame captions: 0 sections, 1 numbers, 2 definition, 3 current codes, 4 pending codes.
    ControlArray<Field> Frame{this, "Frame"};
    MenuItem mnuFile{this, "mnuFile", "&File"};
    MenuItem mnuFileExit{this, "mnuFileExit", "E&xit", &mnuFile};

    // The section options in their order; each tab's options are one exclusive group.
    const std::vector<std::unique_ptr<Toggle>>& options() const { return options_; }
    // The tab an option stands on (its index in options()).
    int optionTab(std::size_t i) const { return tabs_.at(i); }
    // The option of a name ("P100", "GMP1300"); null if there is none.
    Toggle* option(std::string_view name) const;

    // An item of List1 clicked: it becomes the list's index and onList1Click runs.
    void List1Click(int index);
    std::function<void()> onList1Click;

  private:
    std::vector<std::unique_ptr<Toggle>> options_;
    std::vector<int> tabs_;
};

}  // namespace ketrel
