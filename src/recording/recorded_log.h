#pragma once
#include <string>

namespace ketrel {

class App;
class FrmRecordedLog;

// The catalogue screen of the application, or nullptr when the program has none.
FrmRecordedLog* RecordedLogScreen(App& app);

// Installs the handlers of frmRecordedLog (opening over the log table, each activation, the
// grid's highlight, search, delete, delete all, open for replay, Exit) and makes the main
// screen's mnuFileOpen open it; does nothing when the screen is absent.
void InstallRecordedLog(App& app);

// Highlights a row of gridLog: the row highlighted before turns grey, this one yellow, and
// the current cell moves to its first column.
void HighlightLogRow(App& app, int row);

// Reads the log table into gridLog below its header row; a table that can't be read shows
// its error under "Error" and leaves the grid empty. Returns the number of rows.
int FillLogGrid(App& app);

// The highlighted log's file, Log/<name>.log: its name must stay inside Log/ and the file must
// be there. On failure the reason appears under "Error" and false is returned.
bool HighlightedLogFile(App& app, std::string& name, std::string& path);

}  // namespace ketrel
