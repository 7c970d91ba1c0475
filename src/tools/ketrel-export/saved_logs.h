#pragma once
#include <filesystem>
#include <ostream>

#include "export.h"

namespace ketrel::exporter {

// --saved NAME: exports Log/NAME.log of the program's folder as RunExport does, with the
// interface type of the log's catalogue row. A name not in the catalogue, a name that reaches
// outside Log/ or a catalogue that can't be read is told on `err` and gives status 1.
int RunSaved(const ExportOptions& options, const std::filesystem::path& appPath, std::ostream& out,
             std::ostream& err);

// --list: one line per catalogued log, tab-separated: name, type, date, frames, year, make,
// model, VIN, plate, mileage.
int RunList(const std::filesystem::path& appPath, std::ostream& out, std::ostream& err);

// The folder of the running program, which the program's folder is chosen from.
std::filesystem::path ProgramDir();

}  // namespace ketrel::exporter
