#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "screens/controls.h"

namespace ketrel {

// One drawing operation kept by a picture, in the picture's pixels.
struct PictureOp {
    enum class Kind { Line, FillRect, Text };
    Kind kind = Kind::Line;
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;  // a line's ends; a rectangle's corner and size
    std::int64_t color = 0;                 // 0xRRGGBB
    int width = 1;                          // pen width of a line, point size of a text
    std::string text;
};

// A picture the logic draws on: a background colour and the operations drawn since the last
// clear, kept as a list so that any view can paint them at its own quality. A block scroll
// moves everything left; what leaves the picture is forgotten, so the list stays as short as
// what can be seen.
class PictureBox : public Control {
  public:
    PictureBox(Screen* owner, std::string name, int index = -1) : Control(owner, name, index) {}
    PictureBox(Screen* owner, std::string name, int width, int height);
    ControlKind kind() const override { return ControlKind::Picture; }

    int width() const { return s_.width; }
    int height() const { return s_.height; }
    void setSize(int width, int height);
    std::int64_t backColor() const { return s_.back; }
    const std::vector<PictureOp>& ops() const { return s_.ops; }
    // Counts the changes, so a view or a test can tell that something was drawn.
    std::uint64_t revision() const { return revision_; }

    // Forgets every drawing and fills the picture with a colour.
    void clear(std::int64_t color);
    void line(double x1, double y1, double x2, double y2, std::int64_t color, int width = 1);
    void fillRect(double x, double y, double w, double h, std::int64_t color);
    // Text with its top left corner at (x, y).
    void text(double x, double y, const std::string& t, std::int64_t color, int pointSize = 8);
    // Moves the whole picture n pixels left; the strip on the right shows the background.
    void scrollLeft(int n);

  protected:
    void saveDesignState() override { d_ = s_; }
    void restoreDesignState() override { s_ = d_; }

  private:
    void add(PictureOp op);
    struct State {
        int width = 0, height = 0;
        std::int64_t back = 0;
        std::vector<PictureOp> ops;
    } s_, d_;
    std::uint64_t revision_ = 0;
};

// A line placed on a screen, such as a gauge's needle: two ends in pixels, colour and width.
class LineShape : public Control {
  public:
    using Control::Control;
    ControlKind kind() const override { return ControlKind::Line; }
    double x1() const { return s_.x1; }
    double y1() const { return s_.y1; }
    double x2() const { return s_.x2; }
    double y2() const { return s_.y2; }
    std::int64_t color() const { return s_.color; }
    int width() const { return s_.width; }
    void setEnds(double x1, double y1, double x2, double y2);
    // Moves the second end only, as a needle turns about the first.
    void setEnd(double x2, double y2) { setEnds(s_.x1, s_.y1, x2, y2); }
    void setPen(std::int64_t color, int width);

  protected:
    void saveDesignState() override { d_ = s_; }
    void restoreDesignState() override { s_ = d_; }

  private:
    struct State {
        double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
        std::int64_t color = 0;
        int width = 1;
    } s_, d_;
};

// How a shape is filled.
enum class FillStyle { Solid = 0, UpwardDiagonal = 4 };

// A filled rectangle whose width shows a value, such as a bar of the tachometer. Width in
// twips, as the bars are measured.
class Shape : public Control {
  public:
    using Control::Control;
    ControlKind kind() const override { return ControlKind::Shape; }
    int widthTwips() const { return s_.width; }
    void setWidthTwips(int w);
    std::int64_t fillColor() const { return s_.color; }
    void setFillColor(std::int64_t c);
    FillStyle fillStyle() const { return s_.style; }
    void setFillStyle(FillStyle f);

  protected:
    void saveDesignState() override { d_ = s_; }
    void restoreDesignState() override { s_ = d_; }

  private:
    struct State {
        int width = 0;
        std::int64_t color = 0;
        FillStyle style = FillStyle::Solid;
    } s_, d_;
};

}  // namespace ketrel
