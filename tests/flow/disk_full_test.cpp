// The disk fills while a session is being recorded. The limit on file size of the process
// makes the writes of the working log fail for real, part way through a line or at its
// start: the program says so once, ends the recording, goes on scanning, and the log keeps
// every frame written before, each one whole.
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <cstring>

#include "core/session.h"
#include "flow/car_rig.h"
#include "recording/recorder.h"
#include "recording/recording_rig.h"
#include "screens/frm_recorder.h"

namespace ketrel::test {
namespace {

// Files of this process can't grow past `bytes` for the life of the object; a write past it
// fails with EFBIG instead of raising the signal.
class FileSizeLimit {
  public:
    explicit FileSizeLimit(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &saved_);
        oldHandler_ = std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit = saved_;
        limit.rlim_cur = bytes;
        ok_ = setrlimit(RLIMIT_FSIZE, &limit) == 0;
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &saved_);
        std::signal(SIGXFSZ, oldHandler_);
    }
    bool ok() const { return ok_; }

  private:
    rlimit saved_{};
    void (*oldHandler_)(int) = SIG_DFL;
    bool ok_ = false;
};

TEST(DiskFull, ARecordingThatCannotBeWrittenEndsOnceAndKeepsItsWholeFrames) {
    struct Case {
        const char* name;
        long room;  // bytes left on the "disk" once the recording has run a second
    } cases[] = {{"full in the middle of a line", 37}, {"full at the start of a line", 0}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        DorvaneRig r;
        App& app = r.app();
        app.ConnectLogEnabled = false;  // only the recording meets the full disk
        InstallRecorder(app);
        MakeLogCatalogue(r.t.dir.path());
        r.t.loop.setLimitMs(200000);
        r.connect();
        ASSERT_TRUE(app.Connected);
        FrmRecorder& rec = RecorderScreen(app);
        app.frmMain().mnuEditRecord.onClick();
        ASSERT_TRUE(app.Recording);
        r.run(1000);
        const auto log = LogFilePath(r.t.dir.path(), kWorkingLogName);
        const auto before = LogFrames(log);
        ASSERT_GT(before.size(), 5u);
        {
            FileSizeLimit full(std::filesystem::file_size(log) + rlim_t(c.room));
            ASSERT_TRUE(full.ok());
            r.run(3000);
        }
        EXPECT_FALSE(app.Recording);
        EXPECT_TRUE(app.Connected);  // the scan goes on
        ASSERT_EQ(r.t.dialogs.titles(), std::vector<std::string>{"Error"});
        EXPECT_EQ(r.t.dialogs.shown()[0].text, std::strerror(EFBIG));
        EXPECT_EQ(rec.panel(1).text(), "-----");
        const std::string bytes = ReadFile(log);
        EXPECT_EQ(bytes.substr(bytes.size() - 3), "\"\r\n");
        const auto after = LogFrames(log);
        ASSERT_GE(after.size(), before.size());
        EXPECT_TRUE(std::equal(before.begin(), before.end(), after.begin()));
        EXPECT_EQ(long(after.size()), app.RecordCount);

        // Closing the log controller offers to save what was written; the session goes on.
        r.t.dialogs.answerNext(MsgAnswer::Yes);
        rec.requestClose();
        ASSERT_TRUE(app.SaveNameOpen);
        SaveNameScreen(app).txtSaveName.setText("cut");
        SaveNameScreen(app).cmdSave.click();
        EXPECT_TRUE(app.Connected);
        EXPECT_EQ(LogFrames(LogFilePath(r.t.dir.path(), "cut")), after);
        EXPECT_EQ(app.LogFrames, long(after.size()));
    }
}

}  // namespace
}  // namespace ketrel::test
