#include "qt/icons.h"

#include <map>

// The icon resources live in a static library: nothing refers to them by symbol, so they are
// registered by hand before the first use.
static void initIconResources() {
    Q_INIT_RESOURCE(icons);
}

namespace ketrel {

namespace {

// Control name -> icon file of the resource folder :/icons (data/icons in the sources).
const std::map<std::string, const char*>& iconFiles() {
    static const std::map<std::string, const char*> files{
        {"tbConnect", "connect"},
        {"tbDisconnect", "disconnect"},
        {"tbController", "controller"},
        {"tbScope", "scope"},
        {"tbDTC", "dtc"},
        {"tbGuage", "gauge"},
        {"tbMultiGuage", "gauges"},
        {"tbCustom Display", "custom_list"},
        {"tbMode6", "mode6"},
        {"tbMode5", "mode5"},
        {"mnuFileOpen", "open"},
        {"mnuFilePrintFF", "print"},
        {"mnuFileExit", "exit"},
        {"mnuVehicleConnect", "connect"},
        {"mnuVehicleDisconnect", "disconnect"},
        {"mnuVehicleClear", "clear"},
        {"mnuVehicleRequestFF", "freeze"},
        {"mnuVehicleRequestTC", "dtc"},
        {"mnuVehicleRequestPending", "pending"},
        {"mnuVehicleClearInfo", "clear"},
        {"mnuVehicleInfo", "vehicle"},
        {"mnuEditPlay", "play"},
        {"mnuEditStop", "stop"},
        {"mnuEditRecord", "record"},
        {"mnuViewStyle", "style"},
        {"mnuViewRealTime", "large_display"},
        {"mnuViewVariousGuage", "gauge"},
        {"mnuViewGuage", "gauge"},
        {"mnuViewMultiGuage", "gauges"},
        {"mnuViewScope", "scope"},
        {"mnuViewMode5", "mode5"},
        {"mnuViewMode6", "mode6"},
        {"mnuOptionData", "custom_list"},
        {"mnuViewMPG", "fuel"},
        {"mnuViewCodes", "book"},
        {"mnuViewTerms", "book"},
        {"mnuOptionSettings", "settings"},
        {"mnuOptionList", "custom_list"},
        {"mnuHelpHelp", "help"},
        {"mnuHelpRequirement", "document"},
        {"mnuHelpHistory", "document"},
        {"mnuAboutHardware", "hardware"},
        {"mnuHelpAbout", "about"},
    };
    return files;
}

// The icons are SVG: Qt draws them at the size and pixel density asked, so they stay sharp.
QIcon load(const char* file) {
    static const bool registered = (initIconResources(), true);
    (void)registered;
    return QIcon(QString(":/icons/%1.svg").arg(file));
}

}  // namespace

QIcon IconFor(const std::string& controlName) {
    auto it = iconFiles().find(controlName);
    return it == iconFiles().end() ? QIcon() : load(it->second);
}

QIcon AppIcon() {
    return load("ketrel");
}

}  // namespace ketrel
