#include "codes/trouble_code_browser.h"

#include <memory>
#include <string>

#include "codes/code_sections.h"
#include "codes/trouble_codes_library.h"
#include "state/app.h"

namespace ketrel {

namespace {

constexpr const char* kTabs[] = {"&SAE", "&GM", "&FORD", "&CHRYSLER"};
// The option each tab shows first, by tab.
constexpr const char* kFirstOption[] = {"P100", "GMP1000", "FP1000", "CP1100"};

int tabIndex(std::string_view caption) {
    for (int i = 0; i < int(std::size(kTabs)); ++i) {
        if (caption == kTabs[i]) return i;
    }
    return -1;
}

void showSection(FrmTroubleCode& s, const std::string& option) {
    s.lblDefine.setText("");
    ListCodeSection(s.List1, option);
}

void tabChanged(FrmTroubleCode& s) {
    const int tab = tabIndex(s.SSTab1.caption(s.SSTab1.tab()));
    if (tab < 0) return;
    // Marking the option chosen runs its section.
    if (Toggle* first = s.option(kFirstOption[tab])) first->setValue(true);
}

void numberClicked(App& app, FrmTroubleCode& s) {
    if (s.List1.listIndex() < 0) return;
    const std::string code = s.List1.item(s.List1.listIndex());
    switch (tabIndex(s.SSTab1.caption(s.SSTab1.tab()))) {
        case 0:
            LookupGeneric(app, code);
            break;
        case 1:
            LookupGM(app, code);
            break;
        case 2:
            LookupFord(app, code);
            break;
        case 3:
            LookupChrysler(app, code);
            break;
        default:
            return;
    }
    s.lblDefine.setText(app.CodeDescription);
}

// The vehicle's codes as the main screen holds them: stored and freeze-frame codes in
// lstTCodes, pending codes in lstPend. Left at "No Codes Available!" without a session or codes.
void copyVehicleCodes(App& app, FrmTroubleCode& s) {
    FrmMain& m = app.frmMain();
    if (!app.Connected) return;
    if (m.lstCodes.count() == 0 && m.lstFreezeCodes.count() == 0 && m.lstPendingCodes.count() == 0)
        return;
    s.lstTCodes.clear();
    s.lstPend.clear();
    for (const std::string& code : m.lstCodes.items())
        s.lstTCodes.addItem(code);
    for (const std::string& code : m.lstFreezeCodes.items())
        s.lstTCodes.addItem(code + " (FF)");
    // Copied from a snapshot: a handler run by the pump may change the main screen's list.
    const std::vector<std::string> pending = m.lstPendingCodes.items();
    for (const std::string& code : pending) {
        app.loop().pump();
        s.lstPend.addItem(code);
    }
}

void opened(App& app, FrmTroubleCode& s, bool& mainHeld) {
    s.SSTab1.setTab(0);
    tabChanged(s);
    app.unloadScreens({"frmRealDisplay"});
    app.frmMain().setEnabled(false);
    mainHeld = true;
    copyVehicleCodes(app, s);
}

}  // namespace

std::vector<SectionOption> TroubleCodeOptions() {
    std::vector<SectionOption> v;
    for (const CodeSection& c : CodeSections())
        v.push_back({tabIndex(c.tab), std::string(c.option), std::string(c.caption)});
    return v;
}

FrmTroubleCode* TroubleCodeScreen(App& app) {
    return dynamic_cast<FrmTroubleCode*>(app.screenByName("frmTroubleCode"));
}

void InstallTroubleCodeBrowser(App& app) {
    if (!app.screenByName("frmTroubleCode"))
        app.addScreen(std::make_unique<FrmTroubleCode>(app.loop(), TroubleCodeOptions()));
    // A screen of that name that is not this one (a stand-in) is left alone.
    FrmTroubleCode* screen = TroubleCodeScreen(app);
    if (!screen) return;
    FrmTroubleCode& s = *screen;
    auto mainHeld = std::make_shared<bool>(false);
    s.onLoad = [&app, &s, mainHeld] { opened(app, s, *mainHeld); };
    s.onUnload = [&app, mainHeld] {
        if (*mainHeld) app.frmMain().setEnabled(true);
        *mainHeld = false;
    };
    for (const auto& option : s.options()) {
        const std::string name = option->name();
        option->onClick = [&s, name] { showSection(s, name); };
    }
    s.SSTab1.onClick = [&s](int) { tabChanged(s); };
    s.onList1Click = [&app, &s] { numberClicked(app, s); };
    s.mnuFileExit.onClick = [&s] { s.unload(); };
}

}  // namespace ketrel
