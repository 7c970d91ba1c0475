#include "recording/recorded_log.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <vector>

#include "platform/text_convert.h"
#include "recording/log_catalogue.h"
#include "recording/log_file.h"
#include "screens/frm_recorded_log.h"
#include "screens/frm_recorder.h"
#include "state/app.h"

namespace ketrel {

namespace {

constexpr std::int64_t kGrey = 0xE0E0E0;
constexpr std::int64_t kYellow = 0xFFFF00;
// Widths of the grid's columns in twips; the last keeps the grid's own.
constexpr int kWidths[] = {1600, 2000, 1000, 1600, 1600, 1700, 1600, 1000, 1400};

// Grid columns of the search methods.
constexpr int kNameCol = 0, kFrameCol = 7, kTypeCol = 8, kVinCol = 5, kPlateCol = 6;

FrmRecordedLog& screenOf(App& app) {
    return *RecordedLogScreen(app);
}

void showError(App& app, const std::string& text) {
    app.dialogs().message(text, "Error", MsgIcon::Exclamation);
}

bool openCatalogue(App& app, LogCatalogue& db) {
    if (db.open(app.appPath())) return true;
    showError(app, db.error());
    return false;
}

void setButtons(FrmRecordedLog& s, bool on) {
    for (Field* f : {&s.cmdPlay, &s.cmdDelete, &s.cmdSearch, &s.cmdDeleteAll, &s.cmdExportCsv})
        f->setEnabled(on);
}

int rowCount(FrmRecordedLog& s) {
    return s.gridLog.rows() - 1;
}

// Each activation: the buttons follow the row count, the total is shown, row 1 highlighted.
void activated(App& app) {
    FrmRecordedLog& s = screenOf(app);
    const int count = rowCount(s);
    setButtons(s, count >= 1);
    s.lbltotalRecord.setText(std::to_string(count));
    HighlightLogRow(app, 1);
}

// After a deletion: the table read anew, the total, the buttons, row 1 highlighted afresh.
void refreshAfterDelete(App& app) {
    FrmRecordedLog& s = screenOf(app);
    FillLogGrid(app);
    s.HighlightedRow = 0;
    activated(app);
}

void search(App& app) {
    FrmRecordedLog& s = screenOf(app);
    if (s.txtSearchWord.text().empty()) {
        app.dialogs().message("Enter A Keyword To Search");
        return;
    }
    const std::string method = s.cmbSearchMethod.text();
    const int col = method == "Vin" ? kVinCol : method == "Plate" ? kPlateCol : kNameCol;
    const std::string word = UpperCase(s.txtSearchWord.text());
    LogCatalogue db;
    if (!openCatalogue(app, db)) return;
    bool found = false;
    LogRecord hit;
    if (!db.find(method.empty() ? "Name" : method, word, found, hit)) {
        showError(app, db.error());
        return;
    }
    if (found) {
        for (int r = 1; r < s.gridLog.rows(); ++r) {
            app.loop().pump();
            if (UpperCase(s.gridLog.text(r, col)) != word) continue;
            s.TopRow = r;
            HighlightLogRow(app, r);
            return;
        }
    }
    app.dialogs().message("No Word Found In Database", "Not Found");
}

// Deletes Log/<name>.log, passing over any error; a name that reaches outside Log/ deletes
// nothing.
void removeLogFile(App& app, const std::string& name) {
    if (auto path = SafeLogFilePath(app.appPath(), name)) {
        std::error_code ec;
        std::filesystem::remove(*path, ec);
    }
}

void deleteOne(App& app) {
    FrmRecordedLog& s = screenOf(app);
    if (app.dialogs().message("Are You Sure You Want To Delete?", "Ketrel", MsgIcon::Question,
                              MsgButtons::YesNo) != MsgAnswer::Yes)
        return;
    const std::string name = s.gridLog.text(s.Row, kNameCol);
    removeLogFile(app, name);
    LogCatalogue db;
    if (db.open(app.appPath())) db.removeFirst(name);
    refreshAfterDelete(app);
}

void deleteAll(App& app) {
    if (app.dialogs().message("Are You Sure You Want To Delete All Records?", "Ketrel",
                              MsgIcon::Question, MsgButtons::YesNo) != MsgAnswer::Yes)
        return;
    std::error_code ec;
    for (auto it = std::filesystem::directory_iterator(app.appPath() / "Log", ec);
         !ec && it != std::filesystem::directory_iterator(); it.increment(ec)) {
        std::error_code ignored;
        if (it->is_regular_file(ignored)) std::filesystem::remove(it->path(), ignored);
    }
    LogCatalogue db;
    if (openCatalogue(app, db) && !db.removeAll()) showError(app, db.error());
    refreshAfterDelete(app);
}

// "N/A" stands for a value never given.
std::string given(const std::string& text) {
    return text == "N/A" ? std::string() : text;
}

void showLogController(App& app, const std::string& name) {
    auto* rec = dynamic_cast<FrmRecorder*>(app.screenByName("frmRecorder"));
    if (!rec) return;
    rec->load();
    rec->Panel2.setText("FRAME:");
    rec->Panel1.setText("STATUS:  -----");
    rec->setCaption("Log Controller - " + name + ".log");
    rec->cmdPlay.setEnabled(true);
    rec->show();
}

void openLog(App& app) {
    FrmRecordedLog& s = screenOf(app);
    std::string name, path;
    if (!HighlightedLogFile(app, name, path)) return;
    const int row = s.Row;
    auto cell = [&s, row](int col) { return s.gridLog.text(row, col); };
    FrmMain& m = app.frmMain();
    app.LogName = name;
    m.cmbYear.setText(cell(2));
    m.cmbMake.setText(cell(3));
    m.cmbModel.setText(cell(4));
    m.txtVin.setText(cell(5));
    m.txtPlate.setText(cell(6));
    m.txtMileage.setText(cell(9));
    app.LogFrames = std::strtol(cell(kFrameCol).c_str(), nullptr, 10);
    app.LogType = cell(kTypeCol);
    const std::string year = given(m.cmbYear.text()), model = given(m.cmbModel.text()),
                      make = given(m.cmbMake.text());
    s.unload();
    showLogController(app, name);
    m.mnuEditPlay.setEnabled(true);
    m.mnuFileOpen.setEnabled(false);
    m.setCaption("Ketrel (OBD II Generic) Version 0.77 - " + year + " " + make + " - " + model);
}

}  // namespace

FrmRecordedLog* RecordedLogScreen(App& app) {
    return dynamic_cast<FrmRecordedLog*>(app.screenByName("frmRecordedLog"));
}

void HighlightLogRow(App& app, int row) {
    FrmRecordedLog& s = screenOf(app);
    Grid& g = s.gridLog;
    if (row < 1 || row >= g.rows()) return;
    if (s.HighlightedRow >= 1 && s.HighlightedRow < g.rows()) {
        for (int c = 0; c < g.cols(); ++c)
            g.setCellBackColor(s.HighlightedRow, c, kGrey);
    }
    s.Row = row;
    s.Col = 0;
    s.HighlightedRow = row;
    for (int c = 0; c < g.cols(); ++c)
        g.setCellBackColor(row, c, kYellow);
}

int FillLogGrid(App& app) {
    FrmRecordedLog& s = screenOf(app);
    Grid& g = s.gridLog;
    std::vector<LogRecord> rows;
    LogCatalogue db;
    if (openCatalogue(app, db) && !db.rows(rows)) showError(app, db.error());
    g.setRows(int(rows.size()) + 1);
    g.clear();
    const auto& names = LogCatalogue::ColumnNames();
    for (int c = 0; c < g.cols(); ++c)
        g.setText(0, c, names[std::size_t(c)]);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const LogRecord& r = rows[i];
        const std::string cells[] = {
            r.Name,  r.DateRecorded,          r.Year,          r.Make,   r.Model, r.Vin,
            r.Plate, std::to_string(r.Frame), r.InterfaceType, r.Mileage};
        for (int c = 0; c < g.cols(); ++c)
            g.setText(int(i) + 1, c, cells[c]);
    }
    return int(rows.size());
}

