#include "qt/alert_window.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "qt/binders.h"
#include "screens/frm_alert_mil.h"

namespace ketrel {

QWidget* MakeAlertWindow(FrmAlertMIL& alert) {
    auto* w = new QWidget;
    w->setObjectName("frmAlertMIL");
    auto* v = new QVBoxLayout(w);
    v->setContentsMargins(18, 18, 18, 14);

    auto* row = new QHBoxLayout;
    auto* picture = new QLabel;
    picture->setObjectName("imgAlert");
    BindPicture(picture, alert.imgAlert, 80);
    row->addWidget(picture, 0, Qt::AlignTop);
    row->addSpacing(14);

    auto* texts = new QVBoxLayout;
    auto* message = new QLabel;
    message->setObjectName("Label1");
    message->setWordWrap(true);
    QFont big = message->font();
    big.setPointSizeF(big.pointSizeF() * 1.35);
    big.setBold(true);
    message->setFont(big);
    BindLabel(message, alert.Label1);
    texts->addWidget(message);
    auto* section = new QLabel;
    section->setObjectName("lblCodeSection(0)");
    QFont sectionFont = section->font();
    sectionFont.setPointSizeF(sectionFont.pointSizeF() * 1.15);
    section->setFont(sectionFont);
    BindLabel(section, alert.lblCodeSection[0]);
    texts->addWidget(section);
    row->addLayout(texts, 1);
    v->addStretch(1);
    v->addLayout(row);
    v->addStretch(1);

    auto* ok = new QPushButton("OK");
    ok->setObjectName("cmdAlertOk");
    ok->setDefault(true);
    QObject::connect(ok, &QPushButton::clicked, w, [&alert] { alert.requestClose(); });
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    v->addLayout(buttons);
    return w;
}

}  // namespace ketrel
