#include "qt/page_printer.h"

#include <QFont>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>

namespace ketrel {

void PaintPage(QPainter& painter, const PrintPage& page, double dotsPerPoint) {
    painter.save();
    painter.scale(dotsPerPoint, dotsPerPoint);
    painter.setPen(Qt::black);
    for (const PageText& t : page.items) {
        if (t.text.empty()) continue;
        QFont font(QStringLiteral("DejaVu Sans"));
        // Sizes in points of the page, whatever the device's resolution.
        font.setPixelSize(int(t.size + 0.5));
        font.setBold(t.bold);
        painter.setFont(font);
        QString text = QString::fromStdString(t.text);
        text.remove(QLatin1Char('\r'));
        const double width = t.width > 0 ? t.width : 540;
        const QRectF box(t.x, t.y, width, 700 - t.y);
        const int flags =
            Qt::AlignTop | Qt::TextWordWrap | (t.center ? Qt::AlignHCenter : Qt::AlignLeft);
        painter.drawText(box, flags, text);
    }
    painter.restore();
}

bool WritePagePdf(const PrintPage& page, const QString& path) {
    QPdfWriter writer(path);
    writer.setTitle(QString::fromStdString(page.title));
    writer.setPageSize(QPageSize(QPageSize::Letter));
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    writer.setResolution(300);
    QPainter painter;
    if (!painter.begin(&writer)) return false;
    PaintPage(painter, page, writer.resolution() / 72.0);
    return painter.end();
}

bool QtPagePrinter::printPage(const PrintPage& page) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(QString::fromStdString(page.title));
    printer.setFullPage(true);
    QPrintDialog dialog(&printer);
    if (dialog.exec() != QDialog::Accepted) return false;
    QPainter painter;
    if (!painter.begin(&printer)) return false;
    PaintPage(painter, page, printer.resolution() / 72.0);
    return painter.end();
}

}  // namespace ketrel
