#include "qt/binders.h"

#include <algorithm>

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QCompleter>
#include <QFontMetrics>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QTabWidget>
#include <QTableWidget>
#include <QToolTip>

#include "qt/pictures.h"

namespace ketrel {

namespace {

QString q(const std::string& s) {
    return QString::fromStdString(s);
}

// Ends an observation when the widget that needs it goes.
class Observation : public QObject {
  public:
    Observation(QObject* owner, Observable& model, std::function<void()> fn)
        : QObject(owner), model_(model) {
        id_ = model_.observe(std::move(fn));
    }
    ~Observation() override { model_.unobserve(id_); }

  private:
    Observable& model_;
    int id_;
};

// Runs a function for each event of one type that reaches the watched object.
class EventHook : public QObject {
  public:
    EventHook(QObject* watched, QEvent::Type type, std::function<bool(QEvent*)> fn)
        : QObject(watched), type_(type), fn_(std::move(fn)) {
        watched->installEventFilter(this);
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == type_) return fn_(event);
        return QObject::eventFilter(watched, event);
    }

  private:
    QEvent::Type type_;
    std::function<bool(QEvent*)> fn_;
};

QColor color(std::int64_t c) {
    return QColor(int((c >> 16) & 0xFF), int((c >> 8) & 0xFF), int(c & 0xFF));
}

void applyState(QWidget* w, const Control& c) {
    w->setEnabled(c.enabled());
    // A widget not yet placed in its window is only ever hidden here, never shown as a window.
    if (!c.visible() || w->parentWidget()) w->setVisible(c.visible());
    w->setToolTip(q(c.toolTip()));
}

void applyColours(QWidget* w, const Field& f) {
    QString style;
    if (f.foreColor() != kDefaultColor) style += "color: " + color(f.foreColor()).name() + ";";
    if (f.backColor() != kDefaultColor)
        style += "background-color: " + color(f.backColor()).name() + ";";
    if (w->styleSheet() != style) w->setStyleSheet(style);
}

Qt::Alignment alignOf(Align a) {
    switch (a) {
        case Align::Center:
            return Qt::AlignCenter;
        case Align::Right:
            return Qt::AlignRight | Qt::AlignVCenter;
        case Align::Left:
            break;
    }
    return Qt::AlignLeft | Qt::AlignVCenter;
}

// Labels show '&' as it is; only buttons and tabs take it as a mnemonic.
QString plain(const std::string& s) {
    QString t = q(s);
    return t.replace("&&", "\x01").remove('&').replace("\x01", "&");
}

}  // namespace

void Follow(QObject* owner, Observable& model, std::function<void()> redraw) {
    redraw();
    new Observation(owner, model, std::move(redraw));
}

void BindState(QWidget* w, Control& c) {
    Follow(w, c, [w, &c] { applyState(w, c); });
}

void BindClick(QWidget* w, Field& f) {
    new EventHook(w, QEvent::MouseButtonRelease, [w, &f](QEvent* e) {
        auto* mouse = static_cast<QMouseEvent*>(e);
        if (mouse->button() == Qt::LeftButton && w->rect().contains(mouse->position().toPoint()))
            f.click();
        return false;
    });
}

void BindLabel(QLabel* w, Field& f) {
    Follow(w, f, [w, &f] {
        applyState(w, f);
        applyColours(w, f);
        if (!f.picture().empty()) {
            w->setPixmap(PictureFor(f.picture()));
        } else if (w->text() != plain(f.text())) {
            w->setText(plain(f.text()));
        }
    });
}

void BindPicture(QLabel* w, Field& f, int size) {
    w->setFixedSize(size, size);
    Follow(w, f, [w, &f, size] {
        applyState(w, f);
        w->setPixmap(PictureFor(f.picture(), size));
    });
}

void BindButton(QAbstractButton* w, Field& f) {
    Follow(w, f, [w, &f] {
        applyState(w, f);
        w->setText(q(f.text()));
    });
    QObject::connect(w, &QAbstractButton::clicked, w, [&f] { f.click(); });
}

QString ObjectName(const Control& c) {
    return q(c.fullName());
}

