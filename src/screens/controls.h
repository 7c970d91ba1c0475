#pragma once
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "screens/observable.h"

namespace ketrel {

class Screen;

// Colours are 0xRRGGBB; kDefaultColor leaves the view's own colour.
inline constexpr std::int64_t kDefaultColor = -1;
inline constexpr std::int64_t kLightGreen = 0xC0FFC0;

// What a control is, so that views and exporters can treat each kind alike.
enum class ControlKind {
    Field,
    Grid,
    ListBox,
    ComboBox,
    Option,
    Check,
    Menu,
    ToolButton,
    Panel,
    Slider,
    Tabs,
    ProgressBar,
    Picture,
    Line,
    Shape
};

// The common part of every named control on a screen: name, index in its set, enabled,
// visible, tool tip, and the design-time state it returns to when its screen unloads.
class Control : public Observable {
  public:
    Control(Screen* owner, std::string name, int index = -1);
    virtual ControlKind kind() const = 0;

    const std::string& name() const { return name_; }
    int index() const { return index_; }
    // "lblCoolant" or "Label1(3)".
    std::string fullName() const;
    Screen* screen() const { return owner_; }

    bool enabled() const { return enabled_; }
    void setEnabled(bool on);
    bool visible() const { return visible_; }
    void setVisible(bool on);
    const std::string& toolTip() const { return toolTip_; }
    void setToolTip(const std::string& t);
    // Runs when the user moves on from the control after typing in it (the view's focus left).
    std::function<void()> onLeave;

    // Remembers the present state as the design state.
    void markDesign();
    // Returns to the design state (done when the screen unloads).
    void restoreDesign();

  protected:
    virtual void saveDesignState() = 0;
    virtual void restoreDesignState() = 0;

  private:
    Screen* owner_;
    std::string name_;
    int index_;
    bool enabled_ = true, visible_ = true;
    std::string toolTip_;
    bool dEnabled_ = true, dVisible_ = true;
    std::string dToolTip_;
};

// A label, text box, picture or button: text (caption), picture, colours, and the change and
// click handlers. The change handler runs whenever the text changes.
class Field : public Control {
  public:
    using Control::Control;
    ControlKind kind() const override { return ControlKind::Field; }

    const std::string& text() const { return s_.text; }
    void setText(const std::string& t);
    const std::string& picture() const { return s_.picture; }
    void setPicture(const std::string& p);
    std::int64_t foreColor() const { return s_.fore; }
    void setForeColor(std::int64_t c);
    std::int64_t backColor() const { return s_.back; }
    void setBackColor(std::int64_t c);
    // Runs the click handler if the field is enabled.
    void click();

    std::function<void()> onChange;
    std::function<void()> onClick;

  protected:
    void saveDesignState() override { d_ = s_; }
    void restoreDesignState() override { s_ = d_; }

  private:
    struct State {
        std::string text, picture;
        std::int64_t fore = kDefaultColor, back = kDefaultColor;
    } s_, d_;
};

enum class Align { Left, Center, Right };

// A table of text cells with colours, column widths (in twips) and alignment.
class Grid : public Control {
  public:
    Grid(Screen* owner, std::string name, int rows = 2, int cols = 2);
    ControlKind kind() const override { return ControlKind::Grid; }

    int rows() const { return s_.rows; }
    int cols() const { return s_.cols; }
    void setRows(int n);
    void setCols(int n);
    const std::string& text(int r, int c) const;
    void setText(int r, int c, const std::string& t);
    std::int64_t cellBackColor(int r, int c) const;
    void setCellBackColor(int r, int c, std::int64_t color);
    int colWidth(int c) const;
    void setColWidth(int c, int width);
    Align colAlign(int c) const;
    void setColAlign(int c, Align a);
    // Empties every cell's text and colour; keeps rows, columns and widths.
    void clear();
    // The pointer rests on cell (row, col); views call this and it runs onMouseMove.
    void mouseMove(int row, int col);
    std::function<void(int row, int col)> onMouseMove;

  protected:
    void saveDesignState() override { d_ = s_; }
    void restoreDesignState() override { s_ = d_; }

  private:
    struct Cell {
        std::string text;
        std::int64_t back = kDefaultColor;
    };
    void resize();
    struct State {
        int rows = 0, cols = 0;
        std::vector<Cell> cells;
        std::vector<int> widths;
        std::vector<Align> aligns;
    } s_, d_;
};

// A list of text rows.
class ListBox : public Control {
  public:
    using Control::Control;
    ControlKind kind() const override { return ControlKind::ListBox; }
    int count() const { return int(s_.items.size()); }
    const std::string& item(int i) const { return s_.items.at(std::size_t(i)); }
    const std::vector<std::string>& items() const { return s_.items; }
    void addItem(const std::string& t);
    void removeItem(int i);
    void clear();
    int listIndex() const { return s_.index; }
    void setListIndex(int i);

  protected:
    void saveDesignState() override { d_ = s_; }
    void restoreDesignState() override { s_ = d_; }

  private:
    struct State {
        std::vector<std::string> items;
        int index = -1;
    } s_, d_;
};

// A drop-down list with an edit text; onChange runs when the user picks or types.
class ComboBox : public Control {
  public:
    using Control::Control;
    ControlKind kind() const override { return ControlKind::ComboBox; }
    const std::vector<std::string>& items() const { return s_.items; }
    int count() const { return int(s_.items.size()); }
    void addItem(const std::string& t);
    void clear();
    const std::string& text() const { return s_.text; }
    // Sets the text; selects the matching item if there is one. Runs onChange if it changed.
    void setText(const std::string& t);
    int listIndex() const { return s_.index; }
    void setListIndex(int i);
    std::function<void()> onChange;

