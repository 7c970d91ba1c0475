#pragma once
#include <QIcon>
#include <string>

namespace ketrel {

// The picture of a menu entry or toolbar button, by the control's name (mnuFileOpen,
// "tb" and a toolbar key: tbConnect) from the program's SVG icon set; a null icon for controls
// without one.
QIcon IconFor(const std::string& controlName);
// The program's own icon, for its windows.
QIcon AppIcon();

}  // namespace ketrel
