#include "obd/unit_captions.h"

#include <array>
#include <string>

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

// What a GridData unit cell shows.
enum class Unit { None, Temp, Speed, Map, FuelPressure, Fixed };
struct UnitCell {
    int row, col;
    Unit unit;
    const char* word;
};

constexpr std::array<UnitCell, 37> kGridUnits{{
    {1, 2, Unit::Temp, ""},
    {2, 2, Unit::Temp, ""},
    {3, 2, Unit::Fixed, "Volts"},
    {4, 2, Unit::Fixed, "Volts"},
    {5, 2, Unit::Fixed, "Volts"},
    {6, 2, Unit::Fixed, "Volts"},
    {7, 2, Unit::Fixed, "Volts"},
    {8, 2, Unit::Fixed, "Volts"},
    {9, 2, Unit::Fixed, "Volts"},
    {10, 2, Unit::Fixed, "Volts"},
    {11, 2, Unit::Fixed, "%"},
    {12, 2, Unit::Fixed, "%"},
    {13, 2, Unit::Fixed, "%"},
    {14, 2, Unit::Fixed, "%"},
    {15, 2, Unit::Fixed, "%"},
    {16, 2, Unit::Speed, ""},
    {17, 2, Unit::Fixed, "Deg"},
    {18, 2, Unit::Fixed, "gm/s"},
    {1, 6, Unit::Fixed, "%"},
    {2, 6, Unit::Map, ""},
    {3, 6, Unit::Fixed, "R.P.M."},
    {4, 6, Unit::Fixed, "Open/Close"},
    {5, 6, Unit::Fixed, "Open/Close"},
    {6, 6, Unit::FuelPressure, ""},
    {7, 6, Unit::Fixed, "On/OFF"},
    {8, 6, Unit::None, ""},
    {9, 6, Unit::Fixed, "%"},
    {10, 6, Unit::Fixed, "%"},
    {11, 6, Unit::Fixed, "%"},
    {12, 6, Unit::Fixed, "%"},
    {13, 6, Unit::Fixed, "%"},
    {14, 6, Unit::Fixed, "%"},
    {15, 6, Unit::Fixed, "%"},
    {16, 6, Unit::Fixed, "%"},
    {17, 6, Unit::Fixed, "Yes/No"},
    {18, 6, Unit::None, ""},
    {19, 6, Unit::Fixed, "Sec"},
}};

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
    for (const UnitCell& cell : kGridUnits) {
        std::string word;
        switch (cell.unit) {
            case Unit::None:
                break;
            case Unit::Temp:
                word = TempWord(app);
                break;
            case Unit::Speed:
                word = app.Speed == "KPH" ? "KPH" : "MPH";
                break;
            case Unit::Map:
                word = psi ? "In/Hg" : "kPa";
                break;
            case Unit::FuelPressure:
                word = psi ? "P.S.I" : "kPa";
                break;
            case Unit::Fixed:
                word = cell.word;
                break;
        }
        g.setText(cell.row, cell.col, word);
    }
}

}  // namespace ketrel
