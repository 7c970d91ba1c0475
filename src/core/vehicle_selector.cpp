#include "core/vehicle_selector.h"

#include <functional>
#include <initializer_list>

#include "data/vehicle_lists.h"
#include "platform/text_convert.h"
#include "state/app.h"

namespace ketrel {

namespace {

const char* const kMainTitle = "Ketrel (OBD II Generic) Version 0.77 - ";

// The entries after the key on the line of `table` whose first entry is `key`.
std::vector<std::string> rowOf(std::string_view table, std::string_view key) {
    while (!table.empty()) {
        const std::size_t end = table.find('\n');
        std::string_view line = table.substr(0, end);
        table = end == std::string_view::npos ? std::string_view{} : table.substr(end + 1);
        if (line.empty() || line.front() == '#') continue;
        std::vector<std::string> cells;
        for (std::size_t at = 0;;) {
            const std::size_t tab = line.find('\t', at);
            cells.emplace_back(line.substr(at, tab - at));
            if (tab == std::string_view::npos) break;
            at = tab + 1;
        }
        if (cells.front() == key) return {cells.begin() + 1, cells.end()};
    }
    return {};
}

void fill(ComboBox& combo, const std::vector<std::string>& items) {
    combo.clear();
    for (const std::string& s : items)
        combo.addItem(s);
}

// Sets the shown text without running the field's change handler.
void setQuietly(ComboBox& combo, const std::string& text) {
    auto handler = std::move(combo.onChange);
    combo.setText(text);
    combo.onChange = std::move(handler);
}

void titleWithModel(App& app) {
    FrmMain& m = app.frmMain();
    m.setCaption(kMainTitle + m.cmbYear.text() + " " + m.cmbMake.text() + " - " +
                 m.cmbModel.text());
}

}  // namespace

std::vector<std::string> MakesForYear(std::string_view year) {
    if (year.empty()) return {};
    return rowOf(data::MakesByYearTsv(), year);
}

std::vector<std::string> ModelsForMake(std::string_view make) {
    if (make.empty()) return {};
    return rowOf(data::ModelsByMakeTsv(), make);
}

void FillFixedLists(App& app) {
    FrmMain& m = app.frmMain();
    std::vector<std::string> years{kSelect};
    for (int y = 2005; y >= 1994; --y)
        years.push_back(std::to_string(y));
    fill(m.cmbYear, years);
    fill(m.cmbTransmission, {kSelect, "AUTOMATIC", "MANUAL"});
    fill(m.cmbAC, {kSelect, "YES", "NO"});
    fill(m.cmbEngine,
         {kSelect, "12 Cyl", "10 Cyl", " 8 Cyl", " 6 Cyl", " 5 Cyl", " 4 Cyl", " 3 Cyl"});
    for (ComboBox* c : {&m.cmbYear, &m.cmbTransmission, &m.cmbAC, &m.cmbEngine})
        setQuietly(*c, kSelect);
}

void FillMakes(App& app, const std::string& year) {
    fill(app.frmMain().cmbMake, MakesForYear(year));
}

void FillModels(App& app) {
    FrmMain& m = app.frmMain();
    // The year in cmbYear takes no part: a make shows the same models in every year.
    const std::string make = m.cmbMake.text();
    fill(m.cmbModel, ModelsForMake(make));
}

void VehicleYearChosen(App& app) {
    FrmMain& m = app.frmMain();
    FillMakes(app, m.cmbYear.text());
    setQuietly(m.cmbMake, kSelect);
    m.cmbModel.clear();
    if (m.cmbYear.text() != kSelect) m.setCaption(kMainTitle + m.cmbYear.text());
}

void VehicleMakeChosen(App& app) {
    FrmMain& m = app.frmMain();
    FillModels(app);
    setQuietly(m.cmbModel, kSelect);
    if (m.cmbMake.text() != kSelect)
        m.setCaption(kMainTitle + m.cmbYear.text() + " " + m.cmbMake.text());
}

void VehicleModelChosen(App& app) {
    if (app.frmMain().cmbModel.text() != kSelect) titleWithModel(app);
}

void LeaveVehicleField(App& app) {
    FrmMain& m = app.frmMain();
    const bool modelChosen = m.cmbModel.text() != kSelect;
    setQuietly(m.cmbMake, UpperCase(m.cmbMake.text()));
    setQuietly(m.cmbModel, UpperCase(m.cmbModel.text()));
    m.txtVin.setText(UpperCase(m.txtVin.text()));
    for (ComboBox* c : {&m.cmbYear, &m.cmbMake, &m.cmbModel})
        if (c->text() == kSelect) setQuietly(*c, "");
    if (modelChosen) titleWithModel(app);
}

void TypeVehicleText(ComboBox& combo, const std::string& text) {
    setQuietly(combo, text);
}

void InstallVehicleSelector(App& app) {
    FrmMain& m = app.frmMain();
    FillFixedLists(app);
    m.cmbYear.onChange = [&app] { VehicleYearChosen(app); };
    m.cmbMake.onChange = [&app] { VehicleMakeChosen(app); };
    m.cmbModel.onChange = [&app] { VehicleModelChosen(app); };
    for (Control* c :
         std::initializer_list<Control*>{&m.cmbYear, &m.cmbMake, &m.cmbModel, &m.txtVin})
        c->onLeave = [&app] { LeaveVehicleField(app); };
    m.cmdRequestInfo.onClick = [&app] {
        app.VinText.clear();
        app.RequestInfo = true;
    };
    m.mnuVehicleInfo.onClick = m.cmdRequestInfo.onClick;
}

}  // namespace ketrel
