#include <string>

#include "display/data_lists.h"
#include "display/display_polling.h"
#include "obd/monitor_status.h"
#include "obd/pid_catalogue.h"
#include "obd/unit_captions.h"
#include "screens/frm_recorder.h"
#include "screens/new_pids_layout.h"
#include "state/app.h"

namespace ketrel {

namespace {

// How long a status-picture click lets replies in flight land, in seconds.
constexpr double kPictureSettle = 0.2;

std::string unitWord(const App& app, const NewPidRow& row) {
    const bool psi = app.Pressure != "kPa";
    switch (row.unit) {
        case NewPidUnit::None:
            return "";
        case NewPidUnit::Temp:
            return app.Temp == "C" ? "Deg {C}" : "Deg {F}";
        case NewPidUnit::Pressure:
            return psi ? "PSI" : "kPa";
        case NewPidUnit::Vapor:
            return psi ? "In/H2O" : "Pa";
        case NewPidUnit::Baro:
            return psi ? "In/Hg" : "kPa";
        case NewPidUnit::Distance:
            return app.Speed == "KPH" ? "KM" : "Miles";
        case NewPidUnit::Fixed:
            return row.unitWord;
    }
    return "";
}

Field* fieldOf(FrmNewPids& x, const char* name) {
    return dynamic_cast<Field*>(x.findControl(name));
}

// The O2 names of the wide-range fields follow the bank layout.
void nameWideO2(App& app) {
    FrmNewPids& x = app.frmNewPids();
    const std::array<const char*, 8>* names = nullptr;
    if (app.Mode1Supported[0x13])
        names = &kO2WideTwoBank;
    else if (app.Mode1Supported[0x1D])
        names = &kO2WideFourBank;
    if (!names) return;
    for (std::size_t i = 0; i < 8; ++i) {
        x.Label1[kO2WideVoltItems[i]].setText((*names)[i]);
        x.Label1[kO2WideCurrentItems[i]].setText((*names)[i]);
    }
}

void openExtended(App& app) {
    FrmNewPids& x = app.frmNewPids();
    app.frmMain().setEnabled(false);
    SetExtendedUnitCaptions(app);
    // The barometric pressure reads in inches of mercury under the "PSI" setting.
    x.lblPressure[18].setText(app.Pressure == "kPa" ? "kPa" : "In/Hg");
    app.ExtendedPIDCount = 0;
    app.CustomListActive = true;
    ResetSupportGrid(app, app.frmMain().msM3Grid);
    ResetSupportGrid(app, app.frmMain().msM4Grid);
    app.RequestPid20 = true;
    app.RequestPid40 = true;
    x.Command1.setEnabled(app.Connected);
    nameWideO2(app);
    if (app.GridStyle) SetUpExtendedGrid(app);
}

void queryClose(App& app, bool& cancel) {
    FrmNewPids& x = app.frmNewPids();
    app.CustomListActive = false;
    x.Timer1.start();
    if (!x.closeReady) cancel = true;
}

// A value changed: its grid cell, and the field with its caption greyed while "N/A".
void valueChanged(App& app, Field& field, const NewPidRow* row) {
    if (app.GridStyle) {
        FrmNewPids& x = app.frmNewPids();
        for (const NewPidRow& r : kNewPidRows)
            if (field.name() == r.field) x.GridData.setText(r.gridRow, r.gridCol, field.text());
        for (int n = 1; n <= 8; ++n) {
            if (&field == &x.lblO2wrvE(n)) x.GridData.setText(n, kNewPidRatioCol, field.text());
            if (&field == &x.lblO2wrE(n)) x.GridData.setText(n + 8, kNewPidRatioCol, field.text());
        }
    }
    if (!row) return;
    const bool on = field.text() != "N/A";
    field.setEnabled(on);
    if (row->captionItem >= 0) app.frmNewPids().Label1[row->captionItem].setEnabled(on);
}

// The status picture of PID n + 32 forces the PID on or drops it.
void pictureClicked(App& app, int n) {
    FrmNewPids& x = app.frmNewPids();
    if (!app.frmMain().mnuEditPidsOver.checked() || !app.Connected) return;
    const auto pid = std::size_t(n + 32);
    if (pid >= app.Mode1Supported.size()) return;
    const bool on = !app.Mode1Supported[pid];
    app.PidWanted[pid] = on;
    app.Mode1Supported[pid] = on;
    if (!on) ClearExtendedData(app);
    x.Image1[n].setPicture(on ? kImgYellow : kImgRed);
    SettleWait(app, kPictureSettle);
}

// Shows the recorder and starts recording at once.
void recordNow(App& app) {
    auto* recorder = dynamic_cast<FrmRecorder*>(app.screenByName("frmRecorder"));
    if (!recorder) return;
    recorder->show();
    recorder->cmdPlay.setEnabled(false);
    recorder->cmdStop.setEnabled(false);
    recorder->cmdRecord.setEnabled(true);
    recorder->cmdRecord.click();
}

}  // namespace

void SetUpExtendedGrid(App& app) {
    FrmNewPids& x = app.frmNewPids();
    Grid& g = x.GridData;
    for (int col : {0, 4}) {
        g.setText(0, col, "PID");
        g.setText(0, col + 1, "VALUE");
        g.setText(0, col + 2, "UNITS");
    }
    g.setText(0, kNewPidRatioCol, "VALUE");
    for (const NewPidRow& row : kNewPidRows) {
        if (row.captionItem >= 0)
            g.setText(row.gridRow, row.gridCol - 1, x.Label1[row.captionItem].text());
        g.setText(row.gridRow, row.gridCol + 1, unitWord(app, row));
        if (Field* f = fieldOf(x, row.field)) g.setText(row.gridRow, row.gridCol, f->text());
    }
    for (int n = 1; n <= 8; ++n) {
        g.setText(n, kNewPidRatioCol, x.lblO2wrvE(n).text());
        g.setText(n + 8, kNewPidRatioCol, x.lblO2wrE(n).text());
    }
}

void InstallExtendedList(App& app) {
    FrmNewPids& x = app.frmNewPids();
    x.onLoad = [&app] { openExtended(app); };
    x.onQueryUnload = [&app](bool& cancel) { queryClose(app, cancel); };
    x.onUnload = [&app] { app.frmMain().setEnabled(true); };
    x.Timer1.setHandler([&x] {
        x.Timer1.stop();
        x.closeReady = true;
        x.unload();
    });
    for (Field* f : x.valueFields()) {
        const NewPidRow* row = nullptr;
        for (const NewPidRow& r : kNewPidRows)
            if (f->name() == r.field) row = &r;
        f->onChange = [&app, f, row] { valueChanged(app, *f, row); };
    }
    for (int n = 1; n <= 46; ++n)
        x.Image1[n].onClick = [&app, n] { pictureClicked(app, n); };
    x.mnuCustom.onClick = [&app] { OpenCustomList(app, true); };
    x.Command1.onClick = [&app] { recordNow(app); };
    x.mnuFileExit.onClick = [&x] { x.unload(); };
}

}  // namespace ketrel
