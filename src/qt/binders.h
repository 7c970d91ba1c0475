#pragma once
#include <functional>

#include "screens/controls.h"

class QAbstractButton;
class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QObject;
class QPushButton;
class QString;
class QListWidget;
class QSlider;
class QTabWidget;
class QTableWidget;
class QWidget;

namespace ketrel {

// Binders make a Qt widget follow one control of a screen: every change of the control
// redraws the widget, and the widget's signals call the control's own operations (click,
// setText, setTab...). They hold no logic; the binding ends with the widget.

// Runs redraw now and after every change of the observable, for as long as owner lives.
void Follow(QObject* owner, Observable& model, std::function<void()> redraw);

void BindLabel(QLabel* w, Field& f);              // text or picture, colours, state
void BindButton(QAbstractButton* w, Field& f);    // caption, state; click -> Field::click
QPushButton* MakeButton(Field& f);                // a push button named and bound to f
QString ObjectName(const Control& c);             // the widget name of a control: its full name
void BindLineEdit(QLineEdit* w, Field& f);        // text both ways
void BindPicture(QLabel* w, Field& f, int size);  // a field shown by its picture only
// The pointer over a cell calls Grid::mouseMove; the tool tip shown is the grid's own.
void BindGrid(QTableWidget* w, Grid& g);
void BindList(QListWidget* w, ListBox& l);
void BindCombo(QComboBox* w, ComboBox& c);
// A combo box the user may also type in; leaving it runs the control's onLeave.
void BindEditableCombo(QComboBox* w, ComboBox& c);
void BindToggle(QAbstractButton* w, Toggle& t);  // a QRadioButton or a QCheckBox
void BindMenu(QAction* a, MenuItem& m);
void BindToolButton(QAction* a, ToolButton& b);
void BindPanel(QLabel* w, StatusPanel& p);
void BindSlider(QSlider* w, Slider& s);
void BindTabs(QTabWidget* w, Tabs& t);
// Only the enabled and visible state of a control, on any widget.
void BindState(QWidget* w, Control& c);
// A click of the left button on any widget (a picture, a label) runs Field::click.
void BindClick(QWidget* w, Field& f);

// Pixels of a width in screen units (twips, 15 to a pixel).
inline int TwipsToPixels(int twips) {
    return twips / 15;
}

}  // namespace ketrel
