#include "qt/recorded_log_window.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include "qt/binders.h"
#include "screens/frm_recorded_log.h"

namespace ketrel {

namespace {

// The search method changes only through its list: typed keys are swallowed, but Tab still
// moves the focus on.
class SwallowKeys : public QObject {
  public:
    using QObject::QObject;

  protected:
    bool eventFilter(QObject*, QEvent* e) override {
        if (e->type() != QEvent::KeyPress) return false;
        const int key = static_cast<QKeyEvent*>(e)->key();
        return key != Qt::Key_Tab && key != Qt::Key_Backtab;
    }
};

QLabel* caption(Field& f) {
    auto* l = new QLabel;
    l->setObjectName(QString::fromStdString(f.fullName()));
    BindLabel(l, f);
    return l;
}

QPushButton* button(Field& f) {
    QPushButton* b = MakeButton(f);
    b->setAutoDefault(false);
    return b;
}

QTableWidget* grid(FrmRecordedLog& s) {
    auto* t = new QTableWidget;
    t->setObjectName("gridLog");
    BindGrid(t, s.gridLog);
    t->setMinimumHeight(220);
    // The current cell and the row scrolled to the top follow the screen.
    Follow(t, s.gridLog, [t, &s] {
        if (s.TopRow >= 1 && s.TopRow < t->rowCount())
            t->scrollToItem(t->item(s.TopRow, 0), QAbstractItemView::PositionAtTop);
    });
    QObject::connect(t, &QTableWidget::cellClicked, t,
                     [&s](int row, int col) { s.gridMouseUp(row, col); });
    return t;
}

}  // namespace

QWidget* MakeRecordedLogWindow(FrmRecordedLog& s) {
    auto* w = new QWidget;
    w->setObjectName("frmRecordedLog");
    w->resize(1000, 420);
    auto* v = new QVBoxLayout(w);
    v->setContentsMargins(8, 4, 8, 8);

    auto* menus = new QMenuBar;
    QMenu* file = menus->addMenu(QString::fromStdString(s.mnuFile.caption()));
    auto* exit = new QAction(file);
    BindMenu(exit, s.mnuFileExit);
    file->addAction(exit);
    v->setMenuBar(menus);

    v->addWidget(grid(s), 1);

    auto* searchRow = new QHBoxLayout;
    searchRow->addWidget(caption(s.Label1[0]));
    auto* method = new QComboBox;
    method->setObjectName("cmbSearchMethod");
    BindCombo(method, s.cmbSearchMethod);
    method->installEventFilter(new SwallowKeys(method));
    searchRow->addWidget(method);
    searchRow->addSpacing(8);
    searchRow->addWidget(caption(s.Label1[1]));
    auto* word = new QLineEdit;
    word->setObjectName("txtSearchWord");
    BindLineEdit(word, s.txtSearchWord);
    // Enter in the search row presses cmdSearch.
    QObject::connect(word, &QLineEdit::returnPressed, word, [&s] { s.cmdSearch.click(); });
    searchRow->addWidget(word, 1);
    searchRow->addWidget(button(s.cmdSearch));
    v->addLayout(searchRow);

    auto* bottom = new QHBoxLayout;
    for (Field* f : {&s.cmdPlay, &s.cmdDelete, &s.cmdDeleteAll, &s.cmdExportCsv})
        bottom->addWidget(button(*f));
    bottom->addStretch();
    bottom->addWidget(caption(s.Label1[2]));
    QLabel* total = caption(s.lbltotalRecord);
    total->setMinimumWidth(40);
    bottom->addWidget(total);
    v->addLayout(bottom);
    return w;
}

}  // namespace ketrel
