#pragma once
#include <istream>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace ketrel {
class App;
class Field;
}  // namespace ketrel

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
    std::string record;    // records the session into Log/<record>.log; empty: no recording
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

// A CSV cell: quoted when it holds a comma, a quote, a line end or edge spaces.
void AppendCsvCell(std::string& row, const std::string& text);

// A value column of the CSV: its name and the field it reads.
using Column = std::pair<std::string, const Field*>;
// Every value the decoders write: the data tab in grid order, the OBD design, the freeze
// frame, then the extended data screen (named with its screen, as lblTps exists on both).
std::vector<Column> ValueColumns(App& app);
// The CSV header: "frame" and the column of every value field.
void WriteCsvHeader(const std::vector<Column>& columns, std::ostream& out);
// One CSV row: the frame's text, then the text of every column now. `row` is scratch space
// kept by the caller so that a long run does not allocate per frame.
void WriteCsvRow(const std::string& frame, const std::vector<Column>& columns, std::string& row,
                 std::ostream& out);

}  // namespace ketrel::exporter