  protected:
    void saveDesignState() override { d_ = s_; }
    void restoreDesignState() override { s_ = d_; }

  private:
    struct State {
        std::vector<std::string> items;
        std::string text;
        int index = -1;
    } s_, d_;
};

// An option button or a check box: caption and value. Setting the value to True (option) or
// changing it (check box) runs onClick, as a click would.
class Toggle : public Control {
  public:
    Toggle(Screen* owner, std::string name, ControlKind kind, int index = -1)
        : Control(owner, std::move(name), index), kind_(kind) {}
    ControlKind kind() const override { return kind_; }
    const std::string& caption() const { return s_.caption; }
    void setCaption(const std::string& c);
    bool value() const { return s_.value; }
    void setValue(bool v);
    // What a user's click does.
    void click();
    std::function<void()> onClick;
    // Option buttons of one group clear each other.
    void setGroup(std::vector<Toggle*> group) { group_ = std::move(group); }

  protected:
    void saveDesignState() override { d_ = s_; }
    void restoreDesignState() override { s_ = d_; }

  private:
    ControlKind kind_;
    struct State {
        std::string caption;
        bool value = false;
    } s_, d_;
    std::vector<Toggle*> group_;
};

// A menu entry: caption, checked, and its click.
class MenuItem : public Control {
  public:
    MenuItem(Screen* owner, std::string name, std::string caption, MenuItem* parent = nullptr,
             std::string shortcut = {});
    ControlKind kind() const override { return ControlKind::Menu; }
    const std::string& caption() const { return s_.caption; }
    void setCaption(const std::string& c);
    bool checked() const { return s_.checked; }
    void setChecked(bool on);
    MenuItem* parent() const { return parent_; }
    const std::vector<MenuItem*>& children() const { return children_; }
    const std::string& shortcut() const { return shortcut_; }
    // Runs onClick if the item and its parents are enabled.
    void click();
    std::function<void()> onClick;

  protected:
    void saveDesignState() override { d_ = s_; }
    void restoreDesignState() override { s_ = d_; }

  private:
    MenuItem* parent_;
    std::vector<MenuItem*> children_;
    std::string shortcut_;
    struct State {
        std::string caption;
        bool checked = false;
    } s_, d_;
};

// A toolbar button, known by number (from 1) and by key.
class ToolButton : public Control {
  public:
    ToolButton(Screen* owner, int number, std::string key, std::string caption, std::string tip,
               bool separator = false);
    ControlKind kind() const override { return ControlKind::ToolButton; }
    const std::string& key() const { return key_; }
    const std::string& caption() const { return caption_; }
    bool separator() const { return separator_; }
    // Runs onClick if enabled.
    void click();
    std::function<void()> onClick;

  protected:
    void saveDesignState() override {}
    void restoreDesignState() override {}

  private:
    std::string key_, caption_;
    bool separator_;
};

// A panel of the status bar: text and picture.
class StatusPanel : public Control {
  public:
    using Control::Control;
    ControlKind kind() const override { return ControlKind::Panel; }
    const std::string& text() const { return s_.text; }
    void setText(const std::string& t);
    const std::string& picture() const { return s_.picture; }
    void setPicture(const std::string& p);

  protected:
    void saveDesignState() override { d_ = s_; }
    void restoreDesignState() override { s_ = d_; }

  private:
    struct State {
        std::string text, picture;
    } s_, d_;
};

// A slider with a range; onChange runs when the value changes.
class Slider : public Control {
  public:
    Slider(Screen* owner, std::string name, int min, int max);
    ControlKind kind() const override { return ControlKind::Slider; }
    int value() const { return s_.value; }
    void setValue(int v);
    int min() const { return min_; }
    int max() const { return max_; }
    std::function<void()> onChange;

  protected:
    void saveDesignState() override { d_ = s_; }
    void restoreDesignState() override { s_ = d_; }

  private:
    int min_, max_;
    struct State {
        int value = 0;
    } s_, d_;
};

// A tab control: captions and the current tab; onClick(previous) runs when the tab changes.
class Tabs : public Control {
  public:
    Tabs(Screen* owner, std::string name, std::vector<std::string> captions);
    ControlKind kind() const override { return ControlKind::Tabs; }
    int count() const { return int(captions_.size()); }
    const std::string& caption(int i) const { return captions_.at(std::size_t(i)); }
    int tab() const { return s_.tab; }
    void setTab(int i);
    const std::string& icon(int i) const { return s_.icons.at(std::size_t(i)); }
    void setIcon(int i, const std::string& name);
    std::function<void(int previous)> onClick;

  protected:
    void saveDesignState() override { d_ = s_; }
    void restoreDesignState() override { s_ = d_; }

  private:
    std::vector<std::string> captions_;
    struct State {
        int tab = 0;
        std::vector<std::string> icons;
    } s_, d_;
};

// An indexed set of controls sharing one name, such as Label1(0..139); items are made on
// first reference.
template <class T>
class ControlArray {
  public:
    ControlArray(Screen* owner, std::string name) : owner_(owner), name_(std::move(name)) {}
    T& operator[](int i) {
        auto it = items_.find(i);
        if (it == items_.end()) it = items_.emplace(i, std::make_unique<T>(owner_, name_, i)).first;
        return *it->second;
    }
    bool has(int i) const { return items_.count(i) != 0; }
    const std::string& name() const { return name_; }
    std::vector<int> indices() const {
        std::vector<int> v;
        for (auto& [i, p] : items_)
            v.push_back(i);
        return v;
    }

  private:
    Screen* owner_;
    std::string name_;
    std::map<int, std::unique_ptr<T>> items_;
};

}  // namespace ketrel
