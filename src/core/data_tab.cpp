#include "core/data_tab.h"

#include <cstring>

#include "obd/unit_captions.h"
#include "screens/data_tab_layout.h"
#include "state/app.h"

namespace ketrel {
namespace {

Field& FieldNamed(Screen& screen, const char* name) {
    return static_cast<Field&>(*screen.findControl(name));
}

// The grid shows the air status code by name.
std::string CellText(const FrmMain& m, const Field& label, bool gridBuild) {
    return &label == &m.lblAirCommand ? AirStatusCellText(label.text(), gridBuild) : label.text();
}

// The handler of one value label of tab 0.
void OnValueChange(App& app, Field& label, const DataTabRow& row) {
    FrmMain& m = app.frmMain();
    if (app.GridStyle) m.GridData.setText(row.gridRow, row.gridCol, CellText(m, label, false));
    bool available = label.text() != "N/A";
    label.setEnabled(available);
    m.Label1[row.captionItem].setEnabled(available);
    const int pid = IndicatorPid(row.indicator);
    if (row.coloursSecondIndicator && !app.PlayingLog && app.PidWanted[std::size_t(pid)]) {
        m.Image1[IndicatorItems(pid).back()].setPicture(available ? kImgGreen : kImgRed);
    }
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
    // The O2 sensor rows take the captions of the data tab, which follow the bank layout.
    for (const DataTabRow& row : kDataTabRows) {
        g.setText(row.gridRow, row.gridCol - 1,
                  row.gridName ? row.gridName : m.Label1[row.captionItem].text());
    }
    WriteDataGridUnits(app);
    for (const DataTabRow& row : kDataTabRows)
        g.setText(row.gridRow, row.gridCol, CellText(m, FieldNamed(m, row.label), true));
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
        label.onChange = [&app, &label, &row] { OnValueChange(app, label, row); };
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
