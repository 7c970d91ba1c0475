#include "link/conn_log.h"

#include <array>
#include <cstdio>

#include "state/app.h"

namespace ketrel {

namespace {

constexpr std::array<const char*, 12> kMonths = {"JANUARY",   "FEBRUARY", "MARCH",    "APRIL",
                                                 "MAY",       "JUNE",     "JULY",     "AUGUST",
                                                 "SEPTEMBER", "OCTOBER",  "NOVEMBER", "DECEMBER"};

constexpr const char* kStartLine =
    "************************START OF CONNECTING************************";
constexpr const char* kEndLine =
    "************************END OF CONNECTING************************";

}  // namespace

ConnectLog::ConnectLog(std::filesystem::path appPath) : appPath_(std::move(appPath)) {}

std::filesystem::path ConnectLog::pathFor(const std::filesystem::path& appPath) {
    return appPath / "Log" / "ConnLog.dat";
}

std::string ConnectLog::dateText(const LocalDateTime& t) {
    const char* month = (t.month >= 1 && t.month <= 12) ? kMonths[t.month - 1] : "";
    char buf[32];
    std::snprintf(buf, sizeof buf, ", %02d %04d", t.day, t.year);
    return month + std::string(buf);
}

std::string ConnectLog::timeText(const LocalDateTime& t) {
    int hour12 = t.hour % 12 == 0 ? 12 : t.hour % 12;
    char buf[32];
    std::snprintf(buf, sizeof buf, "%d:%02d:%02d %s", hour12, t.minute, t.second,
                  t.hour < 12 ? "AM" : "PM");
    return buf;
}

void ConnectLog::begin(std::string_view requestDelay) {
    if (file_.is_open()) file_.close();
    file_.clear();
    file_.open(path(), std::ios::binary | std::ios::app);
    if (!file_.is_open()) return;  // no folder, no rights: the connect goes on without a log
    record(std::string("\r\n\r\n\r\n\r\n") + kStartLine);
    record(dateText(time_->now()));
    record(std::string("SOFTWARE VERSION:  ") + kAppVersion);
    record(std::string("REQUEST DELAY:  ") + std::string(requestDelay));
}

void ConnectLog::line(std::string_view text, std::string_view value) {
    if (!file_.is_open()) return;
    record("(" + timeText(time_->now()) + ")     " + std::string(text) + std::string(value));
}

void ConnectLog::end() {
    if (!file_.is_open()) return;
    record(kEndLine);
    file_.close();
}

void ConnectLog::record(std::string_view text) {
    // The text stands as it is, quotes and line breaks included, the way a one-field
    // comma-delimited record is written.
    file_ << '"' << text << "\"\r\n";
    file_.flush();
    if (!file_) {
        file_.close();  // the disk refused: the log stops, the connect does not
    }
}

ConnectLog& ConnLog(App& app) {
    if (!app.connectLog) app.connectLog = std::make_shared<ConnectLog>(app.appPath());
    return *app.connectLog;
}

void ConnectLogBegin(App& app) {
    if (app.ConnectLogEnabled) ConnLog(app).begin(app.BR3Delay);
}

void LogLine(App& app, std::string_view text, std::string_view value) {
    if (app.ConnectLogEnabled) ConnLog(app).line(text, value);
}

void ConnectLogEnd(App& app) {
    if (app.ConnectLogEnabled) ConnLog(app).end();
}

}  // namespace ketrel
