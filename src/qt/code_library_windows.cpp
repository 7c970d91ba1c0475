#include "qt/code_library_windows.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>

#include "qt/binders.h"
#include "screens/frm_terms.h"
#include "screens/frm_trouble_code.h"

namespace ketrel {

namespace {

// A frame whose title is one of the screen's caption fields.
QGroupBox* frame(Field& title) {
    auto* g = new QGroupBox;
    g->setObjectName(ObjectName(title));
    Follow(g, title, [g, &title] { g->setTitle(QString::fromStdString(title.text())); });
    return g;
}

QListWidget* list(ListBox& l) {
    auto* w = new QListWidget;
    w->setObjectName(ObjectName(l));
    BindList(w, l);
    return w;
}

QLabel* label(Field& f) {
    auto* l = new QLabel;
    l->setObjectName(ObjectName(f));
    l->setWordWrap(true);
    BindLabel(l, f);
    return l;
}

void addMenus(QVBoxLayout* v, MenuItem& file, MenuItem& exit) {
    auto* menus = new QMenuBar;
    QMenu* m = menus->addMenu(QString::fromStdString(file.caption()));
    auto* a = new QAction(m);
    BindMenu(a, exit);
    m->addAction(a);
    v->setMenuBar(menus);
}

QTabWidget* sectionTabs(FrmTroubleCode& s) {
    auto* tabs = new QTabWidget;
    tabs->setObjectName("SSTab1");
    std::vector<QVBoxLayout*> pages;
    for (int i = 0; i < s.SSTab1.count(); ++i) {
        auto* page = new QWidget;
        pages.push_back(new QVBoxLayout(page));
        tabs->addTab(page, QString::fromStdString(s.SSTab1.caption(i)));
    }
    for (std::size_t i = 0; i < s.options().size(); ++i) {
        const int tab = s.optionTab(i);
        if (tab < 0 || tab >= int(pages.size())) continue;
        auto* r = new QRadioButton;
        r->setObjectName(ObjectName(*s.options()[i]));
        BindToggle(r, *s.options()[i]);
        pages[std::size_t(tab)]->addWidget(r);
    }
    for (QVBoxLayout* page : pages)
        page->addStretch();
    BindTabs(tabs, s.SSTab1);
    return tabs;
}

}  // namespace

QWidget* MakeTroubleCodeWindow(FrmTroubleCode& s) {
    auto* w = new QWidget;
    w->setObjectName("frmTroubleCode");
    w->resize(760, 640);
    auto* v = new QVBoxLayout(w);
    v->setContentsMargins(8, 4, 8, 8);
    addMenus(v, s.mnuFile, s.mnuFileExit);

    auto* top = new QHBoxLayout;
    QGroupBox* sections = frame(s.Frame[0]);
    (new QVBoxLayout(sections))->addWidget(sectionTabs(s));
    top->addWidget(sections, 3);
    QGroupBox* numbers = frame(s.Frame[1]);
    QListWidget* codes = list(s.List1);
    // Picking a number, by mouse or keys, is the list's click.
    QObject::connect(codes, &QListWidget::currentRowChanged, codes,
                     [&s](int row) { s.List1Click(row); });
    (new QVBoxLayout(numbers))->addWidget(codes);
    numbers->setMinimumWidth(150);
    top->addWidget(numbers, 1);
    v->addLayout(top, 1);

    QGroupBox* definition = frame(s.Frame[2]);
    auto* d = new QVBoxLayout(definition);
    QLabel* text = label(s.lblDefine);
    text->setMinimumHeight(40);
    text->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    QFont bold = text->font();
    bold.setBold(true);
    text->setFont(bold);
    d->addWidget(text);
    QLabel* warning = label(s.Label1);
    warning->setStyleSheet("color: #C00000;");
    d->addWidget(warning);
    v->addWidget(definition);

    auto* bottom = new QHBoxLayout;
    QGroupBox* current = frame(s.Frame[3]);
    (new QVBoxLayout(current))->addWidget(list(s.lstTCodes));
    QGroupBox* pending = frame(s.Frame[4]);
    (new QVBoxLayout(pending))->addWidget(list(s.lstPend));
    bottom->addWidget(current);
    bottom->addWidget(pending);
    v->addLayout(bottom);
    for (QListWidget* l :
         {w->findChild<QListWidget*>("lstTCodes"), w->findChild<QListWidget*>("lstPend")})
        l->setMaximumHeight(110);
    return w;
}

QWidget* MakeTermsWindow(FrmTerms& s) {
    auto* w = new QWidget;
    w->setObjectName("frmTerms");
    w->resize(1040, 560);
    auto* v = new QVBoxLayout(w);
    v->setContentsMargins(8, 4, 8, 8);
    addMenus(v, s.mnuFile, s.mnuFileExit);
    QGroupBox* box = frame(s.Frame1);
    auto* grid = new QTableWidget;
    grid->setObjectName("MSFlexGrid1");
    grid->setWordWrap(false);
    BindGrid(grid, s.MSFlexGrid1);
    (new QVBoxLayout(box))->addWidget(grid);
    v->addWidget(box, 1);
    return w;
}

}  // namespace ketrel
