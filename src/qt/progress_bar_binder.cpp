#include "qt/progress_bar_binder.h"

#include <QColor>
#include <QProgressBar>

#include "qt/binders.h"
#include "screens/progress_bar.h"

namespace ketrel {

namespace {

QString colourName(std::int64_t c, const char* fallback) {
    if (c == kDefaultColor) return fallback;
    return QColor(int((c >> 16) & 0xFF), int((c >> 8) & 0xFF), int(c & 0xFF)).name();
}

}  // namespace

void BindProgressBar(QProgressBar* w, ProgressBar& p) {
    w->setTextVisible(false);
    w->setOrientation(Qt::Horizontal);
    Follow(w, p, [w, &p] {
        w->setEnabled(p.enabled());
        if (!p.visible() || w->parentWidget()) w->setVisible(p.visible());
        w->setRange(p.min(), p.max());
        w->setValue(p.value());
        const QString style = QString(
                                  "QProgressBar { background-color: %1; border: 1px solid "
                                  "#404040; border-radius: 3px; }"
                                  "QProgressBar::chunk { background-color: %2; }")
                                  .arg(colourName(p.backColor(), "palette(base)"),
                                       colourName(p.barColor(), "palette(highlight)"));
        if (w->styleSheet() != style) w->setStyleSheet(style);
    });
}

}  // namespace ketrel
