#include "qt/main_window.h"

#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include "qt/binders.h"
#include "qt/icons.h"
#include "screens/frm_main.h"

namespace ketrel {

namespace {

void addMenu(QWidget* parent, MenuItem& item) {
    if (item.children().empty()) {
        auto* action = new QAction(parent);
        BindMenu(action, item);
        action->setIcon(IconFor(item.name()));
        parent->addAction(action);
        return;
    }
    auto* menu = new QMenu(parent);
    menu->setIcon(IconFor(item.name()));
    Follow(menu, item, [menu, &item] {
        menu->setTitle(QString::fromStdString(item.caption()));
        menu->menuAction()->setEnabled(item.enabled());
        menu->menuAction()->setVisible(item.visible());
    });
    for (MenuItem* child : item.children())
        addMenu(menu, *child);
    if (auto* bar = qobject_cast<QMenuBar*>(parent)) {
        bar->addMenu(menu);
    } else {
        static_cast<QMenu*>(parent)->addMenu(menu);
    }
}

void buildMenus(QMainWindow* w, FrmMain& m) {
    for (Control* c : m.controls()) {
        if (c->kind() != ControlKind::Menu) continue;
        auto* item = static_cast<MenuItem*>(c);
        if (item->parent() || item == &m.tbMultiGuage) continue;
        addMenu(w->menuBar(), *item);
    }
}

void buildToolbar(QMainWindow* w, FrmMain& m) {
    auto* bar = new QToolBar("Toolbar1", w);
    bar->setObjectName("Toolbar1");
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    bar->setIconSize(QSize(24, 24));
    for (int n = 1; n <= 15; ++n) {
        ToolButton& b = m.button(n);
        if (b.separator()) {
            bar->addSeparator();
            continue;
        }
        auto* action = new QAction(bar);
        action->setObjectName(QString::fromStdString("tb" + b.key()));
        QMenu* drop = nullptr;
        if (&b == &m.tbGuage) {
            // The gauge button carries the drop-down entry for the multi-gauge screen. A menu
            // drives the enabled state of the action it belongs to, and a child menu would be
            // enabled with the window: this one has no parent and goes with the bar.
            drop = new QMenu;
            QObject::connect(bar, &QObject::destroyed, [drop] { delete drop; });
            auto* multi = new QAction(bar);
            BindMenu(multi, m.tbMultiGuage);
            multi->setIcon(IconFor("tbMultiGuage"));
            drop->addAction(multi);
            action->setMenu(drop);
        }
        BindToolButton(action, b);
        action->setIcon(IconFor("tb" + b.key()));
        bar->addAction(action);
        if (drop) {
            if (auto* tb = qobject_cast<QToolButton*>(bar->widgetForAction(action)))
                tb->setPopupMode(QToolButton::MenuButtonPopup);
        }
    }
    w->addToolBar(bar);
    Follow(bar, m.Toolbar1, [bar, &m] {
        bar->setVisible(m.Toolbar1.visible());
        bar->setEnabled(m.Toolbar1.enabled());
    });
}

void buildStatusBar(QMainWindow* w, FrmMain& m) {
    QStatusBar* bar = w->statusBar();
    struct PanelView {
        int number;
        int stretch;
        int minWidth;
    } panels[] = {{1, 3, 160}, {2, 0, 22}, {3, 1, 90}, {4, 3, 220}, {9, 1, 90}};
    for (const PanelView& p : panels) {
        auto* label = new QLabel;
        label->setObjectName(QString("Panel%1").arg(p.number));
        label->setMinimumWidth(p.minWidth);
        label->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
        label->setContentsMargins(4, 0, 4, 0);
        if (p.number == 2) label->setAlignment(Qt::AlignCenter);
        BindPanel(label, m.panel(p.number));
        bar->addPermanentWidget(label, p.stretch);
    }
    Follow(bar, m.StatusBar1, [bar, &m] { bar->setVisible(m.StatusBar1.visible()); });
}

}  // namespace

QMainWindow* MakeMainWindow(FrmMain& m) {
    auto* w = new QMainWindow;
    w->setObjectName("frmMain");
    w->setWindowIcon(AppIcon());
    buildMenus(w, m);
    buildToolbar(w, m);
    auto* tabs = new QTabWidget;
    tabs->setObjectName("SSTab1");
    tabs->addTab(MakeDataPage(m), QString());
    tabs->addTab(MakeMonitorPage(m), QString());
    tabs->addTab(MakeCodesPage(m), QString());
    tabs->addTab(MakeVehiclePage(m), QString());
    tabs->addTab(MakeSupportPage(m), QString());
    BindTabs(tabs, m.SSTab1);
    auto* central = new QWidget;
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(tabs);
    w->setCentralWidget(central);
    buildStatusBar(w, m);
    w->resize(1060, 760);
    return w;
}

}  // namespace ketrel
