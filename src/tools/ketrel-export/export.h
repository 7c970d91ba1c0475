#pragma once
#include <functional>
#include <istream>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "core/csv_export.h"
#include "platform/printer.h"

namespace ketrel::exporter {

// Exit statuses of the program, as --help lists them.
inline constexpr int kExitOk = 0;      // done as asked
inline constexpr int kExitFailed = 1;  // nothing to export, or the live link failed or was lost
inline constexpr int kExitUsage = 2;   // bad command line, or something this build can't do

// What the command line asks for.
struct ExportOptions {
    std::string type = "DORVANE";
    std::string temp = "F", speed = "MPH", pressure = "PSI";
    bool final = false;
    bool help = false;
    std::string input;  // a file, or empty / "-" for the standard input
    bool unitsGiven = false;
    // A live session instead of a log (--connect).
    bool connect = false;
    std::string hardware;  // the converter's full name; empty: the one in the settings
    std::string port;      // a port number or a device path; empty: the one in the settings
    double seconds = 0;    // how long to scan; 0: until interrupted
    // A catalogued log instead of a file (--saved NAME), or the catalogue itself (--list).
    std::string saved;
    bool list = false;
    std::string record;  // records the session into Log/<record>.log; empty: no recording
    // The freeze-frame page after the log instead of CSV (--report FILE.pdf).
    std::string report;
    // The vehicle fields for the page, from a saved log's catalogue row: year, make, model,
    // VIN, plate, mileage. Empty: nothing chosen.
    std::vector<std::string> vehicle;
    // Writes the page to a file; set by a build with Qt. False when it could not be written.
    std::function<bool(const ketrel::PrintPage&, const std::string&)> writeReport;
};

// Reads the arguments (without the program name). Returns an error text, empty when all is
// well.
std::string ParseExportArgs(const std::vector<std::string>& args, ExportOptions& options);

// The usage text of --help.
std::string ExportUsage();

// Decodes every frame of the log in `in` and writes CSV (or, with final, the fields after the
// last frame) to `out`; warnings and messages go to `err`. `inputName` names the input in
// messages. Returns the exit status: 0 when at least one frame was read.
int RunExport(const ExportOptions& options, std::istream& in, const std::string& inputName,
              std::ostream& out, std::ostream& err);

// --report: decodes every frame of the log as RunExport does, then writes the freeze-frame
// page with the main screen's fields as they stand after the last frame. Returns the exit
// status: 0 when at least one frame was read and the page was written.
int RunReport(const ExportOptions& options, std::istream& in, const std::string& inputName,
              std::ostream& err);

// The CSV writing is shared with the desktop program's catalogue of logs.
using ketrel::AppendCsvCell;
using ketrel::ValueColumns;
using ketrel::WriteCsvHeader;
using ketrel::WriteCsvRow;
using Column = ketrel::CsvColumn;

}  // namespace ketrel::exporter
