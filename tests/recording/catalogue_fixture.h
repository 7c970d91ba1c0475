#pragma once
#include <gtest/gtest.h>

#include "recording/log_catalogue.h"
#include "recording/recorded_log.h"
#include "recording/recording_rig.h"
#include "screens/frm_recorded_log.h"
#include "screens/frm_recorder.h"
#include "support/test_app.h"

namespace ketrel::test {

// A row of the log table with the fields the tests vary.
inline LogRecord Row(const std::string& name, const std::string& vin = "N/A",
                     const std::string& plate = "N/A", const std::string& date = "1/2/2026") {
    return {name, date, "2004", "Vantor", "Cresta", vin, plate, 120, "DORVANE", "N/A"};
}

// An application with the catalogue, the log controller and a log table made from the
// shipped schema in its folder.
struct CatalogueApp {
    TestApp t;
    FrmRecordedLog* s = nullptr;
    FrmRecorder* rec = nullptr;

    explicit CatalogueApp(const std::vector<LogRecord>& rows = {}) {
        MakeLogCatalogue(t.dir.path());
        std::filesystem::create_directories(t.dir.path() / "Log");
        LogCatalogue cat;
        EXPECT_TRUE(cat.open(t.dir.path())) << cat.error();
        for (const LogRecord& r : rows)
            EXPECT_TRUE(cat.add(r));
        auto screen = std::make_unique<FrmRecordedLog>(t.loop);
        s = screen.get();
        t->addScreen(std::move(screen));
        auto recorder = std::make_unique<FrmRecorder>(t.loop);
        rec = recorder.get();
        t->addScreen(std::move(recorder));
        InstallRecordedLog(*t);
    }
    App& app() { return *t; }
    // Opens the catalogue as the main screen's menu does.
    void open() { t->frmMain().mnuFileOpen.click(); }
    std::vector<std::string> names() {
        std::vector<std::string> v;
        for (int r = 1; r < s->gridLog.rows(); ++r)
            v.push_back(s->gridLog.text(r, 0) + "@" + s->gridLog.text(r, 1));
        return v;
    }
};

}  // namespace ketrel::test
