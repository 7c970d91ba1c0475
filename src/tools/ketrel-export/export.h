#pragma once
#include <istream>
#include <ostream>
#include <string>
#include <vector>

namespace ketrel::exporter {

// What the command line asks for.
struct ExportOptions {
    std::string type = "DORVANE";
    std::string temp = "F", speed = "MPH", pressure = "PSI";
    bool final = false;
    bool help = false;
    std::string input;  // a file, or empty / "-" for the standard input
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

}  // namespace ketrel::exporter
