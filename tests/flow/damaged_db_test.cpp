// The catalogue, the glossary and the fuel samples over table files that were damaged after the
// build made them: cut short, a table gone, a page overwritten. Opening either screen shows the
// error box once, the screen stays usable over an empty grid, and the program goes on.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "codes/terms_glossary.h"
#include "display/displays.h"
#include "display/fuel_economy.h"
#include "platform/sqlite_db.h"
#include "recording/catalogue_fixture.h"
#include "screens/frm_mpg.h"
#include "screens/frm_terms.h"

namespace ketrel::test {
namespace {

namespace fs = std::filesystem;

// A table file of many pages, made from the shipped schema data/db/NAME.sql with 200 rows of
// `insert` and then damaged.
using Damage = std::function<void(const fs::path&, const std::string& table)>;
void MakeDamagedTable(const fs::path& file, const std::string& name, const std::string& table,
                      const std::string& insert, const Damage& damage) {
    fs::create_directories(file.parent_path());
    fs::remove(file);
    {
        SqliteDb db;
        ASSERT_TRUE(db.open(file, true));
        ASSERT_TRUE(db.execScript(ReadFile(std::string(KETREL_DATA_DIR) + "/db/" + name + ".sql") +
                                  ";BEGIN"));
        for (int i = 0; i < 200; ++i)
            ASSERT_TRUE(db.exec(insert, {std::string(200, char('a' + i % 26))}));
        ASSERT_TRUE(db.exec("COMMIT"));
    }
    damage(file, table);
}

struct Damaged {
    const char* name;
    Damage damage;
};

const Damaged kDamages[] = {
    {"cut to half",
     [](const fs::path& f, const std::string&) { fs::resize_file(f, fs::file_size(f) / 2); }},
    {"cut inside its header",
     [](const fs::path& f, const std::string&) { fs::resize_file(f, 60); }},
    {"its table dropped",
     [](const fs::path& f, const std::string& table) {
         SqliteDb db;
         ASSERT_TRUE(db.open(f));
         ASSERT_TRUE(db.exec("DROP TABLE " + table));
     }},
    {"the page under the table overwritten",
     [](const fs::path& f, const std::string&) {
         std::string bytes = ReadFile(f);
         for (std::size_t i = 100; i < bytes.size() && i < 8192; ++i)
             bytes[i] = char(0xA5 ^ (i * 31));
         WriteFile(f, bytes);
     }},
};

// The catalogue and the glossary show the error box once and an empty grid; the fuel economy
// runs without samples. Each screen closes and gives the main window back.
TEST(DamagedDatabase, EachScreenShowsTheErrorOnceAndStaysUsable) {
    for (const Damaged& d : kDamages) {
        SCOPED_TRACE(d.name);
        {
            CatalogueApp a;
            MakeDamagedTable(
                a.t.dir.path() / "System" / "LogRecords.db", "LogRecords", "LogRecords",
                "INSERT INTO LogRecords (\"Name\", \"Frame\") VALUES (?, 1)", d.damage);
            a.open();
            ASSERT_EQ(a.t.dialogs.titles(), std::vector<std::string>{"Error"});
            EXPECT_FALSE(a.t.dialogs.shown()[0].text.empty());
            EXPECT_TRUE(a.s->visible());
            EXPECT_EQ(a.s->gridLog.rows(), 1);
            EXPECT_FALSE(a.s->cmdPlay.enabled());
            EXPECT_FALSE(a.app().frmMain().enabled());
            a.s->mnuFileExit.click();
            EXPECT_FALSE(a.s->visible());
            EXPECT_TRUE(a.app().frmMain().enabled());
        }
        {
            TestApp t;
            MakeDamagedTable(t.dir.path() / "System" / "Terms.db", "Terms", "Terms",
                             "INSERT INTO Terms VALUES (?, 'ECT', 'CTS')", d.damage);
            InstallTermsGlossary(*t);
            FrmTerms& s = *TermsScreen(*t);
            t->frmMain().show();
            s.show();
            ASSERT_EQ(t.dialogs.titles(), std::vector<std::string>{"Error"});
            EXPECT_EQ(t.dialogs.shown()[0].text.rfind("There Was An Error\nDescription:  ", 0), 0u);
            EXPECT_TRUE(s.visible());
            EXPECT_EQ(s.MSFlexGrid1.rows(), 1);
            s.mnuFileExit.click();
            EXPECT_TRUE(t->frmMain().enabled());
        }
        TestApp t;
        MakeDamagedTable(MpgStorePath(t.dir.path()), "MPGAve1", "SampleP1",
                         "INSERT INTO SampleP1 VALUES (?)", d.damage);
        InstallDisplays(*t);
        auto& s = *dynamic_cast<FrmMPG*>(t->screenByName("frmMPG"));
        s.show();
        t.loop.runFor(10500);
        EXPECT_EQ(t.dialogs.titles(), std::vector<std::string>{"ERROR"});
        EXPECT_TRUE(s.visible());
        s.unload();
        EXPECT_TRUE(t->frmMain().enabled());
    }
}

}  // namespace
}  // namespace ketrel::test
