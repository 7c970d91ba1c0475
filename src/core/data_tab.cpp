#include "core/data_tab.h"

#include <array>
#include <cstring>

#include "data/pid_catalogue_rows.h"
#include "obd/unit_captions.h"
#include "screens/data_tab_layout.h"
#include "state/app.h"

namespace ketrel {
namespace {

// The O2 voltage labels and the PID of each; their second indicator is Image1(PID + 14).
struct O2Indicator {
    const char* label;
    int pid;
};
constexpr std::array<O2Indicator, 8> kO2Indicators{{
    {"lblO2b1s1", 0x14},
    {"lblO2b1s2", 0x15},
    {"lblO2b1s3", 0x16},
    {"lblO2b1s4", 0x17},
    {"lblO2b2s1", 0x18},
    {"lblO2b2s2", 0x19},
    {"lblO2b2s3", 0x1A},
    {"lblO2b2s4", 0x1B},
}};
constexpr int kIndicatorDistance = 14;

// Names of the GridData rows that do not come from the O2 captions.
struct GridName {
    int row, col;
    const char* name;
};
constexpr std::array<GridName, 21> kGridNames{{
    {1, 0, "Coolant Temperature"},
    {2, 0, "Intake Temperature"},
    {11, 0, "Long Term Fuel Trim B1"},
    {12, 0, "Short Term Fuel Trim B1"},
    {13, 0, "Long Term Fuel Trim B2"},
    {14, 0, "Short Term Fuel Trim B2"},
    {15, 0, "Throttle Position"},
    {16, 0, "Vehicle Speed"},
    {17, 0, "Spark Timing"},
    {18, 0, "MAF"},
    {1, 4, "Calculated Load"},
    {2, 4, "MAP"},
    {3, 4, "RPM"},
    {4, 4, "Fuel System 1"},
    {5, 4, "Fuel System 2"},
    {6, 4, "Fuel Pressure"},
    {7, 4, "MIL Light"},
    {8, 4, "# Of Trouble Codes"},
    {17, 4, "Power Take Off"},
    {18, 4, "Air Status"},
    {19, 4, "Time Engine Start"},
}};

bool IsAirStatus(const DataTabRow& row) {
    return std::strcmp(row.label, "lblAirCommand") == 0;
}

Field& FieldNamed(Screen& screen, const char* name) {
    return static_cast<Field&>(*screen.findControl(name));
}

std::string CellText(const DataTabRow& row, const std::string& text, bool gridBuild) {
    return IsAirStatus(row) ? AirStatusCellText(text, gridBuild) : text;
}

// The handler of one value label of tab 0.
void OnValueChange(App& app, Field& label, const DataTabRow& row, int indicatorPid) {
    FrmMain& m = app.frmMain();
    const std::string& text = label.text();
    if (app.GridStyle) m.GridData.setText(row.gridRow, row.gridCol, CellText(row, text, false));
    bool available = text != "N/A";
    label.setEnabled(available);
    m.Label1[row.captionItem].setEnabled(available);
    if (indicatorPid != 0 && !app.PlayingLog && app.PidWanted[std::size_t(indicatorPid)]) {
        m.Image1[indicatorPid + kIndicatorDistance].setPicture(available ? kImgGreen : kImgRed);
    }
}

int IndicatorPidOf(const DataTabRow& row) {
    for (const O2Indicator& o : kO2Indicators) {
        if (std::strcmp(o.label, row.label) == 0) return o.pid;
    }
    return 0;
}

ControlArray<Field>& CaptionArray(FrmMain& m, const char* name) {
    return std::strcmp(name, "Label2") == 0 ? m.Label2 : m.Label32;
}

void BuildDataGrid(App& app) {
    FrmMain& m = app.frmMain();
    Grid& g = m.GridData;
    g.clear();
    g.setRows(20);
    g.setCols(7);
    // Names, values and units in two blocks with a narrow spacer between (screen units).
    const int widths[] = {3300, 1500, 1300, 400, 3300, 1500, 1300};
    for (int c = 0; c < 7; ++c)
        g.setColWidth(c, widths[c]);
    for (int c : {1, 5})
        g.setColAlign(c, Align::Center);
    for (int block : {0, 4}) {
        g.setText(0, block, "PID");
        g.setText(0, block + 1, "VALUE");
        g.setText(0, block + 2, "UNITS");
    }
    for (const GridName& n : kGridNames)
        g.setText(n.row, n.col, n.name);
    // The O2 sensor rows take the captions of the data tab, which follow the bank layout.
    for (std::size_t s = 0; s < data::kO2Slots.size(); ++s) {
        g.setText(int(s) + 3, 0, m.Label1[data::kO2Slots[s].labelItem].text());
        g.setText(int(s) + 9, 4, m.Label1[data::kO2Slots[s].trimItem].text());
    }
    WriteDataGridUnits(app);
    for (const DataTabRow& row : kDataTabRows) {
        const std::string& text = FieldNamed(m, row.label).text();
        g.setText(row.gridRow, row.gridCol, CellText(row, text, true));
    }
}

}  // namespace

std::string AirStatusCellText(const std::string& code, bool gridBuild) {
    if (code == "1") return "Upstream";
    if (code == "2") return "Downstream";
    if (code == "3") return gridBuild ? "OFF" : "Off";
    return code;
}

void InstallDataTab(App& app) {
    FrmMain& m = app.frmMain();
    for (const DataTabRow& row : kDataTabRows) {
        Field& label = FieldNamed(m, row.label);
        int pid = IndicatorPidOf(row);
        label.onChange = [&app, &label, &row, pid] { OnValueChange(app, label, row, pid); };
    }
    for (const CaptionedLabel& c : kCaptionedLabels) {
        Field& label = FieldNamed(m, c.label);
        Field& caption = CaptionArray(m, c.captionArray)[c.captionItem];
        label.onChange = [&label, &caption] {
            bool available = label.text() != "N/A";
            label.setEnabled(available);
            caption.setEnabled(available);
        };
    }
    m.mnuViewDefault.onClick = [&app] { ShowLabelStyle(app); };
    m.mnuViewStyleGrid.onClick = [&app] { ShowGridStyle(app); };
}

void ShowLabelStyle(App& app) {
    FrmMain& m = app.frmMain();
    app.DataStyle = "1";
    app.GridStyle = false;
    m.mnuViewDefault.setChecked(true);
    m.mnuViewStyleGrid.setChecked(false);
    m.GridData.setVisible(false);
    m.Frame14.setVisible(true);
}

void ShowGridStyle(App& app) {
    FrmMain& m = app.frmMain();
    app.DataStyle = "2";
    app.GridStyle = true;
    m.mnuViewStyleGrid.setChecked(true);
    m.mnuViewDefault.setChecked(false);
    m.Frame14.setVisible(false);
    m.GridData.setVisible(true);
    BuildDataGrid(app);
}

}  // namespace ketrel
