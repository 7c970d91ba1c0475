#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QSlider>
#include <QTableWidget>
#include <QVBoxLayout>

#include "qt/binders.h"
#include "qt/window_manager.h"

namespace ketrel {

namespace {

// A widget for one control, chosen by its kind and, for fields, by its name's prefix.
QWidget* widgetFor(Control& c) {
    switch (c.kind()) {
        case ControlKind::Field: {
            auto& f = static_cast<Field&>(c);
            if (c.name().rfind("cmd", 0) == 0 || c.name().rfind("Command", 0) == 0) {
                auto* b = new QPushButton;
                BindButton(b, f);
                return b;
            }
            if (c.name().rfind("txt", 0) == 0) {
                auto* e = new QLineEdit;
                BindLineEdit(e, f);
                return e;
            }
            auto* l = new QLabel;
            l->setWordWrap(true);
            BindLabel(l, f);
            return l;
        }
        case ControlKind::Grid: {
            auto* t = new QTableWidget;
            BindGrid(t, static_cast<Grid&>(c));
            return t;
        }
        case ControlKind::ListBox: {
            auto* l = new QListWidget;
            BindList(l, static_cast<ListBox&>(c));
            return l;
        }
        case ControlKind::ComboBox: {
            auto* b = new QComboBox;
            BindCombo(b, static_cast<ComboBox&>(c));
            return b;
        }
        case ControlKind::Option: {
            auto* r = new QRadioButton;
            BindToggle(r, static_cast<Toggle&>(c));
            return r;
        }
        case ControlKind::Check: {
            auto* b = new QCheckBox;
            BindToggle(b, static_cast<Toggle&>(c));
            return b;
        }
        case ControlKind::Slider: {
            auto* s = new QSlider(Qt::Horizontal);
            BindSlider(s, static_cast<Slider&>(c));
            return s;
        }
        default:
            return nullptr;  // menus, toolbars, panels and tabs need a layout of their own
    }
}

}  // namespace

QWidget* MakeGenericWindow(Screen& screen) {
    auto* window = new QWidget;
    auto* outer = new QVBoxLayout(window);
    auto* scroll = new QScrollArea;
    scroll->setWidgetResizable(true);
    auto* inner = new QWidget;
    auto* column = new QVBoxLayout(inner);
    for (Control* c : screen.controls()) {
        if (QWidget* w = widgetFor(*c)) column->addWidget(w);
    }
    column->addStretch();
    scroll->setWidget(inner);
    outer->addWidget(scroll);
    window->resize(480, 400);
    return window;
}

}  // namespace ketrel
