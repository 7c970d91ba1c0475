#include "recording/log_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace ketrel {

std::filesystem::path LogFolder(const std::filesystem::path& appPath) {
    return appPath / "Log";
}

std::filesystem::path LogFilePath(const std::filesystem::path& appPath, const std::string& name) {
    return LogFolder(appPath) / (name + ".log");
}

bool IsSafeLogName(const std::string& name) {
    return !name.empty() && name != "." &&
           name.find_first_of(std::string("/\\\0", 3)) == std::string::npos &&
           name.find("..") == std::string::npos;
}

std::optional<std::filesystem::path> SafeLogFilePath(const std::filesystem::path& appPath,
                                                     const std::string& name) {
    if (!IsSafeLogName(name)) return std::nullopt;
    return LogFilePath(appPath, name);
}

void DeleteWorkingLog(const std::filesystem::path& appPath) {
    std::error_code ignored;
    std::filesystem::remove(LogFilePath(appPath, kWorkingLogName), ignored);
}

std::string SystemErrorText(int error) {
    return std::strerror(error);
}

LogWriter::~LogWriter() {
    close();
}

bool LogWriter::open(const std::filesystem::path& path) {
    close();
    fd_ = ::open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    if (fd_ < 0) error_ = SystemErrorText(errno);
    return fd_ >= 0;
}

bool LogWriter::writeLine(const std::string& frame) {
    if (fd_ < 0) {
        error_ = SystemErrorText(EBADF);
        return false;
    }
    line_.clear();
    line_ += '"';
    line_ += frame;
    line_ += "\"\r\n";
    const char* p = line_.data();
    std::size_t left = line_.size();
    while (left > 0) {
        ssize_t n = ::write(fd_, p, left);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) {
            error_ = SystemErrorText(n < 0 ? errno : ENOSPC);
            // A line cut short by a full disk is taken back, so the log ends on a whole frame.
            if (const auto written = off_t(p - line_.data()); written > 0) {
                const off_t end = ::lseek(fd_, 0, SEEK_END);
                if (end >= written && ::ftruncate(fd_, end - written) != 0)
                    error_ += " (the last line of the log is incomplete)";
            }
            return false;
        }
        p += n;
        left -= std::size_t(n);
    }
    return true;
}

void LogWriter::close() {
    if (fd_ >= 0) ::close(fd_);
    fd_ = -1;
}

LogReader::~LogReader() {
    close();
}

bool LogReader::open(const std::filesystem::path& path) {
    close();
    file_ = std::fopen(path.c_str(), "rb");
    if (!file_) error_ = SystemErrorText(errno);
    return file_ != nullptr;
}

bool LogReader::next(std::string& frame) {
    frame.clear();
    if (!file_) return false;
    int c = std::fgetc(file_);
    while (c == ' ' || c == '\t' || c == '\r' || c == '\n')
        c = std::fgetc(file_);
    if (c == EOF) {
        if (std::ferror(file_)) error_ = SystemErrorText(errno);
        return false;
    }
    if (c == '"') {
        while ((c = std::fgetc(file_)) != EOF && c != '"')
            frame.push_back(char(c));
        // Whatever follows the closing quote up to the separator belongs to no field.
        while (c != EOF && c != ',' && c != '\n')
            c = std::fgetc(file_);
    } else {
        while (c != EOF && c != ',' && c != '\n' && c != '\r') {
            frame.push_back(char(c));
            c = std::fgetc(file_);
        }
        while (!frame.empty() && (frame.back() == ' ' || frame.back() == '\t'))
            frame.pop_back();
    }
    return true;
}

void LogReader::close() {
    if (file_) std::fclose(file_);
    file_ = nullptr;
}

}  // namespace ketrel
