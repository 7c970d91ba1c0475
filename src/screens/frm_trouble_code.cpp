#include "screens/frm_trouble_code.h"

namespace ketrel {

namespace {

constexpr const char* kNoCodes = "No Codes Available!";

}  // namespace

FrmTroubleCode::FrmTroubleCode(EventLoop& loop, const std::vector<SectionOption>& options)
    : Screen(loop, "frmTroubleCode", "TROUBLE CODES LIBRARY") {
    std::vector<std::vector<Toggle*>> groups(std::size_t(SSTab1.count()));
    for (const SectionOption& o : options) {
        auto t = std::make_unique<Toggle>(this, o.name, ControlKind::Option);
        t->setCaption(o.caption);
        if (o.tab >= 0 && o.tab < SSTab1.count()) groups[std::size_t(o.tab)].push_back(t.get());
        options_.push_back(std::move(t));
        tabs_.push_back(o.tab);
    }
    for (auto& group : groups) {
        for (Toggle* t : group)
            t->setGroup(group);
    }
    Frame[0].setText("TROUBLE CODE(S) SECTION:");
    Frame[1].setText("TROUBLE CODE(S) NUMBERS:");
    Frame[2].setText("TROUBLE CODE DEFINITION:");
    Frame[3].setText("CURRENT TROUBLE CODE(S):");
    Frame[4].setText("CURRENT PENDING CODE(S):");
    Label1.setText("Warning:  Always Confirm Your Trouble Codes With Service Manual");
    lstTCodes.addItem(kNoCodes);
    lstPend.addItem(kNoCodes);
    markDesign();
}

Toggle* FrmTroubleCode::option(std::string_view name) const {
    for (const auto& t : options_) {
        if (t->name() == name) return t.get();
    }
    return nullptr;
}

void FrmTroubleCode::List1Click(int index) {
    if (index < 0 || index >= List1.count()) return;
    List1.setListIndex(index);
    if (onList1Click) onList1Click();
}

}  // namespace ketrel
