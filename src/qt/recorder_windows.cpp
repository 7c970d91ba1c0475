#include "qt/recorder_windows.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QVBoxLayout>

#include "qt/binders.h"
#include "screens/frm_input_record_name.h"
#include "screens/frm_recorder.h"

namespace ketrel {

namespace {

QPushButton* button(Field& f, QWidget* parent) {
    auto* b = new QPushButton(parent);
    b->setObjectName(QString::fromStdString(f.name()));
    BindButton(b, f);
    return b;
}

QLabel* label(Field& f, const QString& objectName) {
    auto* l = new QLabel;
    l->setObjectName(objectName);
    BindLabel(l, f);
    return l;
}

}  // namespace

QWidget* MakeRecorderWindow(FrmRecorder& r) {
    auto* w = new QWidget(nullptr, Qt::Tool);
    w->setObjectName("frmRecorder");
    auto* v = new QVBoxLayout(w);
    v->setContentsMargins(8, 8, 8, 2);
    v->setSpacing(6);

    auto* buttons = new QHBoxLayout;
    for (Field* f : {&r.cmdRecord, &r.cmdPlay, &r.cmdStop})
        buttons->addWidget(button(*f, w));
    v->addLayout(buttons);

    auto* delay = new QHBoxLayout;
    delay->addWidget(label(r.Label1[54], "Label1(54)"));
    auto* slider = new QSlider(Qt::Horizontal);
    slider->setObjectName("sldSpeed");
    slider->setSingleStep(1);
    slider->setPageStep(5);
    BindSlider(slider, r.sldSpeed);
    delay->addWidget(slider, 1);
    QLabel* value = label(r.lblSpeed, "lblSpeed");
    value->setMinimumWidth(value->fontMetrics().horizontalAdvance("5000"));
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    delay->addWidget(value);
    v->addLayout(delay);

    v->addStretch(1);
    auto* bar = new QHBoxLayout;
    bar->setSpacing(2);
    for (int n = 1; n <= 3; ++n) {
        auto* panel = new QLabel;
        panel->setObjectName(QString("StatusBar1.Panels(%1)").arg(n));
        panel->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        panel->setContentsMargins(3, 1, 3, 1);
        panel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        BindPanel(panel, r.panel(n));
        bar->addWidget(panel, n == 1 ? 5 : n == 2 ? 3 : 4);
    }
    v->addLayout(bar);
    return w;
}

QWidget* MakeSaveNameWindow(FrmInputRecordName& d) {
    auto* w = new QWidget(nullptr, Qt::Dialog);
    w->setObjectName("frmInputRecordName");
    w->setMinimumWidth(340);
    auto* v = new QVBoxLayout(w);
    v->setContentsMargins(14, 14, 14, 12);
    v->addWidget(label(d.lblSaveName, "lblSaveName"));
    auto* name = new QLineEdit;
    name->setObjectName("txtSaveName");
    BindLineEdit(name, d.txtSaveName);
    v->addWidget(name);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    QPushButton* save = button(d.cmdSave, w);
    save->setDefault(true);
    buttons->addWidget(save);
    buttons->addWidget(button(d.cmdCancel, w));
    v->addSpacing(4);
    v->addLayout(buttons);
    QObject::connect(name, &QLineEdit::returnPressed, save, &QPushButton::click);
    return w;
}

}  // namespace ketrel
