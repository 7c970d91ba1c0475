#include "qt/display_windows.h"

#include <QCheckBox>
#include <QCursor>
#include <QFont>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>

#include "qt/binders.h"
#include "qt/progress_bar_binder.h"
#include "qt/window_manager.h"
#include "screens/frm_custom_data.h"
#include "screens/frm_mpg.h"
#include "screens/frm_new_pids.h"
#include "screens/frm_real_display.h"
#include "screens/new_pids_layout.h"
#include "state/app.h"

namespace ketrel {

namespace {

QString q(const std::string& s) {
    return QString::fromStdString(s);
}

QLabel* label(Field& f, const QString& objectName, double scale = 1.0, bool bold = false) {
    auto* l = new QLabel;
    l->setObjectName(objectName);
    QFont font = l->font();
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setBold(bold);
    l->setFont(font);
    BindLabel(l, f);
    return l;
}

QLabel* fixedText(const QString& text, double scale = 1.0, bool bold = false) {
    auto* l = new QLabel(text);
    QFont font = l->font();
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setBold(bold);
    l->setFont(font);
    return l;
}

// A menu bar entry and its children, bound to the screen's menu items.
void addMenu(QMenuBar* bar, MenuItem& item) {
    QMenu* menu = bar->addMenu(q(item.caption()));
    for (MenuItem* child : item.children()) {
        auto* a = new QAction(menu);
        BindMenu(a, *child);
        menu->addAction(a);
    }
}

// One row of the extended screen: status picture, caption, value, unit.
void addNewPidRow(QGridLayout* g, int row, int col, FrmNewPids& x, const NewPidRow& r) {
    if (r.pid >= 33) {
        auto* pic = new QLabel;
        BindPicture(pic, x.Image1[r.pid - 32], 14);
        BindClick(pic, x.Image1[r.pid - 32]);
        g->addWidget(pic, row, col);
    }
    if (r.captionItem >= 0)
        g->addWidget(label(x.Label1[r.captionItem], QString("Label1(%1)").arg(r.captionItem)), row,
                     col + 1);
    auto* value = dynamic_cast<Field*>(x.findControl(r.field));
    if (value) {
        QLabel* v = label(*value, r.field, 1.0, true);
        v->setMinimumWidth(70);
        v->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        g->addWidget(v, row, col + 2);
    }
    auto* unitField = r.unitField ? dynamic_cast<Field*>(x.findControl(r.unitField)) : nullptr;
    g->addWidget(unitField ? label(*unitField, r.unitField) : fixedText(r.unitWord), row, col + 3);
}

}  // namespace

QWidget* MakeNewPidsWindow(FrmNewPids& x, bool gridStyle) {
    auto* w = new QWidget;
    w->setObjectName("frmNewPids");
    auto* v = new QVBoxLayout(w);
    auto* bar = new QMenuBar;
    addMenu(bar, x.mnuFile);
    addMenu(bar, x.mnuOption);
    v->setMenuBar(bar);
    if (gridStyle) {
        auto* t = new QTableWidget;
        t->setObjectName("GridData");
        BindGrid(t, x.GridData);
        t->setMinimumSize(900, 560);
        v->addWidget(t);
    } else {
        auto* g = new QGridLayout;
        g->setHorizontalSpacing(8);
        g->setVerticalSpacing(2);
        for (const NewPidRow& r : kNewPidRows)
            addNewPidRow(g, r.gridRow, r.gridCol == 1 ? 0 : 5, x, r);
        g->setColumnMinimumWidth(4, 24);
        v->addLayout(g);
    }
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    auto* record = new QPushButton;
    record->setObjectName("Command1");
    BindButton(record, x.Command1);
    buttons->addWidget(record);
    v->addLayout(buttons);
    return w;
}

QWidget* MakeCustomDataWindow(FrmCustomData& c) {
    auto* w = new QWidget;
    w->setObjectName("frmCustomData");
    auto* v = new QVBoxLayout(w);
    auto* tabs = new QTabWidget;
    tabs->setObjectName("SSTab1");
    const int first[] = {1, 0x20, 0x40}, last[] = {0x1F, 0x3F, 79};
    for (int s = 0; s < 3; ++s) {
        auto* page = new QWidget;
        auto* pv = new QVBoxLayout(page);
        auto* g = new QGridLayout;
        g->setVerticalSpacing(1);
        const int count = last[s] - first[s] + 1, perColumn = (count + 1) / 2;
        for (int pid = first[s]; pid <= last[s]; ++pid) {
            const int k = pid - first[s], row = k % perColumn, col = (k / perColumn) * 3;
            g->addWidget(fixedText(QString("%1").arg(pid, 2, 16, QChar('0')).toUpper()), row, col);
            g->addWidget(label(c.Label1[pid], QString("Label1(%1)").arg(pid), 0.9), row, col + 1);
            auto* box = new QCheckBox;
            box->setObjectName(QString("Check1(%1)").arg(pid));
            CustomCheck& item = c.Check1[pid];
            BindToggle(box, item);
            Follow(box, item, [box, &item] {
                const std::int64_t b = item.backColor();
                if (b == kDefaultColor) {
                    box->setStyleSheet("");
                    return;
                }
                const QColor back(int((b >> 16) & 0xFF), int((b >> 8) & 0xFF), int(b & 0xFF));
                const QString text = back.lightness() > 128 ? "black" : "white";
                box->setStyleSheet(QString("QCheckBox { background-color: %1; color: %2; "
                                           "padding: 1px 4px; }")
                                       .arg(back.name(), text));
            });
            g->addWidget(box, row, col + 2);
        }
        pv->addLayout(g);
        auto* attention = label(c.lblAttention[s], QString("lblAttention(%1)").arg(s), 1.0, true);
        attention->setStyleSheet("color: #b00000;");
        pv->addWidget(attention);
        pv->addStretch();
        tabs->addTab(page, "");
    }
    BindTabs(tabs, c.SSTab1);
    v->addWidget(tabs);
    auto* row = new QHBoxLayout;
    auto* all = new QCheckBox;
    all->setObjectName("Check2");
    BindToggle(all, c.Check2);
    row->addWidget(all);
    row->addStretch();
    auto* ok = new QPushButton;
    ok->setObjectName("cmdOk");
    BindButton(ok, c.cmdOk);
    auto* cancel = new QPushButton;
    cancel->setObjectName("cmdCancel");
    BindButton(cancel, c.cmdCancel);
    row->addWidget(ok);
    row->addWidget(cancel);
    v->addLayout(row);
    auto* status = new QLabel;
    status->setObjectName("StatusBar1");
    status->setFrameShape(QFrame::StyledPanel);
    BindPanel(status, c.Panel1);
    v->addWidget(status);
    return w;
}

QWidget* MakeRealDisplayWindow(FrmRealDisplay& d) {
    auto* w = new QWidget;
    w->setObjectName("frmRealDisplay");
    w->setMinimumWidth(560);
    auto* v = new QVBoxLayout(w);
    v->setContentsMargins(20, 16, 20, 16);
    QLabel* name = label(d.lblDisplayPID, "lblDisplayPID", 1.6, true);
    name->setAlignment(Qt::AlignCenter);
    v->addWidget(name);
    QLabel* value = label(d.lblValue, "lblValue", 5.0, true);
    value->setAlignment(Qt::AlignCenter);
    value->setMinimumHeight(110);
    v->addWidget(value);
    auto* bar = new QProgressBar;
    bar->setObjectName("ProgressBar1");
    bar->setMinimumHeight(36);
    BindProgressBar(bar, d.ProgressBar1);
    v->addWidget(bar);
    auto* scale = new QHBoxLayout;
    QLabel* min = label(d.lblMin, "lblMin", 1.2);
    QLabel* mid = label(d.lblMid, "lblMid", 1.2);
    QLabel* max = label(d.lblMax, "lblMax", 1.2);
    mid->setAlignment(Qt::AlignCenter);
    max->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    scale->addWidget(min, 1);
    scale->addWidget(mid, 1);
    scale->addWidget(max, 1);
    v->addLayout(scale);
    auto* row = new QHBoxLayout;
    QLabel* warning = label(d.lblDisabled[0], "lblDisabled(0)", 1.4, true);
    warning->setStyleSheet("color: #d00000;");
    // The warning keeps its room while it blinks, so nothing below it jumps.
    QSizePolicy keep = warning->sizePolicy();
    keep.setRetainSizeWhenHidden(true);
    warning->setSizePolicy(keep);
    row->addWidget(warning);
    row->addStretch();
    auto* pids = new QPushButton;
    pids->setObjectName("cmdPIDSAvailable");
    BindButton(pids, d.cmdPIDSAvailable);
    row->addWidget(pids);
    v->addLayout(row);
    QPointer<QWidget> alive(w);
    d.showPopupMenu = [alive](MenuItem& menu) {
        if (!alive) return;
        QMenu popup(alive);
        for (MenuItem* child : menu.children()) {
            auto* a = new QAction(&popup);
            BindMenu(a, *child);
            popup.addAction(a);
        }
        popup.exec(QCursor::pos());
    };
    QObject::connect(w, &QObject::destroyed, [&d] { d.showPopupMenu = nullptr; });
    return w;
}

QWidget* MakeMpgWindow(FrmMPG& s) {
    auto* w = new QWidget;
    w->setObjectName("frmMPG");
    w->setMinimumWidth(420);
    auto* g = new QGridLayout(w);
    g->setContentsMargins(20, 16, 20, 16);
    g->setHorizontalSpacing(30);
    struct Figure {
        Field& value;
        const char* name;
        int item;
    } figures[] = {{s.lblInstMPG, "lblInstMPG", 1}, {s.lblMPGAve, "lblMPGAve", 2}};
    int col = 0;
    for (const Figure& f : figures) {
        QLabel* caption = label(s.Label2[f.item], QString("Label2(%1)").arg(f.item), 1.2, true);
        caption->setAlignment(Qt::AlignCenter);
        QLabel* value = label(f.value, f.name, 3.5, true);
        value->setAlignment(Qt::AlignCenter);
        value->setMinimumWidth(160);
        value->setFrameShape(QFrame::Panel);
        value->setFrameShadow(QFrame::Sunken);
        QLabel* unit = label(s.Label1[f.item], QString("Label1(%1)").arg(f.item), 1.2);
        unit->setAlignment(Qt::AlignCenter);
        g->addWidget(caption, 0, col);
        g->addWidget(value, 1, col);
        g->addWidget(unit, 2, col);
        ++col;
    }
    return w;
}

void RegisterDisplayViews(WindowManager& windows, App& app) {
    windows.registerView("frmNewPids", [&app](Screen&) {
        return MakeNewPidsWindow(app.frmNewPids(), app.GridStyle);
    });
    if (auto* c = dynamic_cast<FrmCustomData*>(app.screenByName("frmCustomData")))
        windows.registerView("frmCustomData", [c](Screen&) { return MakeCustomDataWindow(*c); });
    if (auto* d = dynamic_cast<FrmRealDisplay*>(app.screenByName("frmRealDisplay")))
        windows.registerView("frmRealDisplay", [d](Screen&) { return MakeRealDisplayWindow(*d); });
    if (auto* s = dynamic_cast<FrmMPG*>(app.screenByName("frmMPG")))
        windows.registerView("frmMPG", [s](Screen&) { return MakeMpgWindow(*s); });
}

}  // namespace ketrel
