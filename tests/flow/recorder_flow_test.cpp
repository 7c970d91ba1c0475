#include <gtest/gtest.h>

#include <map>
#include <memory>

#include "flow/car_rig.h"
#include "obd/monitor_status.h"
#include "recording/recorder.h"
#include "recording/recording_rig.h"

namespace ketrel::test {
namespace {

using Texts = std::map<std::string, std::string>;

// Every field of the main screen and the extended data screen, by name.
Texts FieldTexts(App& app) {
    Texts texts;
    for (Screen* s :
         {static_cast<Screen*>(&app.frmMain()), static_cast<Screen*>(&app.frmNewPids())})
        for (Control* c : s->controls())
            if (c->kind() == ControlKind::Field)
                texts[s->name() + "." + c->fullName()] = static_cast<Field*>(c)->text();
    return texts;
}

// A session with one of the simulated devices behind port 1 and the recorder installed.
struct Rig : CarRig {
    Rig(const char* hardware, const std::string& car, int start)
        : CarRig(hardware, car, start, "225") {
        InstallRecorder(app());
        MakeLogCatalogue(t.dir.path());
    }
};

TEST(RecorderFlow, AReplayWithoutAConverterShowsWhatTheRecordedSessionShowed) {
    struct Case {
        const char *type, *hardware, *car;
        int start;
    } cases[] = {
        {"DORVANE", kDorvane, "default", 1},
        {"BR3", kBr3, "vpw", 1},
        {"BR3ISO", kBr3, "iso9141", 1},
        {"KESHISO-9141", kKesh, "iso9141", 2},
        {"TACTRIXISO-9141", kTactrix, "iso9141", 2},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.type);
        Rig rig(c.hardware, c.car, c.start);
        App& app = *rig.t;
        FrmRecorder& r = RecorderScreen(app);
        rig.connect();
        ASSERT_TRUE(app.Connected);
        rig.t.loop.runFor(2000);
        // From a blank display, so that every value shown came from a recorded frame.
        ClearMainData(app);
        ClearExtendedData(app);
        const Texts blank = FieldTexts(app);
        app.frmMain().mnuEditRecord.onClick();
        rig.t.loop.runFor(6000);
        r.cmdStop.click();
        const Texts live = FieldTexts(app);
        EXPECT_EQ(app.LogType, c.type);
        EXPECT_GT(app.RecordCount, 20);

        // The link goes; the recording is saved under a name as the closing offers.
        rig.t.dialogs.answerNext(MsgAnswer::Yes);
        EndSession(app);
        rig.t.loop.runFor(200);
        ASSERT_TRUE(app.SaveNameOpen);
        SaveNameScreen(app).txtSaveName.setText("drive");
        SaveNameScreen(app).cmdSave.click();
        EXPECT_EQ(app.LogFrames, long(app.RecordCount));

        // Played back on a blank display with nothing on the port.
        ClearMainData(app);
        ClearExtendedData(app);
        ASSERT_TRUE(r.cmdPlay.enabled());
        r.sldSpeed.setValue(0);
        r.cmdPlay.click();
        while (RecorderOf(app).replaying())
            rig.t.loop.waitAndPump();
        EXPECT_EQ(RecorderOf(app).framesPlayed(), app.LogFrames);
        const Texts replayed = FieldTexts(app);
        int written = 0;
        for (const auto& [name, text] : live) {
            auto before = blank.find(name);
            if (before != blank.end() && before->second == text) continue;
            written++;
            auto after = replayed.find(name);
            EXPECT_EQ(after == replayed.end() ? "" : after->second, text) << name;
        }
        EXPECT_GE(written, 8);
        EXPECT_EQ(rig.t.dialogs.titles(), (std::vector<std::string>{"Save File", "Ketrel"}));
    }
}

}  // namespace
}  // namespace ketrel::test
