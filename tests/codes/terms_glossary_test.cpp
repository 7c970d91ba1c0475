#include <gtest/gtest.h>

#include "codes/terms_glossary.h"
#include "screens/frm_terms.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

std::filesystem::path termsFile(test::TestApp& t) {
    return t.dir.path() / "System" / "Terms.db";
}

TEST(TermsGlossary, ShowsTheBuiltTableInItsOrderUnderItsHeaders) {
    test::TestApp t;
    std::filesystem::create_directories(termsFile(t).parent_path());
    std::filesystem::copy_file(KETREL_SYSTEM_DIR "/Terms.db", termsFile(t));
    InstallTermsGlossary(*t);
    FrmTerms& s = *TermsScreen(*t);
    t->frmMain().show();
    s.show();
    EXPECT_TRUE(t.dialogs.shown().empty());
    EXPECT_FALSE(t->frmMain().enabled());
    const Grid& g = s.MSFlexGrid1;
    ASSERT_EQ(g.rows(), 75);
    ASSERT_EQ(g.cols(), 3);
    EXPECT_EQ(g.text(0, 0) + "|" + g.text(0, 1) + "|" + g.text(0, 2),
              "COMPONENT|OBD II TERMS|OBD I TERMS");
    EXPECT_EQ(g.text(1, 0), "Accelerator Pedal");
    EXPECT_EQ(g.text(19, 0), "Engine Coolant Temperature Sensor");
    EXPECT_EQ(g.text(19, 1), "ECT");
    EXPECT_EQ(g.text(19, 2), "Coolant Temperature Sensor (CTS), Coolant Temp Sender");
    s.mnuFileExit.click();
    EXPECT_TRUE(t->frmMain().enabled());
}

TEST(TermsGlossary, AMissingOrDamagedFileShowsTheErrorBoxAndAnEmptyGrid) {
    struct Case {
        const char* name;
        const char* bytes;  // null: no file
        const char* code;
    } cases[] = {
        {"missing", nullptr, "Code:  14"},
        {"damaged", "this is not a table store, just some bytes of text.....", "Code:  26"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        test::TestApp t;
        std::string bytes;
        for (int i = 0; c.bytes && i < 40; ++i)
            bytes += c.bytes;
        if (c.bytes) test::WriteFile(termsFile(t), bytes);
        InstallTermsGlossary(*t);
        FrmTerms& s = *TermsScreen(*t);
        s.show();
        ASSERT_EQ(t.dialogs.shown().size(), 1u);
        const MessageBox& box = t.dialogs.shown()[0];
        EXPECT_EQ(box.title, "Error");
        EXPECT_EQ(box.icon, MsgIcon::Stop);
        const auto lines = test::Lines(box.text);
        ASSERT_EQ(lines.size(), 3u);
        EXPECT_EQ(lines[0], "There Was An Error");
        EXPECT_EQ(lines[1].rfind("Description:  ", 0), 0u);
        EXPECT_GT(lines[1].size(), std::string("Description:  ").size());
        EXPECT_EQ(lines[2], c.code);
        // The screen stays open over an empty grid with its headers.
        EXPECT_TRUE(s.visible());
        EXPECT_EQ(s.MSFlexGrid1.rows(), 1);
        EXPECT_EQ(s.MSFlexGrid1.text(0, 0), "COMPONENT");
    }
}

}  // namespace
}  // namespace ketrel
