#include "qt/graph_windows.h"

#include <QCursor>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include "qt/binders.h"
#include "qt/picture_view.h"
#include "screens/frm_guage.h"
#include "screens/frm_mult_guage.h"
#include "screens/frm_scope.h"

namespace ketrel {

namespace {

constexpr const char* kPanelStyle = "background-color: #101418; color: #e8e8e8;";

QLabel* label(Field& f, int pixelSize = 0, Qt::Alignment align = Qt::AlignLeft | Qt::AlignVCenter) {
    auto* l = new QLabel;
    l->setObjectName(QString::fromStdString(f.fullName()));
    l->setAlignment(align);
    if (pixelSize > 0) {
        QFont font = l->font();
        font.setPixelSize(pixelSize);
        font.setBold(true);
        l->setFont(font);
    }
    BindLabel(l, f);
    return l;
}

// Fills a menu with an entry's children, each bound to its item.
void fillMenu(QMenu* menu, MenuItem& item) {
    for (MenuItem* child : item.children()) {
        auto* action = new QAction(menu);
        action->setObjectName(QString::fromStdString(child->name()));
        BindMenu(action, *child);
        menu->addAction(action);
    }
}

QMenuBar* menuBar(std::initializer_list<MenuItem*> tops) {
    auto* bar = new QMenuBar;
    for (MenuItem* top : tops) {
        auto* menu = new QMenu(QString::fromStdString(top->caption()), bar);
        fillMenu(menu, *top);
        bar->addMenu(menu);
    }
    return bar;
}

}  // namespace

QWidget* MakeScopeWindow(FrmScope& s) {
    auto* w = new QWidget;
    w->setObjectName("frmScope");
    auto* v = new QVBoxLayout(w);
    v->setMenuBar(menuBar({&s.mnuFile}));

    auto* top = new QHBoxLayout;
    top->addWidget(label(s.lblScopePID, 18), 1);
    top->addWidget(MakeButton(s.cmdPIDSAvailable));
    v->addLayout(top);

    auto* panel = new QWidget;
    panel->setStyleSheet(kPanelStyle);
    auto* row = new QHBoxLayout(panel);
    auto* scale = new QVBoxLayout;
    for (Field* f : {&s.lbl5, &s.lbl4, &s.lbl3, &s.lbl2, &s.lbl1, &s.lbl0}) {
        scale->addWidget(label(*f, 0, Qt::AlignRight | Qt::AlignVCenter));
        if (f != &s.lbl0) scale->addStretch();
    }
    row->addLayout(scale);
    row->addWidget(new PictureView(s.Signal, {}));
    auto* values = new QVBoxLayout;
    for (auto [caption, value] :
         {std::pair{&s.Label1[0], &s.lblValue}, std::pair{&s.Label1[1], &s.lblMax},
          std::pair{&s.Label1[2], &s.lblMin}}) {
        values->addWidget(label(*caption));
        values->addWidget(label(*value, 20));
        values->addSpacing(8);
    }
    values->addStretch();
    values->addWidget(label(s.lblUnits, 14));
    row->addLayout(values);
    v->addWidget(panel);

    auto* speeds = new QHBoxLayout;
    speeds->addStretch();
    speeds->addWidget(MakeButton(s.cmdDecrease));
    speeds->addWidget(label(s.lblSpeed, 16, Qt::AlignCenter));
    speeds->addWidget(MakeButton(s.cmdIncrease));
    speeds->addStretch();
    v->addLayout(speeds);

    // The pop-up of PIDs opens where the pointer is.
    QPointer<QWidget> alive(w);
    s.popupMenu = [alive](MenuItem& item) {
        if (!alive) return;
        QMenu menu(alive);
        fillMenu(&menu, item);
        menu.exec(QCursor::pos());
    };
    QObject::connect(w, &QObject::destroyed, [&s] { s.popupMenu = nullptr; });
    return w;
}

QWidget* MakeGuageWindow(FrmGuage& g) {
    auto* w = new QWidget;
    w->setObjectName("frmGuage");
    w->setStyleSheet(kPanelStyle);
    auto* v = new QVBoxLayout(w);
    v->setMenuBar(menuBar({&g.mnuFile, &g.mnuView}));
    v->addWidget(new PictureView(g.Dial, {&g.Line4}), 0, Qt::AlignHCenter);
    v->addWidget(label(g.lblRPM[27], 40, Qt::AlignCenter));
    auto* bars = new QHBoxLayout;
    bars->setSpacing(0);
    for (Shape* bar : {&g.BarLow, &g.BarMid, &g.BarHigh}) {
        auto* view = new ShapeView(*bar, 28);
        view->setFixedWidth(TwipsToPixels(bar == &g.BarLow   ? 4030
                                          : bar == &g.BarMid ? 5060
                                                             : 2060));
        bars->addWidget(view);
    }
    bars->addStretch();
    v->addLayout(bars);
    return w;
}

QWidget* MakeMultGuageWindow(FrmMultGuage& g) {
    auto* w = new QWidget;
    w->setObjectName("frmMultGuage");
    w->setStyleSheet(kPanelStyle);
    auto* grid = new QGridLayout(w);
    grid->setMenuBar(menuBar({&g.mnuFile}));
    // Needle n with its readout, left to right: RPM, speed, coolant, fuel pressure, intake.
    const std::pair<int, int> dials[] = {{2, 9}, {3, 11}, {4, 13}, {0, 10}, {1, 12}};
    int at = 0;
    for (auto [needle, readout] : dials) {
        auto* cell = new QVBoxLayout;
        cell->addWidget(label(g.Label1[needle], 13, Qt::AlignCenter));
        cell->addWidget(new PictureView(g.Picture1[needle], {&g.Line1[needle]}), 0,
                        Qt::AlignHCenter);
        cell->addWidget(label(g.Label1[readout], 22, Qt::AlignCenter));
        grid->addLayout(cell, at / 3, at % 3);
        ++at;
    }
    return w;
}

}  // namespace ketrel
