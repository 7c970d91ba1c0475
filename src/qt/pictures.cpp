#include "qt/pictures.h"

#include <QPainter>
#include <QRadialGradient>
#include <map>

namespace ketrel {

namespace {

QPixmap lamp(QColor color, int size) {
    QPixmap pm(size, size);
    pm.fill(Qt::transparent);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    QRectF r(1, 1, size - 2, size - 2);
    QRadialGradient g(r.center() - QPointF(size / 6.0, size / 6.0), size / 1.6);
    g.setColorAt(0, color.lighter(160));
    g.setColorAt(1, color);
    p.setBrush(g);
    p.setPen(QPen(color.darker(150), 1));
    p.drawEllipse(r);
    return pm;
}

// The code alert's picture: an amber warning lamp with an exclamation mark.
QPixmap alertLamp(int size) {
    QPixmap pm = lamp(QColor(240, 170, 20), size);
    QPainter p(&pm);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(60, 40, 0));
    const double w = size / 9.0;
    p.drawRoundedRect(QRectF(size / 2.0 - w / 2, size * 0.22, w, size * 0.38), w / 2, w / 2);
    p.drawEllipse(QPointF(size / 2.0, size * 0.73), w * 0.65, w * 0.65);
    return pm;
}

}  // namespace

QPixmap PictureFor(const std::string& name, int size) {
    if (name == "imgAlertMIL") return alertLamp(size);
    static const std::map<std::string, QColor> colors{
        {"imgGreen", QColor(40, 170, 60)},          {"imgRed", QColor(210, 40, 40)},
        {"imgYellow", QColor(230, 190, 30)},        {"imgConnected", QColor(40, 170, 60)},
        {"imgNotConnected", QColor(150, 150, 150)}, {"imgLinkOn", QColor(40, 170, 60)},
        {"imgLinkOff", QColor(150, 150, 150)},
    };
    auto it = colors.find(name);
    if (it == colors.end()) return {};
    return lamp(it->second, size);
}

}  // namespace ketrel
