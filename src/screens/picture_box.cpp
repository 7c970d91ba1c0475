#include "screens/picture_box.h"

#include <algorithm>

namespace ketrel {

PictureBox::PictureBox(Screen* owner, std::string name, int width, int height)
    : Control(owner, std::move(name)) {
    s_.width = width;
    s_.height = height;
}

void PictureBox::setSize(int width, int height) {
    if (s_.width == width && s_.height == height) return;
    s_.width = width;
    s_.height = height;
    ++revision_;
    notify();
}

void PictureBox::clear(std::int64_t color) {
    s_.back = color;
    s_.ops.clear();
    ++revision_;
    notify();
}

void PictureBox::add(PictureOp op) {
    s_.ops.push_back(std::move(op));
    ++revision_;
    notify();
}

void PictureBox::line(double x1, double y1, double x2, double y2, std::int64_t color, int width) {
    add({PictureOp::Kind::Line, x1, y1, x2, y2, color, width, {}});
}

void PictureBox::fillRect(double x, double y, double w, double h, std::int64_t color) {
    add({PictureOp::Kind::FillRect, x, y, w, h, color, 1, {}});
}

void PictureBox::text(double x, double y, const std::string& t, std::int64_t color, int pointSize) {
    add({PictureOp::Kind::Text, x, y, 0, 0, color, pointSize, t});
}

void PictureBox::scrollLeft(int n) {
    for (PictureOp& op : s_.ops) {
        op.x1 -= n;
        if (op.kind == PictureOp::Kind::Line) op.x2 -= n;
    }
    // A text's width is not known here: it goes once its corner is a picture's width away.
    std::erase_if(s_.ops, [this](const PictureOp& op) {
        switch (op.kind) {
            case PictureOp::Kind::Line:
                return std::max(op.x1, op.x2) < 0;
            case PictureOp::Kind::FillRect:
                return op.x1 + op.x2 < 0;
            case PictureOp::Kind::Text:
                return op.x1 < -s_.width;
        }
        return false;
    });
    ++revision_;
    notify();
}

void LineShape::setEnds(double x1, double y1, double x2, double y2) {
    if (s_.x1 == x1 && s_.y1 == y1 && s_.x2 == x2 && s_.y2 == y2) return;
    s_.x1 = x1;
    s_.y1 = y1;
    s_.x2 = x2;
    s_.y2 = y2;
    notify();
}

void LineShape::setPen(std::int64_t color, int width) {
    if (s_.color == color && s_.width == width) return;
    s_.color = color;
    s_.width = width;
    notify();
}

void Shape::setWidthTwips(int w) {
    if (s_.width == w) return;
    s_.width = w;
    notify();
}

void Shape::setFillColor(std::int64_t c) {
    if (s_.color == c) return;
    s_.color = c;
    notify();
}

void Shape::setFillStyle(FillStyle f) {
    if (s_.style == f) return;
    s_.style = f;
    notify();
}

}  // namespace ketrel
