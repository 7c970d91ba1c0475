#pragma once
#include <QString>

#include "platform/printer.h"

class QPainter;
class QWidget;

namespace ketrel {

// Draws a page's texts; `dotsPerPoint` maps the page's points onto the device.
void PaintPage(QPainter& painter, const PrintPage& page, double dotsPerPoint);

// Writes the page as a one-page PDF file (Letter). False when the file can't be written.
bool WritePagePdf(const PrintPage& page, const QString& path);

// The desktop's printer: the print dialogue (which also offers a PDF file), then the page.
class QtPagePrinter : public PagePrinter {
  public:
    bool printPage(const PrintPage& page) override;
};

}  // namespace ketrel
