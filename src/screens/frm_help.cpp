#include "screens/frm_help.h"

namespace ketrel {

FrmHelp::FrmHelp(EventLoop& loop) : Screen(loop, "frmHelp", "Ketrel Help Topics") {
    cmdPrevious.setText("<< &Previous");
    cmdNext.setText("&Next >>");
    cmdClose.setText("&Close");
    markDesign();
}

void FrmHelp::chooseTopic(int index) {
    if (onChooseTopic) onChooseTopic(index);
}

void FrmHelp::followLink(const std::string& target) {
    if (onFollowLink) onFollowLink(target);
}

void FrmHelp::resetVariables() {
    TopicFiles.clear();
    CurrentTopic = -1;
}

FrmAbout::FrmAbout(EventLoop& loop) : Screen(loop, "frmAbout", "About Ketrel") {
    lblTitle.setText("Ketrel (OBD II Generic)");
    lblDescription.setText(
        "A diagnostic tool for cars that follow the OBD II standard: live values, trouble codes "
        "and their texts, the freeze frame, monitor status, the on-board test results and "
        "recorded sessions, through four kinds of link device.");
    cmdOK.setText("OK");
    markDesign();
}

FrmAboutHardware::FrmAboutHardware(EventLoop& loop)
    : Screen(loop, "frmAboutHardware", "About Hardware Interface"), RefreshTimer(makeTimer(500)) {
    const char* headers[] = {"Device",      "Type",     "Maker",
                             "Web Address", "Firmware", "Supported Protocols"};
    const int widths[] = {2600, 3000, 2400, 3000, 2200, 4200};
    for (int c = 0; c < 6; ++c) {
        gridHardware.setText(0, c, headers[c]);
        gridHardware.setColWidth(c, widths[c]);
    }
    cmdOK.setText("OK");
    markDesign();
}

}  // namespace ketrel
