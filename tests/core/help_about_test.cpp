#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "core/help_about.h"
#include "core_fixture.h"
#include "link/converters.h"
#include "screens/frm_help.h"

namespace ketrel::test {
namespace {

namespace fs = std::filesystem;

// The shipped topics, copied into the application folder as the build puts them beside the
// program.
struct HelpApp : StartedApp {
    HelpApp() {
        fs::copy(KETREL_HELP_DIR, app->appPath() / "Help",
                 fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    }
};

TEST(HelpTopics, EveryTopicLoadsAndEveryLinkReachesATopic) {
    HelpApp t;
    App& app = *t.app;
    app.frmMain().mnuHelpHelp.click();
    FrmHelp& s = *HelpScreen(app);
    ASSERT_TRUE(s.visible());
    ASSERT_GE(s.TopicFiles.size(), 10u);
    ASSERT_EQ(s.lstTopics.count(), int(s.TopicFiles.size()));
    EXPECT_EQ(s.CurrentTopic, 0);
    EXPECT_FALSE(s.cmdPrevious.enabled());

    std::set<std::string> reached{s.TopicFiles[0]};
    for (int i = 0; i < int(s.TopicFiles.size()); ++i) {
        ASSERT_TRUE(ShowHelpTopic(app, i));
        const std::string page = s.txtPage.text();
        EXPECT_NE(page.find("<h1>"), std::string::npos) << s.TopicFiles[size_t(i)];
        EXPECT_NE(s.lstTopics.item(i), s.TopicFiles[size_t(i)]) << "a topic without a title";
        for (const std::string& link : HelpLinks(page)) {
            const std::string file = HelpLinkFile(link);
            if (file.empty()) continue;
            ASSERT_TRUE(FollowHelpLink(app, link)) << s.TopicFiles[size_t(i)] << " -> " << link;
            EXPECT_EQ(s.TopicFiles[size_t(s.CurrentTopic)], file);
            reached.insert(file);
            ShowHelpTopic(app, i);
        }
    }
    // Every page can be reached by its links, from the contents on.
    EXPECT_EQ(reached.size(), s.TopicFiles.size());

    // Paging ends at the last topic; a link that leaves the help is not followed.
    s.cmdNext.click();
    EXPECT_EQ(s.CurrentTopic, int(s.TopicFiles.size()) - 1);
    EXPECT_FALSE(s.cmdNext.enabled());
    EXPECT_FALSE(FollowHelpLink(app, "https://example.com/x.html"));
    EXPECT_FALSE(FollowHelpLink(app, "99_missing.html"));
    s.cmdClose.click();
    EXPECT_FALSE(s.loaded());
}

TEST(HelpTopics, LinkTargetsAndAnEmptyFolder) {
    EXPECT_EQ(HelpLinks("<A HREF=\"a.html#x\">a</A> <a href='b.html'>"),
              (std::vector<std::string>{"a.html#x", "b.html"}));
    EXPECT_EQ(HelpLinkFile("a.html#x"), "a.html");
    EXPECT_EQ(HelpLinkFile("sub/b.html"), "b.html");
    EXPECT_EQ(HelpLinkFile("mailto:x@example.com"), "");

    StartedApp t;  // no topics in its folder
    t->frmMain().mnuHelpHelp.click();
    FrmHelp& s = *HelpScreen(*t);
    EXPECT_TRUE(s.TopicFiles.empty());
    EXPECT_NE(s.txtPage.text().find("No help topics"), std::string::npos);
    s.cmdNext.click();  // nothing to page to
    EXPECT_EQ(s.CurrentTopic, -1);
}

TEST(AboutScreens, VersionAndHardwareTable) {
    StartedApp t;
    App& app = *t.app;
    app.frmMain().mnuHelpAbout.click();
    EXPECT_EQ(AboutScreen(app)->lblVersion.text(), std::string("Version ") + kAppVersion);

    // The converter's own firmware answer shows in its row only; the others keep the table's.
    struct Case {
        const char* hardware;
        std::string version;
    } cases[] = {{kDorvane, "1.4C"}, {kBr3, ""}, {kKesh, "ignored"}};
    for (const Case& c : cases) {
        app.OBDIIHardware = c.hardware;
        app.ConverterVersion = c.version;
        app.Connected = true;
        app.frmMain().mnuAboutHardware.setEnabled(true);
        app.frmMain().mnuAboutHardware.click();
        EXPECT_TRUE(app.RequestFirmware);
        FrmAboutHardware& s = *AboutHardwareScreen(app);
        ASSERT_EQ(s.gridHardware.rows(), 5);
        EXPECT_EQ(s.lblHardware.text(), std::string("Selected interface: ") + c.hardware);
        for (int r = 1; r <= 4; ++r) {
            const ConverterDriver& d = Converters()[size_t(r - 1)];
            EXPECT_EQ(s.gridHardware.text(r, 0), d.hardware);
            const bool chosen = c.hardware == std::string(d.hardware);
            const std::string own = chosen && !c.version.empty() ? c.version : d.facts.firmware;
            EXPECT_EQ(s.gridHardware.text(r, 4), own) << c.hardware << " row " << r;
        }
        s.cmdOK.click();
    }
    // A version that arrives while the screen is open shows on the next refresh.
    app.OBDIIHardware = kDorvane;
    app.ConverterVersion.clear();
    app.frmMain().mnuAboutHardware.click();
    app.ConverterVersion = "2.0";
    app.loop().sleep(600);
    app.loop().pump();
    EXPECT_EQ(AboutHardwareScreen(app)->gridHardware.text(2, 4), "2.0");
}

}  // namespace
}  // namespace ketrel::test
