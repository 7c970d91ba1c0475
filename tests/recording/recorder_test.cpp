#include "recording/recorder.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "link/frame_dispatch.h"
#include "recording/log_catalogue.h"
#include "recording/recording_rig.h"
#include "state/app.h"

namespace ketrel::test {
namespace {

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;

// A text converter's RPM answer: rpm * 4 as two bytes.
std::string RpmFrame(int rpm) {
    char hex[8];
    std::snprintf(hex, sizeof hex, "%04X", rpm * 4);
    return std::string("V486B10410C") + hex;
}

struct Rig {
    Rig() {
        InstallRecorder(*t);
        t->OBDIIHardware = kDorvane;
        t->frmMain().lblRPM.observe([this] { rpm.push_back(t->frmMain().lblRPM.text()); });
    }
    App& app() { return *t; }
    FrmRecorder& r() { return RecorderScreen(*t); }
    fs::path log(const std::string& name) { return LogFilePath(t.dir.path(), name); }
    void writeLog(const std::string& name, const Strings& frames) {
        std::string text;
        for (const std::string& f : frames)
            text += "\"" + f + "\"\r\n";
        WriteFile(log(name), text);
        t->LogFrames = long(frames.size());
    }
    Strings errors() const {
        Strings v;
        for (const MessageBox& b : t.dialogs.shown())
            if (b.title == "Error") v.push_back(b.text);
        return v;
    }
    TestApp t;
    Strings rpm;
};

TEST(Recorder, EveryFrameReachesTheFileInOrderAcrossRecordingsWhileTheListKeeps200) {
    Rig g;
    g.app().Connected = true;
    g.app().frmMain().mnuEditRecord.onClick();
    EXPECT_TRUE(g.app().Recording);
    EXPECT_EQ(g.app().LogType, "DORVANE");
    Strings frames;
    for (int i = 0; i < 260; ++i) {
        if (i == 250) {  // stopped and recorded again: the same file, the count runs on
            g.r().cmdStop.click();
            EXPECT_TRUE(g.r().cmdRecord.enabled());
            g.r().cmdRecord.click();
        }
        frames.push_back(RpmFrame(i));
        NoteReceivedFrame(g.app(), frames.back());
    }
    const ListBox& list = g.app().frmMain().lstRecordData;
    ASSERT_EQ(list.count(), 60);
    EXPECT_EQ(list.item(0), frames[200]);
    EXPECT_EQ(g.app().RecordCount, 260);
    EXPECT_EQ(LogFrames(g.log("Untitled")), frames);
    EXPECT_EQ(ReadFile(g.log("Untitled")).substr(0, 19), "\"" + frames[0] + "\"\r\n");
    g.t.loop.runFor(1000);
    EXPECT_EQ(g.r().panel(2).text(), "FRAME:  260");
    EXPECT_EQ(g.r().panel(3).text(), "ELAPSE:  00:00.01.0");
}

TEST(Recorder, ReplayKeepsOrderAndDelayAndStartsAgainAfterAStop) {
    Rig g;
    g.writeLog("drive", {RpmFrame(1000), RpmFrame(1100), RpmFrame(1200), RpmFrame(1300)});
    const Strings all{"1000", "1100", "1200", "1300"};
    for (int speed : {0, 100}) {
        g.rpm.clear();
        const auto start = g.t.loop.nowMs();
        PlayToEnd(g.t, "drive", "DORVANE", speed);
        EXPECT_EQ(g.rpm, all);
        EXPECT_NEAR(double(g.t.loop.nowMs() - start), 4 * speed, 2.0) << speed;
        EXPECT_FALSE(g.app().PlayingLog);
        EXPECT_EQ(g.r().panel(1).text(), "STATUS:  END");
        EXPECT_EQ(g.r().panel(2).text(), "FRAME:  4 of 4");
    }
    // Stopped after the second frame: the third is read and dropped.
    g.rpm.clear();
    g.r().sldSpeed.setValue(100);
    g.r().cmdPlay.click();
    while (g.rpm.size() < 2)
        g.t.loop.waitAndPump();
    g.r().cmdStop.click();
    while (RecorderOf(g.app()).replaying())
        g.t.loop.waitAndPump();
    EXPECT_EQ(g.rpm, (Strings{"1000", "1100"}));
    EXPECT_EQ(RecorderOf(g.app()).framesPlayed(), 3);
    g.r().cmdPlay.click();
    g.t.loop.waitAndPump();
    EXPECT_EQ(g.rpm.back(), "1000");
    EXPECT_EQ(g.r().panel(2).text(), "FRAME:  1 of 4");
}

TEST(Recorder, EachTypeWordPlaysThroughItsOwnRoutineWhateverTheSettings) {
    struct Case {
        const char* type;
        const char* frame;
        const char* modeAndPid;
        const char* rpm;
    } cases[] = {
        {"BR3ISO", "486B10410C1AF8C5", "01/0C", "1726"},
        {"BR3", "486B10410C1AF8C5", "0C/1A", "old"},  // J1850 columns: not an RPM answer
        {"DORVANE", "V486B10410", "01/", "old"},      // too short for its PID
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.type);
        Rig g;
        g.app().ProtocolCode = "01";  // the settings say J1850
        g.app().frmMain().lblRPM.setText("old");
        g.writeLog("one", {c.frame});
        PlayToEnd(g.t, "one", c.type, 0);
        EXPECT_EQ(g.app().RxMode + "/" + g.app().RxPID, c.modeAndPid);
        EXPECT_EQ(g.app().frmMain().lblRPM.text(), c.rpm);
        EXPECT_TRUE(g.errors().empty());
    }
}

// A full disk part way through is the flow test DiskFull's.
TEST(Recorder, ALogFolderThatCannotBeMadeShowsTheSystemText) {
    Rig g;
    WriteFile(g.t.dir.path() / "Log", "");  // a file stands in its place
    g.app().frmMain().mnuEditRecord.onClick();
    EXPECT_EQ(g.errors(), Strings{"Not a directory"});
    EXPECT_FALSE(g.app().Recording);
    EXPECT_EQ(g.r().panel(1).text(), "-----");
}

TEST(SaveDialogue, NamesTheRecordingAndListsItOrSaysWhyNot) {
    struct Case {
        const char* name;
        bool catalogue, clash;
        Strings boxes;  // titles after the "Save File" question
        bool saved;
    } cases[] = {
        {"drive", true, false, {"Ketrel"}, true},
        {"drive", true, true, {"Error"}, false},
        {"../drive", true, false, {"Error"}, false},
        {"drive", false, false, {"Error", "Ketrel"}, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name + std::string(c.clash ? " clash" : c.catalogue ? "" : " no table"));
        Rig g;
        App& app = g.app();
        if (c.catalogue) MakeLogCatalogue(g.t.dir.path());
        if (c.clash) g.writeLog("drive", {"old"});
        app.frmMain().cmbYear.setText("-SELECT-");
        app.frmMain().txtPlate.setText("KT 123");
        g.r().show();
        g.writeLog("Untitled", {"A", "B", "C"});
        app.RecordCount = 3;
        app.LogType = "BR3";
        app.RecordDate = "11/23/26";
        app.RecordUnsaved = true;
        g.t.dialogs.answerNext(MsgAnswer::Yes);
        EXPECT_FALSE(g.r().unload());
        ASSERT_FALSE(app.frmMain().enabled());
        g.t.dialogs.clear();
        SaveNameScreen(app).txtSaveName.setText(c.name);
        SaveNameScreen(app).cmdSave.click();
        EXPECT_EQ(g.t.dialogs.titles(), c.boxes);
        EXPECT_EQ(app.SaveNameOpen, !c.saved);
        EXPECT_EQ(fs::exists(g.log("Untitled")), !c.saved);
        EXPECT_FALSE(fs::exists(g.t.dir.path() / "drive.log"));
        if (!c.saved) continue;
        EXPECT_EQ(LogFrames(g.log("drive")), (Strings{"A", "B", "C"}));
        EXPECT_EQ(g.r().caption(), "Log Controller - drive.log");
        std::vector<LogRecord> rows;
        LogCatalogue catalogue;
        if (!c.catalogue) continue;
        ASSERT_TRUE(catalogue.open(g.t.dir.path()) && catalogue.rows(rows) && rows.size() == 1);
        const LogRecord& row = rows[0];
        EXPECT_EQ(row.Name + row.DateRecorded + row.Year + row.Vin + row.Plate +
                      std::to_string(row.Frame) + row.InterfaceType,
                  "drive11/23/26N/AN/AKT 1233BR3");
    }
}

}  // namespace
}  // namespace ketrel::test
