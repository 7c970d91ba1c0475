#pragma once
#include <ctime>

namespace ketrel {

// A calendar date and time of day on the user's local clock.
struct LocalDateTime {
    int year = 2000, month = 1, day = 1;  // month 1..12
    int hour = 0, minute = 0, second = 0;
};

// Where dated records (the connecting log) take the date and time from; tests fix it.
class LocalTimeSource {
  public:
    virtual ~LocalTimeSource() = default;
    virtual LocalDateTime now() = 0;
};

// The system's local time.
class SystemLocalTime : public LocalTimeSource {
  public:
    LocalDateTime now() override {
        std::time_t t = std::time(nullptr);
        std::tm tm{};
        localtime_r(&t, &tm);
        return LocalDateTime{tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday,
                             tm.tm_hour,        tm.tm_min,     tm.tm_sec};
    }
};

// A clock that shows what it is told.
class FixedLocalTime : public LocalTimeSource {
  public:
    explicit FixedLocalTime(LocalDateTime t = {}) : t_(t) {}
    LocalDateTime now() override { return t_; }
    void set(LocalDateTime t) { t_ = t; }

  private:
    LocalDateTime t_;
};

}  // namespace ketrel
