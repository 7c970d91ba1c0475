#include "core/log_csv_export.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "core/csv_export.h"
#include "recording/recorded_log.h"
#include "screens/frm_recorded_log.h"
#include "state/app.h"

namespace ketrel {

namespace {

constexpr int kTypeCol = 8;

}  // namespace

void ExportHighlightedLogCsv(App& app) {
    FrmRecordedLog* s = RecordedLogScreen(app);
    if (!s) return;
    std::string name, path;
    if (!HighlightedLogFile(app, name, path)) return;
    const std::string target =
        app.dialogs().askSaveFile({"Export CSV", name + ".csv", "CSV files (*.csv)"});
    if (target.empty()) return;
    std::ifstream in(path, std::ios::binary);
    std::ofstream out(target, std::ios::binary | std::ios::trunc);
    if (!in || !out) {
        app.dialogs().message((in ? target : path) + ": " + std::strerror(errno), "Error",
                              MsgIcon::Exclamation);
        return;
    }
    CsvReplayOptions options;
    options.type = s->gridLog.text(s->Row, kTypeCol);
    options.units = {app.Temp.empty() ? "F" : app.Temp, app.Speed.empty() ? "MPH" : app.Speed,
                     app.Pressure.empty() ? "PSI" : app.Pressure};
    std::ostringstream err;
    if (ReplayLogToCsv(options, in, name + ".log", out, err) != kCsvOk) {
        out.close();
        std::error_code ec;
        std::filesystem::remove(target, ec);
        app.dialogs().message(err.str(), "Error", MsgIcon::Exclamation);
        return;
    }
    app.dialogs().message("The values of " + name + ".log were written to " + target + ".",
                          "Export CSV", MsgIcon::Information);
}

void InstallLogCsvExport(App& app) {
    if (FrmRecordedLog* s = RecordedLogScreen(app))
        s->cmdExportCsv.onClick = [&app] { ExportHighlightedLogCsv(app); };
}

}  // namespace ketrel
