#pragma once
#include <istream>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "core/headless_replay.h"

namespace ketrel {

class App;
class Field;

// A CSV cell: quoted when it holds a comma, a quote, a line end or edge spaces.
void AppendCsvCell(std::string& row, const std::string& text);

// A value column of the CSV: its name and the field it reads.
using CsvColumn = std::pair<std::string, const Field*>;
// Every value the decoders write: the data tab in grid order, the OBD design, the freeze
// frame, then the extended data screen (named with its screen, as lblTps exists on both).
std::vector<CsvColumn> ValueColumns(App& app);
// The CSV header: "frame" and the column of every value field.
void WriteCsvHeader(const std::vector<CsvColumn>& columns, std::ostream& out);
// One CSV row: the frame's text, then the text of every column now. `row` is scratch space
// kept by the caller so that a long run does not allocate per frame.
void WriteCsvRow(const std::string& frame, const std::vector<CsvColumn>& columns, std::string& row,
                 std::ostream& out);
// Every field, list box and grid cell of the main and extended screens as name<TAB>text,
// sorted by name: the state a log leaves behind.
void WriteFinalFields(App& app, std::ostream& out);

// How a log is turned into CSV.
struct CsvReplayOptions {
    std::string type = "DORVANE";  // the log's interface type word
    ReplayUnits units;
    bool final = false;         // the fields after the last frame instead of CSV rows
    std::string messagePrefix;  // put before every line written to the error stream
};

// Exit statuses of a replay to CSV.
inline constexpr int kCsvOk = 0;           // at least one frame read and everything written
inline constexpr int kCsvFailed = 1;       // no frame, a read error or a write error
inline constexpr int kCsvUnavailable = 2;  // a log type this build can't replay

// Decodes every frame of the log in `in` on a replay of its own and writes CSV (or, with
// final, the fields after the last frame) to `out`; skipped lines, message boxes and errors
// go to `err`, with `inputName` naming the input. Returns one of the statuses above.
int ReplayLogToCsv(const CsvReplayOptions& options, std::istream& in, const std::string& inputName,
                   std::ostream& out, std::ostream& err);

}  // namespace ketrel
