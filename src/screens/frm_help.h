#pragma once
#include <functional>
#include <string>
#include <vector>

#include "screens/screen.h"

namespace ketrel {

// The help viewer: the list of topics of Help/ and the page of the one chosen, in rich text.
class FrmHelp : public Screen {
  public:
    explicit FrmHelp(EventLoop& loop);

    // One title per topic, in the order of TopicFiles.
    ListBox lstTopics{this, "lstTopics"};
    // The rich text (HTML) of the topic shown.
    Field txtPage{this, "txtPage"};
    Field cmdPrevious{this, "cmdPrevious"}, cmdNext{this, "cmdNext"}, cmdClose{this, "cmdClose"};

    // The file name of each topic (under Help/) and the topic shown, -1 before the first.
    std::vector<std::string> TopicFiles;
    int CurrentTopic = -1;

    // The user picked a topic from the list.
    void chooseTopic(int index);
    std::function<void(int)> onChooseTopic;
    // The user followed a link of the page, its target as the page writes it.
    void followLink(const std::string& target);
    std::function<void(const std::string&)> onFollowLink;

  protected:
    void resetVariables() override;
};

// The about screen: the program's name, version and what it is for.
class FrmAbout : public Screen {
  public:
    explicit FrmAbout(EventLoop& loop);

    Field lblTitle{this, "lblTitle"}, lblVersion{this, "lblVersion"},
        lblDescription{this, "lblDescription"}, lblFolder{this, "lblFolder"};
    Field cmdOK{this, "cmdOK"};
};

// The about-hardware screen: for each link device its type, maker, web address, firmware and
// supported protocols, the one chosen in the settings marked.
class FrmAboutHardware : public Screen {
  public:
    explicit FrmAboutHardware(EventLoop& loop);

    // The device OBDIIHardware names.
    Field lblHardware{this, "lblHardware"};
    // A header row, then one row per device: Device, Type, Maker, Web Address, Firmware,
    // Supported Protocols.
    Grid gridHardware{this, "gridHardware", 5, 6};
    Field cmdOK{this, "cmdOK"};
    // Refreshes the firmware column while the screen is open: the text converter answers the
    // firmware request on its next exchange.
    Timer& RefreshTimer;
};

}  // namespace ketrel
