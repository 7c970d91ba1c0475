#pragma once

namespace ketrel {

class App;

// "Export CSV..." of the log catalogue: replays the highlighted log without a window, on a
// replay of its own so the running session is left alone, and writes the values of every
// frame into a CSV file the user names, with the columns of ketrel-export.
void ExportHighlightedLogCsv(App& app);

// Gives the catalogue's cmdExportCsv its handler; nothing when the program has no catalogue.
void InstallLogCsvExport(App& app);

}  // namespace ketrel
