#pragma once
#include <QWidget>
#include <vector>

#include "screens/picture_box.h"

namespace ketrel {

// Paints a picture of the logic, smooth and antialiased, with the lines placed over it (a
// gauge's needle); it follows every change of either. No logic: it only draws.
class PictureView : public QWidget {
  public:
    PictureView(PictureBox& picture, std::vector<LineShape*> overlays, QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    // Repaints at most once a frame, however often the logic draws in between.
    void scheduleRepaint();
    PictureBox& picture_;
    std::vector<LineShape*> overlays_;
    bool repaintPending_ = false;
};

// Paints a bar whose width, colour and fill follow a shape of the logic.
class ShapeView : public QWidget {
  public:
    ShapeView(Shape& shape, int heightPixels, QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Shape& shape_;
};

}  // namespace ketrel
