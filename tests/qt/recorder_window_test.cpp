#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTest>

#include "link/frame_dispatch.h"
#include "qt_fixture.h"
#include "recording/recorder.h"
#include "screens/frm_input_record_name.h"
#include "screens/frm_recorder.h"

namespace ketrel {
namespace {

TEST(RecorderWindow, RecordsOnTopThenAsksForTheNameInTheSaveDialogue) {
    test::GuiApp g;
    g.startPastSplash();
    App& app = g.app();
    app.Connected = true;
    app.OBDIIHardware = kDorvane;
    app.frmMain().mnuEditRecord.setEnabled(true);
    app.frmMain().mnuEditRecord.click();
    for (const char* frame : {"V486B10410C1AF8", "V486B10410D32"})
        NoteReceivedFrame(app, frame);
    QWidget* w = g.desktop->windows().windowOf("frmRecorder");
    ASSERT_TRUE(test::WaitFor([&] { return w && w->isVisible(); }));
    auto* panel = g.find<QLabel>("frmRecorder", "StatusBar1.Panels(1)");
    EXPECT_EQ(panel->text(), "STATUS:  RECORDING...");
    EXPECT_TRUE(w->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_FALSE(g.find<QSlider>("frmRecorder", "sldSpeed")->isEnabled());
    test::Screenshot(w, "recorder_recording");

    g.find<QPushButton>("frmRecorder", "cmdStop")->click();
    app.Connected = false;
    g.dialogs.answerNext(MsgAnswer::Yes);
    w->close();
    EXPECT_EQ(g.dialogs.titles(), std::vector<std::string>{"Save File"});
    QWidget* d = nullptr;
    ASSERT_TRUE(test::WaitFor([&] {
        d = g.desktop->windows().windowOf("frmInputRecordName");
        return d && d->isVisible();
    }));
    EXPECT_FALSE(g.desktop->windows().windowOf("frmMain")->isEnabled());
    auto* name = g.find<QLineEdit>("frmInputRecordName", "txtSaveName");
    QTest::keyClicks(name, "Test drive");
    test::Screenshot(d, "recorder_save_dialogue");
    g.find<QPushButton>("frmInputRecordName", "cmdSave")->click();
    EXPECT_TRUE(std::filesystem::exists(LogFilePath(g.dir.path(), "Test drive")));
    ASSERT_TRUE(test::WaitFor([&] { return w->isVisible(); }));
    EXPECT_EQ(w->windowTitle(), "Log Controller - Test drive.log");
    EXPECT_TRUE(g.find<QPushButton>("frmRecorder", "cmdPlay")->isEnabled());
}

}  // namespace
}  // namespace ketrel
