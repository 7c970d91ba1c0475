#include "qt/help_windows.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSplitter>
#include <QTableWidget>
#include <QTextBrowser>
#include <QVBoxLayout>

#include "qt/binders.h"
#include "qt/icons.h"
#include "screens/frm_help.h"

namespace ketrel {

namespace {

QPushButton* button(Field& f) {
    QPushButton* b = MakeButton(f);
    b->setAutoDefault(false);
    return b;
}

QLabel* label(Field& f) {
    auto* l = new QLabel;
    l->setObjectName(QString::fromStdString(f.name()));
    l->setWordWrap(true);
    BindLabel(l, f);
    return l;
}

// A row of buttons pushed to the right.
QHBoxLayout* buttonRow(std::initializer_list<QPushButton*> buttons) {
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    for (QPushButton* b : buttons)
        row->addWidget(b);
    return row;
}

}  // namespace

QWidget* MakeHelpWindow(FrmHelp& s, const std::filesystem::path& helpFolder) {
    auto* w = new QWidget;
    w->setObjectName("frmHelp");
    auto* v = new QVBoxLayout(w);
    auto* split = new QSplitter;
    auto* list = new QListWidget;
    list->setObjectName("lstTopics");
    BindList(list, s.lstTopics);
    QObject::connect(list, &QListWidget::currentRowChanged, list, [&s](int row) {
        if (row >= 0 && row != s.CurrentTopic) s.chooseTopic(row);
    });
    auto* page = new QTextBrowser;
    page->setObjectName("txtPage");
    page->setOpenLinks(false);  // the screen decides where a link leads
    page->setSearchPaths({QString::fromStdString(helpFolder.string())});
    Follow(page, s.txtPage,
           [page, &s] { page->setHtml(QString::fromStdString(s.txtPage.text())); });
    QObject::connect(page, &QTextBrowser::anchorClicked, page,
                     [&s](const QUrl& url) { s.followLink(url.toString().toStdString()); });
    split->addWidget(list);
    split->addWidget(page);
    split->setStretchFactor(0, 1);
    split->setStretchFactor(1, 3);
    split->setSizes({290, 610});
    v->addWidget(split, 1);
    v->addLayout(buttonRow({button(s.cmdPrevious), button(s.cmdNext), button(s.cmdClose)}));
    w->resize(900, 620);
    return w;
}

QWidget* MakeAboutWindow(FrmAbout& s) {
    auto* w = new QWidget;
    w->setObjectName("frmAbout");
    w->setFixedWidth(460);
    auto* v = new QVBoxLayout(w);
    v->setContentsMargins(18, 18, 18, 12);
    auto* top = new QHBoxLayout;
    auto* icon = new QLabel;
    icon->setObjectName("imgIcon");
    icon->setPixmap(AppIcon().pixmap(64, 64));
    top->addWidget(icon, 0, Qt::AlignTop);
    top->addSpacing(12);
    auto* texts = new QVBoxLayout;
    QLabel* title = label(s.lblTitle);
    QFont big = title->font();
    big.setPointSizeF(big.pointSizeF() * 1.4);
    big.setBold(true);
    title->setFont(big);
    texts->addWidget(title);
    texts->addWidget(label(s.lblVersion));
    texts->addSpacing(8);
    texts->addWidget(label(s.lblDescription));
    texts->addSpacing(8);
    QLabel* folder = label(s.lblFolder);
    folder->setTextInteractionFlags(Qt::TextSelectableByMouse);
    texts->addWidget(folder);
    top->addLayout(texts, 1);
    v->addLayout(top);
    v->addSpacing(8);
    v->addLayout(buttonRow({button(s.cmdOK)}));
    return w;
}

QWidget* MakeAboutHardwareWindow(FrmAboutHardware& s) {
    auto* w = new QWidget;
    w->setObjectName("frmAboutHardware");
    auto* v = new QVBoxLayout(w);
    auto* head = new QHBoxLayout;
    auto* icon = new QLabel;
    icon->setPixmap(IconFor("mnuAboutHardware").pixmap(32, 32));
    head->addWidget(icon);
    QLabel* selected = label(s.lblHardware);
    QFont bold = selected->font();
    bold.setBold(true);
    selected->setFont(bold);
    head->addWidget(selected, 1);
    v->addLayout(head);
    auto* t = new QTableWidget;
    t->setObjectName("gridHardware");
    BindGrid(t, s.gridHardware);
    t->setWordWrap(true);
    t->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    t->setEditTriggers(QAbstractItemView::NoEditTriggers);
    v->addWidget(t, 1);
    v->addLayout(buttonRow({button(s.cmdOK)}));
    w->resize(1240, 300);
    return w;
}

}  // namespace ketrel
