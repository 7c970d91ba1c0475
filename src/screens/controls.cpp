#include "screens/controls.h"

#include <algorithm>

#include "screens/screen.h"

namespace ketrel {

Control::Control(Screen* owner, std::string name, int index)
    : owner_(owner), name_(std::move(name)), index_(index) {
    if (owner_) owner_->registerControl(this);
}

std::string Control::fullName() const {
    if (index_ < 0) return name_;
    return name_ + "(" + std::to_string(index_) + ")";
}

void Control::setEnabled(bool on) {
    if (enabled_ == on) return;
    enabled_ = on;
    notify();
}

void Control::setVisible(bool on) {
    if (visible_ == on) return;
    visible_ = on;
    notify();
}

void Control::setToolTip(const std::string& t) {
    if (toolTip_ == t) return;
    toolTip_ = t;
    notify();
}

void Control::markDesign() {
    dEnabled_ = enabled_;
    dVisible_ = visible_;
    dToolTip_ = toolTip_;
    saveDesignState();
}

void Control::restoreDesign() {
    enabled_ = dEnabled_;
    visible_ = dVisible_;
    toolTip_ = dToolTip_;
    restoreDesignState();
    notify();
}

// ---- Field

void Field::setText(const std::string& t) {
    if (s_.text == t) return;
    s_.text = t;
    notify();
    if (onChange) onChange();
}

void Field::setPicture(const std::string& p) {
    if (s_.picture == p) return;
    s_.picture = p;
    notify();
}

void Field::setForeColor(std::int64_t c) {
    if (s_.fore == c) return;
    s_.fore = c;
    notify();
}

void Field::setBackColor(std::int64_t c) {
    if (s_.back == c) return;
    s_.back = c;
    notify();
}

void Field::click() {
    if (enabled() && onClick) onClick();
}

// ---- Grid

Grid::Grid(Screen* owner, std::string name, int rows, int cols) : Control(owner, std::move(name)) {
    s_.rows = rows;
    s_.cols = cols;
    resize();
    d_ = s_;
}

void Grid::resize() {
    s_.cells.resize(std::size_t(s_.rows) * std::size_t(s_.cols));
    s_.widths.resize(std::size_t(s_.cols), 1000);
    s_.aligns.resize(std::size_t(s_.cols), Align::Left);
}

void Grid::setRows(int n) {
    if (n < 0 || n == s_.rows) return;
    s_.rows = n;
    resize();
    notify();
}

void Grid::setCols(int n) {
    if (n < 0 || n == s_.cols) return;
    // Cells are kept row by row, so a change of width re-lays them out.
    std::vector<Cell> old = s_.cells;
    int oldCols = s_.cols;
    s_.cols = n;
    s_.cells.assign(std::size_t(s_.rows) * std::size_t(n), Cell{});
    for (int r = 0; r < s_.rows; ++r) {
        for (int c = 0; c < std::min(n, oldCols); ++c) {
            s_.cells[std::size_t(r * n + c)] = old[std::size_t(r * oldCols + c)];
        }
    }
    resize();
    notify();
}

namespace {
const std::string kEmpty;
}

const std::string& Grid::text(int r, int c) const {
    if (r < 0 || c < 0 || r >= s_.rows || c >= s_.cols) return kEmpty;
    return s_.cells[std::size_t(r * s_.cols + c)].text;
}

void Grid::setText(int r, int c, const std::string& t) {
    if (r < 0 || c < 0 || r >= s_.rows || c >= s_.cols) return;
    auto& cell = s_.cells[std::size_t(r * s_.cols + c)];
    if (cell.text == t) return;
    cell.text = t;
    notify();
}

std::int64_t Grid::cellBackColor(int r, int c) const {
    if (r < 0 || c < 0 || r >= s_.rows || c >= s_.cols) return kDefaultColor;
    return s_.cells[std::size_t(r * s_.cols + c)].back;
}

void Grid::setCellBackColor(int r, int c, std::int64_t color) {
    if (r < 0 || c < 0 || r >= s_.rows || c >= s_.cols) return;
    auto& cell = s_.cells[std::size_t(r * s_.cols + c)];
    if (cell.back == color) return;
    cell.back = color;
    notify();
}

int Grid::colWidth(int c) const {
    return (c >= 0 && c < s_.cols) ? s_.widths[std::size_t(c)] : 0;
}

void Grid::setColWidth(int c, int width) {
    if (c < 0 || c >= s_.cols) return;
    s_.widths[std::size_t(c)] = width;
    notify();
}

Align Grid::colAlign(int c) const {
    return (c >= 0 && c < s_.cols) ? s_.aligns[std::size_t(c)] : Align::Left;
}

void Grid::setColAlign(int c, Align a) {
    if (c < 0 || c >= s_.cols) return;
    s_.aligns[std::size_t(c)] = a;
    notify();
}

void Grid::clear() {
    for (auto& cell : s_.cells)
        cell = Cell{};
    notify();
}

void Grid::mouseMove(int row, int col) {
    if (onMouseMove) onMouseMove(row, col);
}

// ---- ListBox

void ListBox::addItem(const std::string& t) {
    s_.items.push_back(t);
    notify();
}

void ListBox::removeItem(int i) {
    if (i < 0 || i >= count()) return;
    s_.items.erase(s_.items.begin() + i);
    if (s_.index >= count()) s_.index = count() - 1;
    notify();
}

void ListBox::clear() {
    if (s_.items.empty() && s_.index == -1) return;
    s_.items.clear();
    s_.index = -1;
    notify();
}

void ListBox::setListIndex(int i) {
    if (i < -1 || i >= count() || i == s_.index) return;
    s_.index = i;
    notify();
}

// ---- ComboBox

void ComboBox::addItem(const std::string& t) {
    s_.items.push_back(t);
    notify();
}

void ComboBox::clear() {
    s_.items.clear();
    s_.index = -1;
    s_.text.clear();
    notify();
}

void ComboBox::setText(const std::string& t) {
    auto it = std::find(s_.items.begin(), s_.items.end(), t);
    int idx = it == s_.items.end() ? -1 : int(it - s_.items.begin());
    if (s_.text == t && s_.index == idx) return;
    s_.text = t;
    s_.index = idx;
    notify();
    if (onChange) onChange();
}

void ComboBox::setListIndex(int i) {
    if (i < 0 || i >= count()) return;
    setText(s_.items[std::size_t(i)]);
}

// ---- Toggle

void Toggle::setCaption(const std::string& c) {
    if (s_.caption == c) return;
    s_.caption = c;
    notify();
}

void Toggle::setValue(bool v) {
    if (kind() == ControlKind::Option) {
        if (v) {
            for (Toggle* other : group_) {
                if (other != this && other->s_.value) {
                    other->s_.value = false;
                    other->notify();
                }
            }
        }
        bool changed = s_.value != v;
        s_.value = v;
        if (changed) notify();
        // An option set to True reports a click even when it already was.
        if (v && onClick) onClick();
        return;
    }
    if (s_.value == v) return;
    s_.value = v;
    notify();
    if (onClick) onClick();
}

void Toggle::click() {
    if (!enabled()) return;
    if (kind() == ControlKind::Option) {
        setValue(true);
    } else {
        setValue(!s_.value);
    }
}

// ---- MenuItem

MenuItem::MenuItem(Screen* owner, std::string name, std::string caption, MenuItem* parent,
                   std::string shortcut)
    : Control(owner, std::move(name)), parent_(parent), shortcut_(std::move(shortcut)) {
    s_.caption = std::move(caption);
    d_ = s_;
    if (parent_) parent_->children_.push_back(this);
}

void MenuItem::setCaption(const std::string& c) {
    if (s_.caption == c) return;
    s_.caption = c;
    notify();
}

void MenuItem::setChecked(bool on) {
    if (s_.checked == on) return;
    s_.checked = on;
    notify();
}

void MenuItem::click() {
    for (MenuItem* m = this; m; m = m->parent_) {
        if (!m->enabled()) return;
    }
    if (onClick) onClick();
}

// ---- ToolButton

ToolButton::ToolButton(Screen* owner, int number, std::string key, std::string caption,
                       std::string tip, bool separator)
    : Control(owner, "Toolbar1.Buttons", number),
      key_(std::move(key)),
      caption_(std::move(caption)),
      separator_(separator) {
    setToolTip(tip);
}

void ToolButton::click() {
    if (enabled() && !separator_ && onClick) onClick();
}

// ---- StatusPanel

void StatusPanel::setText(const std::string& t) {
    if (s_.text == t) return;
    s_.text = t;
    notify();
}

void StatusPanel::setPicture(const std::string& p) {
    if (s_.picture == p) return;
    s_.picture = p;
    notify();
}

// ---- Slider

Slider::Slider(Screen* owner, std::string name, int min, int max)
    : Control(owner, std::move(name)), min_(min), max_(max) {
    s_.value = min;
    d_ = s_;
}

void Slider::setValue(int v) {
    v = std::clamp(v, min_, max_);
    if (s_.value == v) return;
    s_.value = v;
    notify();
    if (onChange) onChange();
}

// ---- Tabs

Tabs::Tabs(Screen* owner, std::string name, std::vector<std::string> captions)
    : Control(owner, std::move(name)), captions_(std::move(captions)) {
    s_.icons.resize(captions_.size());
    d_ = s_;
}

void Tabs::setTab(int i) {
    if (i < 0 || i >= count() || i == s_.tab) return;
    int previous = s_.tab;
    s_.tab = i;
    notify();
    if (onClick) onClick(previous);
}

void Tabs::setIcon(int i, const std::string& name) {
    if (i < 0 || i >= count()) return;
    s_.icons[std::size_t(i)] = name;
    notify();
}

}  // namespace ketrel
