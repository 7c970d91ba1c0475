#pragma once
#include <functional>

#include "screens/screen.h"

namespace ketrel {

// The catalogue of saved logs: lists the rows of the log table, searches them, deletes logs
// and opens one for replay in the log controller.
class FrmRecordedLog : public Screen {
  public:
    explicit FrmRecordedLog(EventLoop& loop);

    // The table in full below a header row: Name, Date Recorded, Year, Make, Model, Vin, Plate,
    // Frame, Interface Type, Mileage.
    Grid gridLog{this, "gridLog", 2, 10};
    ComboBox cmbSearchMethod{this, "cmbSearchMethod"};
    Field txtSearchWord{this, "txtSearchWord"};
    Field cmdSearch{this, "cmdSearch"}, cmdPlay{this, "cmdPlay"}, cmdDelete{this, "cmdDelete"},
        cmdDeleteAll{this, "cmdDeleteAll"};
    // Writes the highlighted log's values into a CSV file.
    Field cmdExportCsv{this, "cmdExportCsv"};
    Field lbltotalRecord{this, "lbltotalRecord"};
    // Captions: 0 "Search Method:", 1 "Search Word:", 2 "Total Record(s):".
    ControlArray<Field> Label1{this, "Label1"};
    MenuItem mnuFile{this, "mnuFile", "&File"};
    MenuItem mnuFileExit{this, "mnuFileExit", "E&xit", &mnuFile};

    // The grid's current cell and the first row scrolled into view (row 0 is the header).
    // Views read them when the grid changes and report a click with gridMouseUp.
    int Row = 1, Col = 0, TopRow = 1;
    // The row highlighted last, 0 when none.
    int HighlightedRow = 0;
    // A mouse button released over the grid at cell (row, col).
    void gridMouseUp(int row, int col);
    std::function<void()> onGridMouseUp;

  protected:
    void resetVariables() override;
};

}  // namespace ketrel
