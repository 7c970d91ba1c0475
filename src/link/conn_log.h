#pragma once
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "platform/local_time.h"

namespace ketrel {

class App;

// The connecting log file <app folder>/Log/ConnLog.dat: one block of records per connect,
// each record a double-quoted text and CR LF. Kept open from the start of a connect to its
// end; a folder that is missing or read-only costs the log and nothing else.
class ConnectLog {
  public:
    explicit ConnectLog(std::filesystem::path appPath);

    static std::filesystem::path pathFor(const std::filesystem::path& appPath);
    std::filesystem::path path() const { return pathFor(appPath_); }

    // Takes dates and times from `source` from now on (tests use a fixed one).
    void setTimeSource(LocalTimeSource& source) { time_ = &source; }

    // Opens the file for appending and writes the head of a block: blank lines and the start
    // line, the date, the version, and the request delay.
    void begin(std::string_view requestDelay);
    // One stamped record: "(" time ")     " text value. Nothing when the file is not open.
    void line(std::string_view text, std::string_view value = {});
    // The end line, and the file is closed.
    void end();
    bool isOpen() const { return file_.is_open(); }

    // "NOVEMBER, 15 2026": the date record of a block head.
    static std::string dateText(const LocalDateTime& t);
    // "10:23:45 AM": the stamp of a record, on a 12-hour clock with no leading zero.
    static std::string timeText(const LocalDateTime& t);

  private:
    void record(std::string_view text);

    std::filesystem::path appPath_;
    SystemLocalTime systemTime_;
    LocalTimeSource* time_ = &systemTime_;
    std::ofstream file_;
};

// The application's connecting log, made on first use.
ConnectLog& ConnLog(App& app);

// Opens the log and writes a block head, when ConnectLogEnabled is True.
void ConnectLogBegin(App& app);
// LogLine: a stamped record, written while ConnectLogEnabled is True and the log is open.
void LogLine(App& app, std::string_view text, std::string_view value = {});
// Writes the end line and closes the log, when ConnectLogEnabled is True.
void ConnectLogEnd(App& app);

}  // namespace ketrel
