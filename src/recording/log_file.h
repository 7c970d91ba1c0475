#pragma once
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>

namespace ketrel {

// The working file of a recording, Untitled.log, before it gets a name.
inline constexpr const char* kWorkingLogName = "Untitled";

// The folder of the logs, <appPath>/Log.
std::filesystem::path LogFolder(const std::filesystem::path& appPath);
// <appPath>/Log/<name>.log.
std::filesystem::path LogFilePath(const std::filesystem::path& appPath, const std::string& name);
// Whether a name typed for a log (or read from the catalogue) keeps its file inside the Log
// folder: not empty, no folder separators, no "..", no NUL.
bool IsSafeLogName(const std::string& name);
// Log/<name>.log under appPath, or nothing when the name would reach outside Log/.
std::optional<std::filesystem::path> SafeLogFilePath(const std::filesystem::path& appPath,
                                                     const std::string& name);
// Deletes Log/Untitled.log; a missing file is no error.
void DeleteWorkingLog(const std::filesystem::path& appPath);
// The system's text of the last failed file call (errno).
std::string SystemErrorText(int error);

// Appends frames to a log file, one line each: a double quote, the frame, a double quote, CR
// LF. Every line goes to the file as it is written, so a crash loses at most the line being
// written.
class LogWriter {
  public:
    LogWriter() = default;
    ~LogWriter();
    LogWriter(const LogWriter&) = delete;
    LogWriter& operator=(const LogWriter&) = delete;

    // Opens (or creates) the file for appending; false with error() set when it can't.
    bool open(const std::filesystem::path& path);
    bool isOpen() const { return fd_ >= 0; }
    // Writes one line; false with error() set when the write failed (full disk...).
    bool writeLine(const std::string& frame);
    void close();
    const std::string& error() const { return error_; }

  private:
    int fd_ = -1;
    std::string error_;
    std::string line_;  // scratch, so a long recording does not allocate per frame
};

// Reads the frames of a log file, one quoted field at a time, as the player takes them.
class LogReader {
  public:
    LogReader() = default;
    ~LogReader();
    LogReader(const LogReader&) = delete;
    LogReader& operator=(const LogReader&) = delete;

    bool open(const std::filesystem::path& path);
    bool isOpen() const { return file_ != nullptr; }
    // The next field: the text between double quotes, or up to a comma or line end when it has
    // no quotes. False at the end of the file, or on a read error (error() set).
    bool next(std::string& frame);
    void close();
    const std::string& error() const { return error_; }

  private:
    std::FILE* file_ = nullptr;
    std::string error_;
};

}  // namespace ketrel
