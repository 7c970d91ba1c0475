#pragma once
#include <fstream>
#include <string>
#include <vector>

#include "platform/sqlite_db.h"
#include "recording/log_file.h"
#include "recording/recorder.h"
#include "screens/frm_input_record_name.h"
#include "screens/frm_recorder.h"
#include "support/test_app.h"

namespace ketrel::test {

// The empty catalogue the build ships, made in a test's application folder.
inline void MakeLogCatalogue(const std::filesystem::path& appPath) {
    std::filesystem::create_directories(appPath / "System");
    std::ifstream schema(std::string(KETREL_DATA_DIR) + "/db/LogRecords.sql");
    SqliteDb db;
    db.open(appPath / "System" / "LogRecords.db", true);
    db.execScript(std::string(std::istreambuf_iterator<char>(schema), {}));
}

// The frames of a log file, as the player reads them.
inline std::vector<std::string> LogFrames(const std::filesystem::path& path) {
    std::vector<std::string> frames;
    LogReader reader;
    std::string frame;
    if (reader.open(path))
        while (reader.next(frame))
            frames.push_back(frame);
    return frames;
}

// Plays Log/<name>.log of type `type` at `speed` ms through the log controller to its end.
inline void PlayToEnd(TestApp& t, const std::string& name, const std::string& type, int speed) {
    App& app = *t;
    app.LogName = name;
    app.LogType = type;
    FrmRecorder& r = RecorderScreen(app);
    r.show();
    r.sldSpeed.setValue(speed);
    r.cmdPlay.setEnabled(true);
    r.cmdPlay.click();
    while (RecorderOf(app).replaying())
        t.loop.waitAndPump();
}

}  // namespace ketrel::test
