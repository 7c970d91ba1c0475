#include "qt/mode6_window.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "qt/binders.h"
#include "screens/frm_mode6.h"

namespace ketrel {

namespace {

QLabel* panelLabel(StatusPanel& p, const char* name) {
    auto* l = new QLabel;
    l->setObjectName(name);
    l->setFrameShape(QFrame::StyledPanel);
    l->setFrameShadow(QFrame::Sunken);
    l->setMinimumHeight(22);
    BindPanel(l, p);
    return l;
}

}  // namespace

QWidget* MakeMode6Window(FrmMode6& f) {
    auto* w = new QWidget;
    w->setObjectName("frmMode6");
    auto* v = new QVBoxLayout(w);
    v->setContentsMargins(8, 8, 8, 4);

    auto* top = new QHBoxLayout;
    auto* grid = new QTableWidget;
    grid->setObjectName("MSFlexGrid1");
    BindGrid(grid, f.MSFlexGrid1);
    top->addWidget(grid, 1);
    auto* list = new QListWidget;
    list->setObjectName("List1");
    list->setFixedWidth(190);
    BindList(list, f.List1);
    top->addWidget(list);
    v->addLayout(top, 1);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    for (Field* b : {&f.cmdFordDef, &f.cmdCancelMode6}) {
        auto* button = new QPushButton;
        button->setObjectName(QString::fromStdString(b->name()));
        button->setMinimumWidth(150);
        BindButton(button, *b);
        buttons->addWidget(button);
    }
    v->addLayout(buttons);

    auto* status = new QHBoxLayout;
    status->setSpacing(2);
    status->addWidget(panelLabel(f.Panel1, "Panel1"), 1);
    status->addWidget(panelLabel(f.Panel2, "Panel2"), 1);
    v->addLayout(status);
    w->resize(1090, 560);
    return w;
}

}  // namespace ketrel
