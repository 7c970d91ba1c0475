#include "recording/log_save.h"

#include <cerrno>
#include <cmath>
#include <filesystem>

#include "recording/log_catalogue.h"
#include "recording/log_file.h"
#include "state/app.h"

namespace ketrel {

namespace {

std::string chosenOrNA(const std::string& text) {
    return text == "-SELECT-" || text.empty() ? "N/A" : text;
}

std::string typedOrNA(const std::string& text) {
    return text.empty() ? "N/A" : text;
}

// Renames without replacing: a log of that name is an error, as the system reports it.
std::string renameWorkingLog(App& app, const std::string& name) {
    if (!IsSafeLogName(name)) return "Invalid file name: \"" + name + "\"";
    const std::filesystem::path from = LogFilePath(app.appPath(), kWorkingLogName);
    const std::filesystem::path to = LogFilePath(app.appPath(), name);
    std::error_code ec;
    if (std::filesystem::exists(to, ec) || name == kWorkingLogName) return SystemErrorText(EEXIST);
    std::filesystem::rename(from, to, ec);
    return ec ? ec.message() : std::string();
}

}  // namespace

LogSaveResult SaveRecordedLog(App& app, const std::string& name) {
    LogSaveResult result;
    result.fileError = renameWorkingLog(app, name);
    if (!result.saved()) return result;
    FrmMain& m = app.frmMain();
    LogRecord row;
    row.Name = name;
    row.DateRecorded = app.RecordDate;
    row.Year = chosenOrNA(m.cmbYear.text());
    row.Make = chosenOrNA(m.cmbMake.text());
    row.Model = chosenOrNA(m.cmbModel.text());
    row.Vin = typedOrNA(m.txtVin.text());
    row.Plate = typedOrNA(m.txtPlate.text());
    row.Frame = std::lround(app.RecordCount);
    row.InterfaceType = app.LogType;
    row.Mileage = typedOrNA(m.txtMileage.text());
    app.LogFrames = row.Frame;
    LogCatalogue catalogue;
    if (!catalogue.open(app.appPath()) || !catalogue.add(row))
        result.catalogueError = catalogue.error();
    return result;
}

}  // namespace ketrel
