#include "obd/unit_captions.h"

#include <string>

#include "screens/data_tab_layout.h"
#include "state/app.h"

namespace ketrel {
namespace {

const char* TempWord(const App& app) {
    return app.Temp == "C" ? "Deg {C}" : "Deg {F}";
}

// A setting the routines do not know leaves its captions alone.
bool KnownUnits(const std::string& setting, const char* a, const char* b) {
    return setting == a || setting == b;
}

}  // namespace

void SetMainUnitCaptions(App& app) {
    FrmMain& m = app.frmMain();
    if (KnownUnits(app.Temp, "F", "C")) {
        for (int i = 0; i <= 3; ++i)
            m.lblTemp[i].setText(TempWord(app));
    }
    if (KnownUnits(app.Pressure, "PSI", "kPa")) {
        bool psi = app.Pressure == "PSI";
        m.Label10.setText(psi ? "In/Hg" : "kPa");
        m.label4[2].setText(psi ? "In/Hg" : "kPa");
        m.lblPSI[0].setText(psi ? "P.S.I." : "kPa");
        m.label4[3].setText(psi ? "P.S.I" : "kPa");
    }
    if (KnownUnits(app.Speed, "MPH", "KPH")) {
        m.lblMPH[0].setText(app.Speed);
        m.lblMPH[1].setText(app.Speed);
    }
    if (app.GridStyle) WriteDataGridUnits(app);
}

void SetExtendedUnitCaptions(App& app) {
    FrmNewPids& x = app.frmNewPids();
    if (KnownUnits(app.Temp, "F", "C")) {
        for (int i : {0, 1, 2, 3, 20})
            x.lblTemp[i].setText(TempWord(app));
    }
    if (KnownUnits(app.Pressure, "PSI", "kPa")) {
        bool psi = app.Pressure == "PSI";
        for (int i : {7, 8, 17})
            x.lblPressure[i].setText(psi ? "PSI" : "kPa");
        x.lblPressure[16].setText(psi ? "In/H2O" : "Pa");
    }
    if (KnownUnits(app.Speed, "MPH", "KPH")) {
        for (int i : {4, 15})
            x.lblSpeed[i].setText(app.Speed == "MPH" ? "Miles" : "KM");
    }
}

void WriteDataGridUnits(App& app) {
    Grid& g = app.frmMain().GridData;
    bool psi = app.Pressure != "kPa";
    for (const DataTabRow& row : kDataTabRows) {
        std::string word;
        switch (row.gridUnit) {
            case GridUnit::None:
                break;
            case GridUnit::Temp:
                word = TempWord(app);
                break;
            case GridUnit::Speed:
                word = app.Speed == "KPH" ? "KPH" : "MPH";
                break;
            case GridUnit::Map:
                word = psi ? "In/Hg" : "kPa";
                break;
            case GridUnit::FuelPressure:
                word = psi ? "P.S.I" : "kPa";
                break;
            case GridUnit::Fixed:
                word = row.gridUnitWord;
                break;
        }
        g.setText(row.gridRow, row.gridCol + 1, word);
    }
}

}  // namespace ketrel