QPushButton* MakeButton(Field& f) {
    auto* b = new QPushButton;
    b->setObjectName(ObjectName(f));
    BindButton(b, f);
    return b;
}

void BindLineEdit(QLineEdit* w, Field& f) {
    Follow(w, f, [w, &f] {
        applyState(w, f);
        applyColours(w, f);
        if (w->text() != q(f.text())) w->setText(q(f.text()));
    });
    QObject::connect(w, &QLineEdit::textEdited, w,
                     [&f](const QString& t) { f.setText(t.toStdString()); });
    QObject::connect(w, &QLineEdit::editingFinished, w, [&f] {
        if (f.onLeave) f.onLeave();
    });
}

void BindGrid(QTableWidget* w, Grid& g) {
    // The grid decides its tool tip from the cell under the pointer; the view shows it.
    w->setMouseTracking(true);
    w->viewport()->setMouseTracking(true);
    QObject::connect(w, &QTableWidget::cellEntered, w, [&g](int r, int c) { g.mouseMove(r, c); });
    new EventHook(w->viewport(), QEvent::ToolTip, [w, &g](QEvent* e) {
        auto* help = static_cast<QHelpEvent*>(e);
        if (g.toolTip().empty()) {
            QToolTip::hideText();
        } else {
            QToolTip::showText(help->globalPos(), q(g.toolTip()), w->viewport());
        }
        return true;
    });
    w->horizontalHeader()->hide();
    w->verticalHeader()->hide();
    w->setEditTriggers(QAbstractItemView::NoEditTriggers);
    w->setSelectionMode(QAbstractItemView::NoSelection);
    w->verticalHeader()->setDefaultSectionSize(20);
    w->horizontalHeader()->setStretchLastSection(true);
    Follow(w, g, [w, &g] {
        applyState(w, g);
        w->setRowCount(g.rows());
        w->setColumnCount(g.cols());
        // A column of width 0 is hidden; the last one fills what the others leave; a heading
        // is never cut.
        const bool stretchLast = w->horizontalHeader()->stretchLastSection();
        QFont bold = w->font();
        bold.setBold(true);
        const QFontMetrics heading(bold);
        for (int c = 0; c < g.cols(); ++c) {
            w->setColumnHidden(c, g.colWidth(c) == 0);
            if (stretchLast && c == g.cols() - 1) continue;
            const int need = heading.horizontalAdvance(q(g.text(0, c))) + 14;
            w->setColumnWidth(c, std::max(TwipsToPixels(g.colWidth(c)), need));
        }
        QColor fixed = w->palette().color(QPalette::Button);
        for (int r = 0; r < g.rows(); ++r) {
            for (int c = 0; c < g.cols(); ++c) {
                QTableWidgetItem* item = w->item(r, c);
                if (!item) {
                    item = new QTableWidgetItem;
                    w->setItem(r, c, item);
                }
                if (item->text() != q(g.text(r, c))) item->setText(q(g.text(r, c)));
                item->setTextAlignment(r == 0 ? Qt::AlignCenter : alignOf(g.colAlign(c)));
                std::int64_t back = g.cellBackColor(r, c);
                // Row 0 is the grid's fixed heading row.
                item->setBackground(back != kDefaultColor ? QBrush(color(back))
                                    : r == 0              ? QBrush(fixed)
                                                          : QBrush());
                if (r == 0) {
                    QFont f = item->font();
                    f.setBold(true);
                    item->setFont(f);
                }
            }
        }
    });
}

void BindList(QListWidget* w, ListBox& l) {
    Follow(w, l, [w, &l] {
        applyState(w, l);
        QSignalBlocker block(w);
        bool same = w->count() == l.count();
        for (int i = 0; same && i < l.count(); ++i)
            same = w->item(i)->text() == q(l.item(i));
        if (!same) {
            w->clear();
            for (const std::string& s : l.items())
                w->addItem(q(s));
        }
        w->setCurrentRow(l.listIndex());
    });
    QObject::connect(w, &QListWidget::currentRowChanged, w, [&l](int row) { l.setListIndex(row); });
}

