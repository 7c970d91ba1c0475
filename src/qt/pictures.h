#pragma once
#include <QPixmap>
#include <string>

namespace ketrel {

// The pictures the fields name (imgGreen, imgRed, imgConnected...), drawn as small lamps; an
// unknown or empty name gives a null pixmap.
QPixmap PictureFor(const std::string& name, int size = 14);

}  // namespace ketrel
