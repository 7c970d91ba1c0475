#include "codes/terms_glossary.h"

#include <memory>
#include <string>

#include "platform/sqlite_db.h"
#include "screens/frm_terms.h"
#include "state/app.h"

namespace ketrel {

namespace {

struct TermsColumn {
    const char* header;
    int width;  // twips
};

constexpr TermsColumn kColumns[] = {
    {"COMPONENT", 4200}, {"OBD II TERMS", 1600}, {"OBD I TERMS", 5850}};

void showLoadError(App& app, const SqliteDb& db) {
    app.dialogs().message("There Was An Error\nDescription:  " + db.error() +
                              "\nCode:  " + std::to_string(db.errorCode()),
                          "Error", MsgIcon::Stop);
}

// The table's rows in their stored order, its first three columns taken by position (their
// names play no part); false with the error left in db.
bool readTerms(App& app, SqliteDb& db, SqlRows& rows) {
    return db.open(app.appPath() / "System" / "Terms.db") &&
           db.query("SELECT * FROM Terms", {}, rows);
}

}  // namespace

FrmTerms* TermsScreen(App& app) {
    return dynamic_cast<FrmTerms*>(app.screenByName("frmTerms"));
}

int LoadTerms(App& app) {
    FrmTerms& s = *TermsScreen(app);
    Grid& g = s.MSFlexGrid1;
    SqliteDb db;
    SqlRows rows;
    if (!readTerms(app, db, rows)) {
        rows.clear();
        showLoadError(app, db);
    }
    g.setCols(3);
    g.setRows(int(rows.size()) + 1);
    g.clear();
    for (int c = 0; c < 3; ++c) {
        g.setText(0, c, kColumns[c].header);
        g.setColWidth(c, kColumns[c].width);
        g.setColAlign(c, Align::Left);
    }
    for (std::size_t r = 0; r < rows.size(); ++r) {
        for (int c = 0; c < 3 && c < int(rows[r].size()); ++c)
            g.setText(int(r) + 1, c, rows[r][std::size_t(c)]);
    }
    return int(rows.size());
}

void InstallTermsGlossary(App& app) {
    if (!app.screenByName("frmTerms")) app.addScreen(std::make_unique<FrmTerms>(app.loop()));
    // A screen of that name that is not this one (a stand-in) is left alone.
    FrmTerms* screen = TermsScreen(app);
    if (!screen) return;
    FrmTerms& s = *screen;
    auto mainHeld = std::make_shared<bool>(false);
    s.onLoad = [&app, mainHeld] {
        app.unloadScreens({"frmRealDisplay"});
        app.frmMain().setEnabled(false);
        *mainHeld = true;
        LoadTerms(app);
    };
    s.onUnload = [&app, mainHeld] {
        if (*mainHeld) app.frmMain().setEnabled(true);
        *mainHeld = false;
    };
    s.mnuFileExit.onClick = [&s] { s.unload(); };
}

}  // namespace ketrel
