#include "display/large_display.h"

#include <cmath>
#include <cstddef>
#include <string_view>

#include "data/large_display_scales.h"
#include "display/display_polling.h"
#include "screens/frm_real_display.h"
#include "state/app.h"

namespace ketrel {

namespace {

using data::kLargeO2Names;
using data::kLargeO2StarNames;
using data::kLargeScaleRows;
using data::LargeScaleRow;

// The named slots, in the order Timer2 tries them.
struct NamedSlot {
    const char* name;
    const char* source;
};
constexpr NamedSlot kNamedSlots[] = {
    {"Intake Temperature", "lblIntakeAir"},
    {"Coolant Temperature", "lblCoolant"},
    {"Vehicle Speed", "lblSpeed"},
    {"RPM", "lblRPM"},
    {"MAF", "lblMAF"},
    {"MAP", "lblMAP"},
    {"Fuel Pressure", "lblFuelPres"},
    {"TPS", "lblTps"},
};
constexpr const char* kO2Sources[] = {"lblO2b1s1", "lblO2b1s2", "lblO2b1s3", "lblO2b1s4",
                                      "lblO2b2s1", "lblO2b2s2", "lblO2b2s3", "lblO2b2s4"};

// The starred name each O2 slot answers to. The last slot's test lost its first star, so in
// the four-bank layout "*O2 B4S2*" finds no slot and the display stands still.
std::string_view starredTest(std::size_t slot) {
    std::string_view s = kLargeO2StarNames[slot];
    return slot == 7 ? s.substr(1) : s;
}

FrmRealDisplay& screenOf(App& app) {
    return *dynamic_cast<FrmRealDisplay*>(app.screenByName("frmRealDisplay"));
}

bool isTemperature(const std::string& name) {
    return name == "Intake Temperature" || name == "Coolant Temperature";
}

bool isO2(const std::string& name) {
    for (std::size_t i = 0; i < 8; ++i)
        if (name == kLargeO2Names[i] || name == starredTest(i)) return true;
    return false;
}

// The unit setting a menu entry's scale depends on.
const std::string& settingFor(const App& app, const std::string& menu) {
    if (menu == "mnuViewSpeed") return app.Speed;
    if (menu == "mnuViewMAP" || menu == "mnuViewFuelPressure") return app.Pressure;
    return app.Temp;
}

// The row of the scale table for a menu entry under the unit settings.
const LargeScaleRow* rowFor(const App& app, const std::string& menu) {
    for (const LargeScaleRow& r : kLargeScaleRows)
        if (menu == r.menu && (!r.setting || settingFor(app, menu) == r.setting)) return &r;
    // A unit setting the table does not know takes the first row of the entry.
    for (const LargeScaleRow& r : kLargeScaleRows)
        if (menu == r.menu) return &r;
    return nullptr;
}

// The O2 slot's name under the bank layout.
std::string o2Name(const App& app, int pid) {
    const auto slot = std::size_t(pid - 0x14);
    return app.Mode1Supported[0x1D] ? kLargeO2StarNames[slot] : kLargeO2Names[slot];
}

void tick(App& app) {
    FrmRealDisplay& d = screenOf(app);
    const std::string name = d.lblDisplayPID.text();
    const char* source = LargeDisplaySource(name);
    if (!source) return;
    auto* field = dynamic_cast<Field*>(app.frmMain().findControl(source));
    if (!field) return;
    const std::string text = field->text();
    d.lblValue.setText(text);
    if (auto bar = LargeBarValue(name, text, app.Temp, app.Speed, d.ProgressBar1.max()))
        d.ProgressBar1.setValue(*bar);
}

void blink(FrmRealDisplay& d) {
    d.lblDisabled[0].setVisible(!d.lblDisabled[0].visible());
}

}  // namespace

const char* LargeDisplaySource(const std::string& displayName) {
    for (const NamedSlot& s : kNamedSlots)
        if (displayName == s.name) return s.source;
    for (std::size_t i = 0; i < 8; ++i)
        if (displayName == kLargeO2Names[i] || displayName == starredTest(i)) return kO2Sources[i];
    return nullptr;
}

std::optional<int> LargeBarValue(const std::string& displayName, const std::string& text,
                                 const std::string& temp, const std::string& speed, int barMax) {
    const double v = Val(text);
    const bool na = text == "N/A";
    auto upTo = [&](double limit, double shown) -> int {
        return v > limit ? barMax : int(std::lround(shown));
    };
    if (isTemperature(displayName)) {
        if (v > (temp == "C" ? 215 : 419)) return barMax;
        if (na) return std::nullopt;
        return int(std::lround(v + 40));  // the bar has no negative side: -40 is its left end
    }
    if (displayName == "Vehicle Speed") return upTo(speed == "KPH" ? 255 : 160, v);
    if (displayName == "RPM") return upTo(8000, v);
    if (displayName == "MAF" || displayName == "MAP" || displayName == "Fuel Pressure") {
        if (na) return std::nullopt;
        return upTo(barMax, v);
    }
    if (displayName == "TPS") return upTo(100, v);
    if (isO2(displayName)) return upTo(1, v * 100);
    return std::nullopt;
}

void OpenLargeDisplay(App& app, const std::string& menuName) {
    const LargeScaleRow* row = rowFor(app, menuName);
    if (!row) return;
    FrmRealDisplay& d = screenOf(app);
    d.load();
    if (app.PidWanted[std::size_t(row->pid)]) {
        d.DisableTimer.stop();
        d.lblDisabled[0].setVisible(false);
    } else {
        d.DisableTimer.start();
    }
    d.lblDisplayPID.setText(row->name ? row->name : o2Name(app, row->pid));
    d.lblMin.setText(row->min);
    d.lblMid.setText(row->mid);
    d.lblMax.setText(row->max);
    d.ProgressBar1.setRange(0, row->barMax);
    d.show();
}

void InstallLargeDisplay(App& app) {
    auto* screen = dynamic_cast<FrmRealDisplay*>(app.screenByName("frmRealDisplay"));
    if (!screen) return;
    FrmRealDisplay& d = *screen;
    d.onLoad = [&d] { d.Timer2.start(); };
    d.Timer2.setHandler([&app] { tick(app); });
    d.DisableTimer.setHandler([&d] { blink(d); });
    d.cmdPIDSAvailable.onClick = [&app, &d] {
        if (d.showPopupMenu) d.showPopupMenu(app.frmMain().mnuViewRealTime);
    };
    for (MenuItem* entry : app.frmMain().mnuViewRealTime.children()) {
        const std::string name = entry->name();
        entry->onClick = [&app, name] { OpenLargeDisplay(app, name); };
    }
}

}  // namespace ketrel
