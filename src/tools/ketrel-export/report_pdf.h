#pragma once
#include <string>

#include "platform/printer.h"

namespace ketrel::exporter {

// Writes the page as a PDF file with Qt, under a GUI application made for it (offscreen when
// no platform is asked for). False when the file could not be written.
bool WriteReportPdf(int& argc, char** argv, const PrintPage& page, const std::string& path);

}  // namespace ketrel::exporter
