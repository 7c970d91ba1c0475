#include "qt/mode5_windows.h"

#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "qt/binders.h"
#include "screens/frm_mode5.h"
#include "screens/frm_mode5_manuf.h"

namespace ketrel {

namespace {

QLabel* boundLabel(Field& f, Qt::Alignment align = Qt::AlignCenter) {
    auto* l = new QLabel;
    l->setObjectName(QString::fromStdString(f.fullName()));
    l->setAlignment(align | Qt::AlignVCenter);
    l->setFrameShape(QFrame::StyledPanel);
    l->setMinimumWidth(110);
    BindLabel(l, f);
    return l;
}

QLabel* heading(const char* text) {
    auto* l = new QLabel(text);
    QFont bold = l->font();
    bold.setBold(true);
    l->setFont(bold);
    l->setAlignment(Qt::AlignCenter);
    return l;
}

QLabel* panel(StatusPanel& p) {
    auto* l = new QLabel;
    l->setObjectName(QString::fromStdString(p.fullName()));
    l->setFrameShape(QFrame::Panel);
    l->setFrameShadow(QFrame::Sunken);
    l->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    BindPanel(l, p);
    return l;
}

}  // namespace

QWidget* MakeMode5Window(FrmMode5& f) {
    auto* w = new QWidget;
    w->setObjectName("frmMode5");
    auto* v = new QVBoxLayout(w);
    auto* top = new QHBoxLayout;
    auto* sensors = new QComboBox;
    sensors->setObjectName("cmbO2");
    sensors->setMinimumWidth(180);
    BindCombo(sensors, f.cmbO2);
    top->addWidget(sensors);
    top->addWidget(MakeButton(f.cmdOk));
    top->addWidget(MakeButton(f.cmdManuf));
    top->addStretch();
    v->addLayout(top);

    auto* rows = new QGridLayout;
    const char* headings[] = {"", "Test Value (Raw)", "Test Value", "Minimun Value", "Maximum"};
    for (int c = 0; c < 5; ++c)
        rows->addWidget(heading(headings[c]), 0, c);
    for (int n = 1; n <= 10; ++n) {
        rows->addWidget(boundLabel(f.Label1[FrmMode5::captionIndex(n)], Qt::AlignLeft), n, 0);
        rows->addWidget(boundLabel(f.lblRaw(n)), n, 1);
        rows->addWidget(boundLabel(f.lblTest(n)), n, 2);
        if (FrmMode5::hasLimits(n)) {
            rows->addWidget(boundLabel(f.lblMin(n)), n, 3);
            rows->addWidget(boundLabel(f.lblMax(n)), n, 4);
        }
    }
    rows->setColumnStretch(0, 1);
    v->addLayout(rows);
    v->addStretch();
    v->addWidget(panel(f.Panel1));
    w->resize(820, 360);
    return w;
}

QWidget* MakeMode5ManufWindow(FrmMode5Manuf& f) {
    auto* w = new QWidget;
    w->setObjectName("frmMode5Manuf");
    auto* v = new QVBoxLayout(w);
    auto* middle = new QHBoxLayout;
    auto* grid = new QTableWidget;
    grid->setObjectName("MSFlexGrid1");
    BindGrid(grid, f.MSFlexGrid1);
    middle->addWidget(grid, 1);
    auto* support = new QListWidget;
    support->setObjectName("List1");
    support->setMaximumWidth(200);
    BindList(support, f.List1);
    middle->addWidget(support);
    v->addLayout(middle, 1);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(MakeButton(f.cmdCancelMode5));
    v->addLayout(bottom);
    auto* status = new QHBoxLayout;
    status->addWidget(panel(f.Panel1), 2);
    status->addWidget(panel(f.Panel2), 2);
    status->addWidget(panel(f.Panel3), 1);
    v->addLayout(status);
    w->resize(1040, 460);
    return w;
}

}  // namespace ketrel