bool HighlightedLogFile(App& app, std::string& name, std::string& path) {
    FrmRecordedLog& s = screenOf(app);
    if (s.Row < 1 || s.Row >= s.gridLog.rows()) return false;
    name = s.gridLog.text(s.Row, kNameCol);
    auto file = SafeLogFilePath(app.appPath(), name);
    if (!file) {
        showError(app, "The log name \"" + name + "\" is not a file name of the Log folder.");
        return false;
    }
    path = file->string();
    std::ifstream in(*file, std::ios::binary);
    if (!in) {
        showError(app, path + ": " + std::strerror(errno));
        return false;
    }
    return true;
}

void InstallRecordedLog(App& app) {
    FrmRecordedLog* screen = RecordedLogScreen(app);
    if (!screen) return;
    FrmRecordedLog& s = *screen;
    for (int c = 0; c < int(std::size(kWidths)); ++c)
        s.gridLog.setColWidth(c, kWidths[c]);
    s.gridLog.markDesign();
    // Held off by the main screen while the catalogue is open, let go when it closes.
    auto mainHeld = std::make_shared<bool>(false);
    s.onLoad = [&app, &s] {
        for (const char* method : {"Name", "Vin", "Plate"})
            s.cmbSearchMethod.addItem(method);
        s.cmbSearchMethod.setListIndex(0);
        FillLogGrid(app);
    };
    s.onActivate = [&app] { activated(app); };
    s.onUnload = [&app, mainHeld] {
        if (*mainHeld) app.frmMain().setEnabled(true);
        *mainHeld = false;
    };
    s.onGridMouseUp = [&app, &s] { HighlightLogRow(app, s.Row); };
    s.cmdSearch.onClick = [&app] { search(app); };
    s.cmdDelete.onClick = [&app] { deleteOne(app); };
    s.cmdDeleteAll.onClick = [&app] { deleteAll(app); };
    s.cmdPlay.onClick = [&app] { openLog(app); };
    s.mnuFileExit.onClick = [&s] { s.unload(); };
    app.frmMain().mnuFileOpen.onClick = [&app, &s, mainHeld] {
        app.frmMain().setEnabled(false);
        *mainHeld = true;
        s.show();
    };
}

}  // namespace ketrel
