#include "core/help_about.h"

#include <algorithm>
#include <fstream>
#include <memory>
#include <sstream>

#include "link/converters.h"
#include "screens/frm_help.h"
#include "state/app.h"

#ifndef KETREL_VERSION
#error "KETREL_VERSION comes from the project version of the build"
#endif

namespace ketrel {

namespace fs = std::filesystem;

namespace {

constexpr std::int64_t kSelectedRow = 0xFFF3B0;  // light yellow
constexpr std::int64_t kPlainRow = 0xFFFFFF;

std::string lower(std::string s) {
    for (char& c : s)
        c = char(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

std::string readFile(const fs::path& p) {
    std::ifstream in(p, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

std::string titleOf(const std::string& html, const std::string& fallback) {
    const std::string low = lower(html);
    const auto open = low.find("<title>");
    if (open == std::string::npos) return fallback;
    const auto start = open + 7;
    const auto close = low.find("</title>", start);
    if (close == std::string::npos) return fallback;
    std::string t = html.substr(start, close - start);
    t.erase(0, t.find_first_not_of(" \t\r\n"));
    t.erase(t.find_last_not_of(" \t\r\n") + 1);
    return t.empty() ? fallback : t;
}

void showPage(FrmHelp& s, const std::vector<HelpTopic>& topics, int index) {
    s.CurrentTopic = index;
    s.txtPage.setText(topics[std::size_t(index)].html);
    s.lstTopics.setListIndex(index);
    s.cmdPrevious.setEnabled(index > 0);
    s.cmdNext.setEnabled(index + 1 < int(topics.size()));
}

// The screen of that name, made when the program has none; null when another screen holds
// the name (a test's stand-in).
template <class T>
T* screenOrMake(App& app, const char* name) {
    if (Screen* s = app.screenByName(name)) return dynamic_cast<T*>(s);
    app.addScreen(std::make_unique<T>(app.loop()));
    return dynamic_cast<T*>(app.screenByName(name));
}

// The help screen's handlers: the list filled on load, paging and links.
void installHelp(App& app, FrmHelp& help) {
    help.onLoad = [&app, &help] {
        for (const HelpTopic& t : ReadHelpTopics(app.appPath() / "Help")) {
            help.TopicFiles.push_back(t.file);
            help.lstTopics.addItem(t.title);
        }
        if (help.TopicFiles.empty()) {
            help.txtPage.setText("<p>No help topics were found in the folder Help.</p>");
            help.cmdPrevious.setEnabled(false);
            help.cmdNext.setEnabled(false);
            return;
        }
        ShowHelpTopic(app, 0);
    };
    help.onChooseTopic = [&app](int i) { ShowHelpTopic(app, i); };
    help.onFollowLink = [&app](const std::string& target) { FollowHelpLink(app, target); };
    help.cmdPrevious.onClick = [&app, &help] { ShowHelpTopic(app, help.CurrentTopic - 1); };
    help.cmdNext.onClick = [&app, &help] { ShowHelpTopic(app, help.CurrentTopic + 1); };
    help.cmdClose.onClick = [&help] { help.unload(); };
}

void installAbout(App& app, FrmAbout& about) {
    about.onLoad = [&app, &about] {
        about.lblVersion.setText(std::string("Version ") + KETREL_VERSION);
        about.lblFolder.setText("Application folder: " + app.appPath().string());
    };
    about.cmdOK.onClick = [&about] { about.unload(); };
}

void installAboutHardware(App& app, FrmAboutHardware& hw) {
    hw.onLoad = [&app, &hw] {
        FillAboutHardware(app);
        hw.RefreshTimer.start();
    };
    hw.onActivate = [&app] { FillAboutHardware(app); };
    hw.RefreshTimer.setHandler([&app] { FillAboutHardware(app); });
    hw.cmdOK.onClick = [&hw] { hw.unload(); };
}

}  // namespace

std::vector<HelpTopic> ReadHelpTopics(const fs::path& helpFolder) {
    std::vector<HelpTopic> topics;
    std::error_code ec;
    for (auto it = fs::directory_iterator(helpFolder, ec); !ec && it != fs::directory_iterator();
         it.increment(ec)) {
        if (!it->is_regular_file(ec) || lower(it->path().extension().string()) != ".html") continue;
        HelpTopic t;
        t.file = it->path().filename().string();
        t.html = readFile(it->path());
        t.title = titleOf(t.html, it->path().stem().string());
        topics.push_back(std::move(t));
    }
    std::sort(topics.begin(), topics.end(),
              [](const HelpTopic& a, const HelpTopic& b) { return a.file < b.file; });
    return topics;
}

std::vector<std::string> HelpLinks(const std::string& html) {
    std::vector<std::string> links;
    const std::string low = lower(html);
    for (auto at = low.find("href="); at != std::string::npos; at = low.find("href=", at + 5)) {
        const auto q = at + 5;
        if (q >= html.size() || (html[q] != '"' && html[q] != '\'')) continue;
        const auto end = html.find(html[q], q + 1);
        if (end == std::string::npos) break;
        links.push_back(html.substr(q + 1, end - q - 1));
    }
    return links;
}

std::string HelpLinkFile(const std::string& target) {
    if (target.find(':') != std::string::npos) return {};  // http:, https:, mailto:, file:
    std::string file = target.substr(0, target.find('#'));
    if (auto slash = file.find_last_of('/'); slash != std::string::npos) file.erase(0, slash + 1);
    return file;
}

FrmHelp* HelpScreen(App& app) {
    return dynamic_cast<FrmHelp*>(app.screenByName("frmHelp"));
}
FrmAbout* AboutScreen(App& app) {
    return dynamic_cast<FrmAbout*>(app.screenByName("frmAbout"));
}
FrmAboutHardware* AboutHardwareScreen(App& app) {
    return dynamic_cast<FrmAboutHardware*>(app.screenByName("frmAboutHardware"));
}

bool ShowHelpTopic(App& app, int index) {
    FrmHelp* s = HelpScreen(app);
    if (!s || index < 0 || index >= int(s->TopicFiles.size())) return false;
    // Pages are read when shown, so an edited page shows as it is now.
    const auto topics = ReadHelpTopics(app.appPath() / "Help");
    if (topics.size() != s->TopicFiles.size()) return false;
    showPage(*s, topics, index);
    return true;
}

bool FollowHelpLink(App& app, const std::string& target) {
    FrmHelp* s = HelpScreen(app);
    if (!s) return false;
    const std::string file = HelpLinkFile(target);
    if (file.empty()) return false;
    for (int i = 0; i < int(s->TopicFiles.size()); ++i)
        if (s->TopicFiles[std::size_t(i)] == file) return ShowHelpTopic(app, i);
    return false;
}

void FillAboutHardware(App& app) {
    FrmAboutHardware* screen = AboutHardwareScreen(app);
    if (!screen) return;
    FrmAboutHardware& s = *screen;
    const auto devices = Converters();
    s.gridHardware.setRows(int(devices.size()) + 1);
    s.lblHardware.setText(app.OBDIIHardware.empty() ? "No interface chosen in the settings"
                                                    : "Selected interface: " + app.OBDIIHardware);
    int row = 1;
    for (const ConverterDriver& d : devices) {
        const bool chosen = app.OBDIIHardware == d.hardware;
        const ConverterFacts& f = d.facts;
        const std::string firmware =
            chosen && !app.ConverterVersion.empty() ? app.ConverterVersion : f.firmware;
        const std::string cells[] = {d.hardware, f.type, f.maker, f.web, firmware, f.protocols};
        for (int c = 0; c < 6; ++c) {
            s.gridHardware.setText(row, c, cells[c]);
            s.gridHardware.setCellBackColor(row, c, chosen ? kSelectedRow : kPlainRow);
        }
        ++row;
    }
}

void InstallHelpAbout(App& app) {
    if (FrmHelp* help = screenOrMake<FrmHelp>(app, "frmHelp")) installHelp(app, *help);
    if (FrmAbout* about = screenOrMake<FrmAbout>(app, "frmAbout")) installAbout(app, *about);
    if (auto* hw = screenOrMake<FrmAboutHardware>(app, "frmAboutHardware"))
        installAboutHardware(app, *hw);
}

}  // namespace ketrel
