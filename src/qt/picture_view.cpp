#include "qt/picture_view.h"

#include <QPainter>
#include <QTimer>

#include "qt/binders.h"

namespace ketrel {

namespace {

// The shortest time between two repaints of a picture, in ms.
constexpr int kFrameMs = 20;

QColor rgb(std::int64_t c) {
    return QColor(int((c >> 16) & 0xFF), int((c >> 8) & 0xFF), int(c & 0xFF));
}

}  // namespace

PictureView::PictureView(PictureBox& picture, std::vector<LineShape*> overlays, QWidget* parent)
    : QWidget(parent), picture_(picture), overlays_(std::move(overlays)) {
    setObjectName(QString::fromStdString(picture.fullName()));
    setAttribute(Qt::WA_OpaquePaintEvent);
    Follow(this, picture_, [this] {
        setFixedSize(picture_.width(), picture_.height());
        setVisible(picture_.visible());
        scheduleRepaint();
    });
    for (LineShape* l : overlays_)
        Follow(this, *l, [this] { scheduleRepaint(); });
}

void PictureView::scheduleRepaint() {
    if (repaintPending_) return;
    repaintPending_ = true;
    QTimer::singleShot(kFrameMs, this, [this] {
        repaintPending_ = false;
        update();
    });
}

void PictureView::paintEvent(QPaintEvent*) {
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing);
    p.fillRect(rect(), rgb(picture_.backColor()));
    p.setClipRect(rect());
    for (const PictureOp& op : picture_.ops()) {
        switch (op.kind) {
            case PictureOp::Kind::Line:
                p.setPen(QPen(rgb(op.color), op.width, Qt::SolidLine, Qt::RoundCap));
                p.drawLine(QPointF(op.x1 + 0.5, op.y1 + 0.5), QPointF(op.x2 + 0.5, op.y2 + 0.5));
                break;
            case PictureOp::Kind::FillRect:
                p.fillRect(QRectF(op.x1, op.y1, op.x2, op.y2), rgb(op.color));
                break;
            case PictureOp::Kind::Text: {
                QFont f = font();
                f.setPixelSize(op.width * 4 / 3);
                f.setBold(true);
                p.setFont(f);
                p.setPen(rgb(op.color));
                p.drawText(QPointF(op.x1, op.y1 + f.pixelSize()), QString::fromStdString(op.text));
                break;
            }
        }
    }
    for (LineShape* l : overlays_) {
        if (!l->visible()) continue;
        p.setPen(QPen(rgb(l->color()), l->width(), Qt::SolidLine, Qt::RoundCap));
        p.drawLine(QPointF(l->x1(), l->y1()), QPointF(l->x2(), l->y2()));
        p.setBrush(rgb(l->color()));
        p.drawEllipse(QPointF(l->x1(), l->y1()), l->width() * 2.0, l->width() * 2.0);
    }
}

ShapeView::ShapeView(Shape& shape, int heightPixels, QWidget* parent)
    : QWidget(parent), shape_(shape) {
    setObjectName(QString::fromStdString(shape.fullName()));
    setFixedHeight(heightPixels);
    Follow(this, shape_, [this] { update(); });
}

void ShapeView::paintEvent(QPaintEvent*) {
    if (!shape_.visible()) return;
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF bar(0.5, 0.5, std::min(TwipsToPixels(shape_.widthTwips()), width() - 1),
                     height() - 1);
    const QColor c = rgb(shape_.fillColor());
    const Qt::BrushStyle style =
        shape_.fillStyle() == FillStyle::Solid ? Qt::SolidPattern : Qt::BDiagPattern;
    p.setPen(QPen(c, 1));
    p.setBrush(QBrush(c, style));
    p.drawRect(bar);
}

}  // namespace ketrel
