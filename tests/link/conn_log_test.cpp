#include "link/conn_log.h"

#include <gtest/gtest.h>

#include "support/test_app.h"

namespace ketrel {
namespace {

struct LogFixture {
    LogFixture() {
        std::filesystem::create_directories(t->appPath() / "Log");
        t->ConnectLogEnabled = true;
        t->BR3Delay = "175";
        ConnLog(*t).setTimeSource(clock);
    }
    test::TestApp t;
    FixedLocalTime clock{LocalDateTime{2026, 11, 15, 10, 23, 45}};
};

TEST(ConnectLog, OneConnectWritesItsBlockByteForByte) {
    LogFixture f;
    ConnectLogBegin(*f.t);
    LogLine(*f.t, "TYPE INTERFACE USED:  ", kDorvane);
    f.clock.set({2026, 11, 15, 14, 5, 9});
    LogLine(*f.t, "OPEN PORT");
    ConnectLogEnd(*f.t);
    EXPECT_EQ(test::ReadFile(ConnectLog::pathFor(f.t->appPath())),
              "\"\r\n\r\n\r\n\r\n************************START OF "
              "CONNECTING************************\"\r\n"
              "\"NOVEMBER, 15 2026\"\r\n"
              "\"SOFTWARE VERSION:  0.77\"\r\n"
              "\"REQUEST DELAY:  175\"\r\n"
              "\"(10:23:45 AM)     TYPE INTERFACE USED:  DORVANE PROTOCOL CONVERTER\"\r\n"
              "\"(2:05:09 PM)     OPEN PORT\"\r\n"
              "\"************************END OF CONNECTING************************\"\r\n");
    EXPECT_FALSE(ConnLog(*f.t).isOpen());
}

TEST(ConnectLog, BlocksAppendAndTextStandsAsItIsQuotesAndLineBreaksIncluded) {
    LogFixture f;
    ConnectLogBegin(*f.t);
    ConnectLogEnd(*f.t);
    auto first = test::ReadFile(ConnLog(*f.t).path());
    ConnectLogBegin(*f.t);
    LogLine(*f.t, "NO V DETECTED:  ", "4\"1\r\n0C");
    ConnectLogEnd(*f.t);
    auto both = test::ReadFile(ConnLog(*f.t).path());
    ASSERT_EQ(both.substr(0, first.size()), first);
    EXPECT_NE(both.find("\"(10:23:45 AM)     NO V DETECTED:  4\"1\r\n0C\"\r\n"), std::string::npos);
}

TEST(ConnectLog, NothingIsWrittenWhenDisabledWithoutTheFolderOrOutsideABlock) {
    struct Case {
        const char* what;
        bool enabled, makeFolder, begin;
    };
    const Case cases[] = {{"log switched off", false, true, true},
                          {"no Log folder", true, false, true},
                          {"no block open: no line, no end line", true, true, false}};
    for (const auto& c : cases) {
        test::TestApp t;
        if (c.makeFolder) std::filesystem::create_directories(t->appPath() / "Log");
        t->ConnectLogEnabled = c.enabled;
        if (c.begin) ConnectLogBegin(*t);
        LogLine(*t, "OPEN PORT");
        ConnectLogEnd(*t);
        EXPECT_FALSE(std::filesystem::exists(ConnectLog::pathFor(t->appPath()))) << c.what;
        EXPECT_TRUE(t.dialogs.shown().empty()) << c.what;
    }
}

TEST(ConnectLog, StampAndDateFormats) {
    struct Case {
        LocalDateTime t;
        const char* time;
        const char* date;
    };
    const Case cases[] = {
        {{2026, 1, 5, 0, 0, 0}, "12:00:00 AM", "JANUARY, 05 2026"},
        {{2024, 9, 1, 12, 0, 1}, "12:00:01 PM", "SEPTEMBER, 01 2024"},
        {{2026, 12, 31, 23, 59, 59}, "11:59:59 PM", "DECEMBER, 31 2026"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ConnectLog::timeText(c.t), c.time);
        EXPECT_EQ(ConnectLog::dateText(c.t), c.date);
    }
}

}  // namespace
}  // namespace ketrel
