#pragma once
#include <QWidget>
#include <filesystem>

namespace ketrel {

class FrmHelp;
class FrmAbout;
class FrmAboutHardware;

// The help viewer: the topic list beside a rich-text browser of the page; pictures and links
// of a page resolve in the help folder.
QWidget* MakeHelpWindow(FrmHelp& s, const std::filesystem::path& helpFolder);
// The about screen: the program's icon, name, version and folder.
QWidget* MakeAboutWindow(FrmAbout& s);
// The about-hardware screen: the selected interface above the table of the four devices.
QWidget* MakeAboutHardwareWindow(FrmAboutHardware& s);

}  // namespace ketrel
