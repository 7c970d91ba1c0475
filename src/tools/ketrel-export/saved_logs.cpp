#include "saved_logs.h"

#include <fstream>
#include <vector>

#include "recording/log_catalogue.h"
#include "recording/log_file.h"

namespace ketrel::exporter {

namespace {

// Tabs and line ends inside a value would break the line apart; they become spaces.
std::string OneLine(std::string text) {
    for (char& c : text)
        if (c == '\t' || c == '\n' || c == '\r') c = ' ';
    return text;
}

bool OpenCatalogue(LogCatalogue& db, const std::filesystem::path& appPath, std::ostream& err) {
    if (db.open(appPath)) return true;
    err << "ketrel-export: the catalogue " << (appPath / "System" / "LogRecords.db").string()
        << " can't be read: " << db.error() << '\n';
    return false;
}

}  // namespace

int RunSaved(const ExportOptions& options, const std::filesystem::path& appPath, std::ostream& out,
             std::ostream& err) {
    LogCatalogue db;
    if (!OpenCatalogue(db, appPath, err)) return kExitFailed;
    std::vector<LogRecord> rows;
    if (!db.rows(rows)) {
        err << "ketrel-export: the catalogue can't be read: " << db.error() << '\n';
        return kExitFailed;
    }
    // Names are not unique; the first row with the name is the log, as the catalogue has it.
    const LogRecord* record = nullptr;
    for (const LogRecord& r : rows) {
        if (r.Name == options.saved) {
            record = &r;
            break;
        }
    }
    if (!record) {
        err << "ketrel-export: no saved log is named \"" << options.saved << "\" (see --list)\n";
        return kExitFailed;
    }
    auto path = SafeLogFilePath(appPath, record->Name);
    if (!path) {
        err << "ketrel-export: the saved log name \"" << record->Name
            << "\" is not a file name of the Log folder\n";
        return kExitFailed;
    }
    std::ifstream file(*path, std::ios::binary);
    if (!file) {
        err << "ketrel-export: cannot open \"" << path->string() << "\"\n";
        return kExitFailed;
    }
    ExportOptions o = options;
    o.type = record->InterfaceType;
    if (!o.report.empty()) {
        o.vehicle = {record->Year, record->Make,  record->Model,
                     record->Vin,  record->Plate, record->Mileage};
        return RunReport(o, file, path->filename().string(), err);
    }
    return RunExport(o, file, path->filename().string(), out, err);
}

int RunList(const std::filesystem::path& appPath, std::ostream& out, std::ostream& err) {
    LogCatalogue db;
    if (!OpenCatalogue(db, appPath, err)) return kExitFailed;
    std::vector<LogRecord> rows;
    if (!db.rows(rows)) {
        err << "ketrel-export: the catalogue can't be read: " << db.error() << '\n';
        return kExitFailed;
    }
    for (const LogRecord& r : rows) {
        const std::string cells[] = {
            r.Name,  r.InterfaceType, r.DateRecorded, std::to_string(r.Frame),
            r.Year,  r.Make,          r.Model,        r.Vin,
            r.Plate, r.Mileage};
        std::string line = OneLine(cells[0]);
        for (std::size_t i = 1; i < std::size(cells); ++i)
            line += '\t' + OneLine(cells[i]);
        out << line << '\n';
    }
    out.flush();
    return out ? kExitOk : kExitFailed;
}

std::filesystem::path ProgramDir() {
    std::error_code ec;
    std::filesystem::path exe = std::filesystem::read_symlink("/proc/self/exe", ec);
    return ec ? std::filesystem::current_path(ec) : exe.parent_path();
}

}  // namespace ketrel::exporter