void BindCombo(QComboBox* w, ComboBox& c) {
    Follow(w, c, [w, &c] {
        applyState(w, c);
        QSignalBlocker block(w);
        bool same = w->count() == c.count();
        for (int i = 0; same && i < c.count(); ++i)
            same = w->itemText(i) == q(c.items()[std::size_t(i)]);
        if (!same) {
            w->clear();
            for (const std::string& s : c.items())
                w->addItem(q(s));
        }
        // A text that is not one of the items shows in place of a selection.
        w->setPlaceholderText(c.listIndex() < 0 ? q(c.text()) : QString());
        w->setCurrentIndex(c.listIndex());
        if (w->isEditable() && c.listIndex() < 0) w->setEditText(q(c.text()));
    });
    QObject::connect(w, &QComboBox::activated, w, [&c](int i) { c.setListIndex(i); });
}

void BindEditableCombo(QComboBox* w, ComboBox& c) {
    w->setEditable(true);
    w->setInsertPolicy(QComboBox::NoInsert);
    // Only an exact entry counts as picked from the list; "ford" stays typed text.
    if (w->completer()) w->completer()->setCaseSensitivity(Qt::CaseSensitive);
    BindCombo(w, c);
    // Typed text is the field's text as it stands, without the handler of a choice from the list.
    QObject::connect(w->lineEdit(), &QLineEdit::editingFinished, w, [w, &c] {
        auto chosen = std::move(c.onChange);
        c.setText(w->currentText().toStdString());
        c.onChange = std::move(chosen);
        if (c.onLeave) c.onLeave();
    });
}

void BindToggle(QAbstractButton* w, Toggle& t) {
    w->setAutoExclusive(false);  // the group of options is the model's
    w->setCheckable(true);
    Follow(w, t, [w, &t] {
        applyState(w, t);
        QSignalBlocker block(w);
        w->setText(q(t.caption()));
        w->setChecked(t.value());
    });
    QObject::connect(w, &QAbstractButton::clicked, w, [w, &t] {
        t.click();
        QSignalBlocker block(w);
        w->setChecked(t.value());
    });
}

void BindMenu(QAction* a, MenuItem& m) {
    Follow(a, m, [a, &m] {
        a->setText(q(m.caption()));
        a->setEnabled(m.enabled());
        a->setVisible(m.visible());
        a->setCheckable(m.checked());
        a->setChecked(m.checked());
    });
    if (!m.shortcut().empty()) a->setShortcut(QKeySequence(q(m.shortcut())));
    QObject::connect(a, &QAction::triggered, a, [a, &m] {
        QPointer<QAction> alive(a);
        m.click();
        if (!alive) return;
        a->setCheckable(m.checked());
        a->setChecked(m.checked());
    });
}

void BindToolButton(QAction* a, ToolButton& b) {
    Follow(a, b, [a, &b] {
        a->setText(q(b.caption()));
        a->setToolTip(q(b.toolTip()));
        a->setEnabled(b.enabled());
        a->setVisible(b.visible());
    });
    QObject::connect(a, &QAction::triggered, a, [&b] { b.click(); });
}

void BindPanel(QLabel* w, StatusPanel& p) {
    Follow(w, p, [w, &p] {
        applyState(w, p);
        if (!p.picture().empty()) {
            w->setPixmap(PictureFor(p.picture()));
        } else {
            w->setText(q(p.text()));
        }
    });
}

void BindSlider(QSlider* w, Slider& s) {
    w->setRange(s.min(), s.max());
    Follow(w, s, [w, &s] {
        applyState(w, s);
        QSignalBlocker block(w);
        w->setValue(s.value());
    });
    QObject::connect(w, &QSlider::valueChanged, w, [&s](int v) { s.setValue(v); });
}

void BindTabs(QTabWidget* w, Tabs& t) {
    Follow(w, t, [w, &t] {
        applyState(w, t);
        QSignalBlocker block(w);
        for (int i = 0; i < t.count() && i < w->count(); ++i)
            w->setTabText(i, q(t.caption(i)));
        w->setCurrentIndex(t.tab());
    });
    QObject::connect(w, &QTabWidget::currentChanged, w, [w, &t](int i) {
        t.setTab(i);
        if (w->currentIndex() != t.tab()) w->setCurrentIndex(t.tab());
    });
}

}  // namespace ketrel
