#include <algorithm>
#include <cctype>
#include <string>

#include "data/pid_catalogue_rows.h"
#include "display/data_lists.h"
#include "display/display_polling.h"
#include "obd/monitor_status.h"
#include "screens/frm_custom_data.h"
#include "state/app.h"

namespace ketrel {

namespace {

constexpr const char* kEnabled = "ENABLED";
constexpr const char* kDisabled = "DISABLED";
constexpr const char* kNotSupported = "N/A";
constexpr std::int64_t kEnabledColor = 0x000000;
constexpr std::int64_t kDisabledColor = 0xFFFF00;
constexpr std::int64_t kNotSupportedColor = 0x404040;
constexpr int kLastItem = 79;
constexpr const char* kNeedOne =
    "You Must Have At Least 1 Of The PIDS Selected In Each Tab Section!";
// How long the new selection lets replies in flight land before the pictures change.
constexpr double kSelectionSettle = 0.2;

constexpr std::array<const char*, 8> kO2TwoBank{
    "OXYGEN SENSOR B1S1", "OXYGEN SENSOR B1S2", "OXYGEN SENSOR B1S3", "OXYGEN SENSOR B1S4",
    "OXYGEN SENSOR B2S1", "OXYGEN SENSOR B2S2", "OXYGEN SENSOR B2S3", "OXYGEN SENSOR B2S4"};
constexpr std::array<const char*, 8> kO2FourBank{
    "OXYGEN SENSOR B1S1", "OXYGEN SENSOR B1S2", "OXYGEN SENSOR B2S1", "OXYGEN SENSOR B2S2",
    "OXYGEN SENSOR B3S1", "OXYGEN SENSOR B3S2", "OXYGEN SENSOR B4S1", "OXYGEN SENSOR B4S2"};

// The catalogue's name of a PID, 1 to 79.
const char* pidName(int pid) {
    if (pid <= 0x20) return data::kPidRows01To20[std::size_t(pid - 1)];
    if (pid <= 0x40) return data::kPidRows21To40[std::size_t(pid - 0x21)];
    return data::kPidRows41To60[std::size_t(pid - 0x41)];
}

void openList(App& app, FrmCustomData& c) {
    const std::array<const char*, 8>* o2 = nullptr;
    if (app.Mode1Supported[0x13]) o2 = &kO2TwoBank;
    if (app.Mode1Supported[0x1D]) o2 = &kO2FourBank;
    if (o2)
        for (int i = 0; i < 8; ++i)
            c.Label1[0x14 + i].setText((*o2)[std::size_t(i)]);
    for (int i = 1; i <= kLastItem; ++i) {
        const auto at = std::size_t(i);
        c.Check1[i].setCaption(!app.Mode1Supported[at] ? kNotSupported
                               : !app.PidWanted[at]    ? kDisabled
                                                       : kEnabled);
    }
    for (int i = 1; i <= kLastItem; ++i) {
        CustomCheck& item = c.Check1[i];
        const std::string word = item.caption();
        if (word == kEnabled) {
            item.setBackColor(kEnabledColor);
            item.setEnabled(true);
            item.setValue(true);
        } else if (word == kDisabled) {
            item.setBackColor(kDisabledColor);
            item.setEnabled(true);
            item.setValue(false);
        } else {
            item.setBackColor(kNotSupportedColor);
        }
    }
}

void selectAll(App& app, FrmCustomData& c) {
    for (int i = 1; i <= 78; ++i) {
        app.loop().pump();
        if (c.Check1[i].caption() == kNotSupported) continue;
        c.Check1[i].setValue(c.Check2.value());
    }
}

bool anyChecked(FrmCustomData& c, int from, int to) {
    for (int i = std::max(from, 1); i <= to; ++i)
        if (c.Check1[i].value()) return true;
    return false;
}

// The main screen's pictures after a new selection.
void repaintMain(App& app, FrmCustomData& c) {
    FrmMain& m = app.frmMain();
    for (int i = 1; i <= kLastIndicator; ++i) {
        const bool checked = c.Check1[i].value();
        const bool pair = i >= 20 && i <= 27;
        if (checked && pair) m.Image1[i + 14].setPicture(kImgGreen);
        if (checked || !app.Mode1Supported[std::size_t(i)]) continue;
        m.Image1[i].setPicture(kImgYellow);
        if (i == 1) m.Image1[0].setPicture(kImgYellow);
        if (i == 3) m.Image1[33].setPicture(kImgYellow);
        if (pair) m.Image1[i + 14].setPicture(kImgYellow);
    }
}

void accept(App& app, FrmCustomData& c) {
    if (!anyChecked(c, 0, 31) || (c.CustomFromExtended && !anyChecked(c, 33, 78))) {
        std::string text = kNeedOne;
        for (char& ch : text)
            ch = char(std::toupper(static_cast<unsigned char>(ch)));
        c.Panel1.setText(text);
        return;
    }
    for (int i = 1; i <= kLastItem; ++i)
        app.PidWanted[std::size_t(i)] = c.Check1[i].value();
    SettleWait(app, kSelectionSettle);
    repaintMain(app, c);
    if (c.CustomFromExtended) {
        for (int i = 33; i <= 78; ++i)
            if (!c.Check1[i].value() && app.Mode1Supported[std::size_t(i)])
                app.frmNewPids().Image1[i - 32].setPicture(kImgYellow);
        ClearExtendedData(app);
    }
    c.unload();
}

}  // namespace

void OpenCustomList(App& app, bool fromExtended) {
    auto* c = dynamic_cast<FrmCustomData*>(app.screenByName("frmCustomData"));
    if (!c || c->loaded()) return;
    c->CustomFromExtended = fromExtended;
    c->showModal();
}

void InstallCustomList(App& app) {
    auto* screen = dynamic_cast<FrmCustomData*>(app.screenByName("frmCustomData"));
    if (!screen) return;
    FrmCustomData& c = *screen;
    for (int i = 1; i <= kLastItem; ++i) {
        c.Label1[i].setText(pidName(i));
        c.Label1[i].markDesign();
        CustomCheck& item = c.Check1[i];
        item.onClick = [&item] { item.setCaption(item.value() ? kEnabled : kDisabled); };
    }
    c.onLoad = [&app, &c] { openList(app, c); };
    c.Check2.onClick = [&app, &c] { selectAll(app, c); };
    c.cmdOk.onClick = [&app, &c] { accept(app, c); };
    c.cmdCancel.onClick = [&c] { c.unload(); };
    app.frmMain().mnuOptionList.onClick = [&app] { OpenCustomList(app, false); };
}

}  // namespace ketrel
