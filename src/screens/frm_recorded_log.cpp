#include "screens/frm_recorded_log.h"

namespace ketrel {

FrmRecordedLog::FrmRecordedLog(EventLoop& loop) : Screen(loop, "frmRecordedLog", "RECORDED LOG") {
    Label1[0].setText("Search Method:");
    Label1[1].setText("Search Word:");
    Label1[2].setText("Total Record(s):");
    cmdSearch.setText("&SEARCH");
    cmdPlay.setText("&OPEN");
    cmdDelete.setText("&DELETE");
    cmdDeleteAll.setText("DELETE &ALL");
    cmdExportCsv.setText("Export CSV...");
    markDesign();
}

void FrmRecordedLog::gridMouseUp(int row, int col) {
    if (row < 1 || row >= gridLog.rows()) return;
    Row = row;
    Col = col;
    if (onGridMouseUp) onGridMouseUp();
}

void FrmRecordedLog::resetVariables() {
    Row = 1;
    Col = 0;
    TopRow = 1;
    HighlightedRow = 0;
}

}  // namespace ketrel
