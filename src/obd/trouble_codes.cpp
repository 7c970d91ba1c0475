#include "obd/trouble_codes.h"

#include "obd/monitor_status.h"

#include <array>

#include "codes/trouble_codes_library.h"
#include "state/app.h"

namespace ketrel {

namespace {

// A reply carries at most nine codes, one per byte pair.
constexpr int kCodePairs = 9;

// The rows of gridTroubleCode that hold stored codes, below the freeze-code row.
constexpr int kFirstStoredRow = 2, kLastStoredRow = 9;

// Columns of the two grids.
constexpr int kColCode = 1, kColType = 2, kColTroubleText = 3, kColPendingText = 2;

bool isFullCode(const std::string& code) {
    return !code.empty() && code.size() == 5;
}

bool isGenericCode(const std::string& code) {
    return code.rfind("P0", 0) == 0;
}

// Shows the code alert without blocking and names where the codes came from.
void showCodeAlert(App& app, const std::string& section) {
    // The log controller stays on top of everything; it makes way for the alert.
    if (app.Recording || app.PlayingLog) app.hideScreen("frmRecorder");
    FrmAlertMIL& alert = app.frmAlertMIL();
    alert.show();
    alert.lblCodeSection[0].setText(section);
}

// The freeze frame can be printed once a code reply came in, while the File menu is usable.
void enablePrintFF(App& app) {
    FrmMain& f = app.frmMain();
    if (!f.mnuFile.enabled()) return;
    f.cmdPrintFFData.setEnabled(true);
    f.mnuFilePrintFF.setEnabled(true);
}

// Makes the nine code texts of the reply into codes and adds the new ones to list. One flag
// serves the whole reply: once a code of the reply is found listed, no later code of it is
// added, even a new one.
void listNewCodes(App& app, std::array<std::string, 10>& codes, ListBox& list,
                  const std::string& section) {
    for (int n = 1; n <= kCodePairs; ++n)
        codes[std::size_t(n)] = CodeText(app, n);
    bool Seen = false;
    for (int n = 1; n <= kCodePairs; ++n) {
        const std::string& code = codes[std::size_t(n)];
        if (!isFullCode(code)) continue;
        for (const std::string& item : list.items()) {
            if (item == code) Seen = true;
        }
        if (!Seen) {
            list.addItem(code);
            if (app.AlertOnMIL) showCodeAlert(app, section);
        }
    }
}

// Writes the generic text of code into (row, col), for "P0" codes only; any other code leaves
// the cell as it is.
void describe(App& app, Grid& grid, int row, int col, const std::string& code) {
    if (!isGenericCode(code)) return;
    LookupGeneric(app, code);
    grid.setText(row, col, app.CodeDescription);
}

// Fills the listed codes into a grid from firstRow on, leaving the last row and the header
// free. Returns false when the list ran past the grid, which ends the decoder there.
bool fillCodeGrid(App& app, Grid& grid, const ListBox& list, int firstRow, int textCol,
                  const char* type) {
    for (int i = 1; i <= list.count(); ++i) {
        if (i > grid.rows() - 2) return false;
        int row = firstRow + i - 1;
        const std::string& code = list.item(i - 1);
        grid.setText(row, kColCode, code);
        if (type) grid.setText(row, kColType, type);
        describe(app, grid, row, textCol, code);
    }
    return true;
}

// One row of gridTroubleCode, kept across a rebuild of the grid.
struct SavedRow {
    int row;
    std::string code, type, text;
};

SavedRow saveRow(Grid& grid, int row) {
    return {row, grid.text(row, kColCode), grid.text(row, kColType),
            grid.text(row, kColTroubleText)};
}

// Puts a saved row back; a "P0" code gets its text from the library again.
void restoreRow(App& app, Grid& grid, const SavedRow& saved) {
    grid.setText(saved.row, kColCode, saved.code);
    grid.setText(saved.row, kColType, saved.type);
    grid.setText(saved.row, kColTroubleText, saved.text);
    describe(app, grid, saved.row, kColTroubleText, saved.code);
}

// Empties gridTroubleCode and the given list, keeping the rows from first to last.
void wipeTroubleGridKeeping(App& app, ListBox& list, int first, int last) {
    Grid& grid = app.frmMain().gridTroubleCode;
    std::vector<SavedRow> kept;
    for (int row = first; row <= last; ++row)
        kept.push_back(saveRow(grid, row));
    list.clear();
    grid.clear();
    FormatTroubleGrid(app);
    for (const SavedRow& saved : kept)
        restoreRow(app, grid, saved);
}

}  // namespace

std::string CodeLetter(const std::string& bits) {
    static constexpr std::array<std::pair<const char*, const char*>, 4> kPrefixes{
        {{"00", "P"}, {"01", "C"}, {"10", "B"}, {"11", "U"}}};
    std::string top = bits.substr(0, 2);
    for (const auto& [pattern, letter] : kPrefixes) {
        if (top == pattern) return letter;
    }
    return "";
}

std::string CodeText(const App& app, int n) {
    if (n < 1 || n > kCodePairs) return "";
    const std::string& bits = app.ByteBits[std::size_t(2 * n - 1)];
    if (bits.empty()) return "";
    return CodeLetter(bits) + app.ByteHex[std::size_t(2 * n - 1)] + app.ByteHex[std::size_t(2 * n)];
}

void FormatTroubleGrid(App& app) {
    Grid& grid = app.frmMain().gridTroubleCode;
    grid.setCols(4);
    grid.setColWidth(0, 0);
    grid.setColWidth(1, 1200);
    grid.setColWidth(2, 1200);
    grid.setColWidth(3, 13500);
    grid.setText(0, 1, "DTC");
    grid.setText(0, 2, "TYPE");
    grid.setText(0, 3, "DESCRIPTION");
}

void FormatPendingGrid(App& app) {
    Grid& grid = app.frmMain().gridPending;
    grid.setCols(3);
    grid.setColWidth(0, 0);
    grid.setColWidth(1, 1200);
    grid.setColWidth(2, 13500);
    grid.setText(0, 1, "DTC");
    grid.setText(0, 2, "DESCRIPTION");
}

void FormatCodeGrids(App& app) {
    FormatTroubleGrid(app);
    FormatPendingGrid(app);
}

void DecodeTroubleCodes(App& app) {
    FrmMain& f = app.frmMain();
    app.TroubleAnswered = true;
    listNewCodes(app, app.TroubleCodes, f.lstCodes, "In Trouble Code");
    // Stored codes start in row 2; row 1 belongs to the freeze-frame code.
    if (!fillCodeGrid(app, f.gridTroubleCode, f.lstCodes, kFirstStoredRow, kColTroubleText, "TC"))
        return;
    enablePrintFF(app);
}

void DecodePendingCodes(App& app) {
    FrmMain& f = app.frmMain();
    app.PendingAnswered = true;
    listNewCodes(app, app.PendingCodes, f.lstPendingCodes, "In Pending Code");
    if (!fillCodeGrid(app, f.gridPending, f.lstPendingCodes, 1, kColPendingText, nullptr)) return;
    enablePrintFF(app);
}

void DecodeFreezeCode(App& app) {
    FrmMain& f = app.frmMain();
    app.FFCodeAnswered = true;
    app.LastFreezeCode = CodeText(app, 1);
    const std::string& code = app.LastFreezeCode;
    if (isFullCode(code)) {
        f.lstFreezeCodes.clear();
        f.lstFreezeCodes.addItem(code);
        if (app.AlertOnMIL && !f.mnuViewRedScanner.checked()) showCodeAlert(app, "In Freeze Frame");
    }
    // Row 1 is the freeze-frame code's, whatever the reply held.
    f.gridTroubleCode.setText(1, kColCode, code);
    f.gridTroubleCode.setText(1, kColType, "FF");
    describe(app, f.gridTroubleCode, 1, kColTroubleText, code);
    // The freeze-frame values of this code are fetched next.
    app.RequestFFData = true;
    enablePrintFF(app);
}

void ApplyClearReply(App& app) {
    FrmMain& f = app.frmMain();
    if (app.Recording || app.PlayingLog) app.hideScreen("frmRecorder");
    if (app.ByteHex[1] != "44") return;
    // Acknowledged: the clear-codes failure message must not come, even for a late answer.
    f.ClearCodeTimer.stop();
    f.gridTroubleCode.clear();
    f.gridPending.clear();
    f.cmdPrintFFData.setEnabled(false);
    f.mnuFilePrintFF.setEnabled(false);
    FormatCodeGrids(app);
    ClearFreezeData(app);  // the sixteen freeze-frame values, in the order of the clear
    f.lstCodes.clear();
    f.lstFreezeCodes.clear();
    f.lstPendingCodes.clear();
    f.imgMIL.setPicture(kImgNotConnected);
}

void RequestTimerElapsed(App& app) {
    FrmMain& f = app.frmMain();
    if (!app.PendingAnswered) {
        f.lstPendingCodes.clear();
        f.gridPending.clear();
        FormatPendingGrid(app);
    }
    // No freeze code came: drop it, keep the stored codes.
    if (!app.FFCodeAnswered)
        wipeTroubleGridKeeping(app, f.lstFreezeCodes, kFirstStoredRow, kLastStoredRow);
    // No stored codes came: drop them, keep the freeze code.
    if (!app.TroubleAnswered) wipeTroubleGridKeeping(app, f.lstCodes, 1, 1);
}

}  // namespace ketrel
