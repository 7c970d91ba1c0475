#pragma once
#include <string>

namespace ketrel {

class App;

// How a save went: the file error stops it (the recording stays in Untitled.log); a catalogue
// error comes after the file has its name, and the log is kept without a row.
struct LogSaveResult {
    std::string fileError;       // empty when Log/<name>.log is in place
    std::string catalogueError;  // empty when the row was added
    bool saved() const { return fileError.empty(); }
};

// Gives the recording in Log/Untitled.log its name and lists it: renames it to Log/<name>.log
// (a name that leaves the Log folder, or a log of that name already there, is refused) and adds
// the catalogue row with RecordDate, the main screen's vehicle fields ("N/A" where none was
// chosen or typed), RecordCount as its frames and LogType; LogFrames takes RecordCount.
LogSaveResult SaveRecordedLog(App& app, const std::string& name);

}  // namespace ketrel
