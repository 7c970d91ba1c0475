#include "qt/auto_detect_window.h"

#include <QFont>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "qt/binders.h"
#include "screens/frm_auto_detect.h"

namespace ketrel {

QWidget* MakeAutoDetectWindow(FrmAutoDetect& d) {
    auto* w = new QWidget;
    w->setObjectName("frmAutoDetect");
    w->setFixedWidth(420);
    auto* v = new QVBoxLayout(w);
    v->setContentsMargins(16, 16, 16, 12);

    auto* row = new QHBoxLayout;
    auto* picture = new QLabel;
    picture->setObjectName("Image1");
    BindPicture(picture, d.Image1, 36);
    row->addWidget(picture, 0, Qt::AlignVCenter);
    row->addSpacing(12);
    auto* texts = new QVBoxLayout;
    auto* status = new QLabel;
    status->setObjectName("Label1(0)");
    status->setWordWrap(true);
    QFont bold = status->font();
    bold.setPointSizeF(bold.pointSizeF() * 1.15);
    bold.setBold(true);
    status->setFont(bold);
    BindLabel(status, d.Label1[0]);
    texts->addWidget(status);
    auto* portRow = new QHBoxLayout;
    portRow->addWidget(new QLabel("Port:"));
    auto* port = new QLabel;
    port->setObjectName("ProgrammerStatus");
    BindLabel(port, d.ProgrammerStatus);
    portRow->addWidget(port, 1);
    texts->addLayout(portRow);
    row->addLayout(texts, 1);
    v->addLayout(row);

    auto* buffer = new QLineEdit;
    buffer->setObjectName("txtBuffer");
    buffer->setReadOnly(true);
    BindLineEdit(buffer, d.txtBuffer);
    v->addWidget(buffer);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    auto* connect = new QPushButton;
    connect->setObjectName("cmdConnectAD");
    connect->setDefault(true);
    BindButton(connect, d.cmdConnectAD);
    buttons->addWidget(connect);
    v->addSpacing(6);
    v->addLayout(buttons);
    return w;
}

}  // namespace ketrel
