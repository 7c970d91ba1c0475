#include "report_pdf.h"

#include <QGuiApplication>

#include "qt/page_printer.h"

namespace ketrel::exporter {

bool WriteReportPdf(int& argc, char** argv, const PrintPage& page, const std::string& path) {
    // A tool without a window: it needs fonts, not a screen.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    return WritePagePdf(page, QString::fromStdString(path));
}

}  // namespace ketrel::exporter
