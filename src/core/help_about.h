#pragma once
#include <filesystem>
#include <string>
#include <vector>

namespace ketrel {

class App;
class FrmHelp;
class FrmAbout;
class FrmAboutHardware;

// One page of Help/: its file name, the title it gives itself and its rich text.
struct HelpTopic {
    std::string file, title, html;
};

// The topics of a help folder, every *.html file in file-name order (the names start with a
// number that sets the order); the title is the page's <title>, else the file name.
std::vector<HelpTopic> ReadHelpTopics(const std::filesystem::path& helpFolder);
// The link targets (href values) a page writes, in page order.
std::vector<std::string> HelpLinks(const std::string& html);
// The topic file a link leads to: the file part of a relative link, without its #anchor;
// empty for a link that leaves the help (a web or mail address) or only moves in the page.
std::string HelpLinkFile(const std::string& target);

// The screens of help and about, made with the application when missing, or null.
FrmHelp* HelpScreen(App& app);
FrmAbout* AboutScreen(App& app);
FrmAboutHardware* AboutHardwareScreen(App& app);
// Shows topic index of the help screen's list; false, and nothing changed, when there is none.
bool ShowHelpTopic(App& app, int index);
// Follows a link of the page shown: a link to another topic shows it. False when the target is
// not a topic of the list.
bool FollowHelpLink(App& app, const std::string& target);
// Fills the about-hardware grid from the converter table, with the firmware the converter
// gave (ConverterVersion) in the row of the device OBDIIHardware names.
void FillAboutHardware(App& app);
// Makes the three screens (the Help menu's entries show them) and installs their handlers.
void InstallHelpAbout(App& app);

}  // namespace ketrel
