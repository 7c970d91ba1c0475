#include "link/log_frames.h"

#include <gtest/gtest.h>

#include <sstream>

namespace ketrel {
namespace {

TEST(LogFrames, EachLineIsAQuotedOrBareFrameABlankOrMalformed) {
    using K = LogLine::Kind;
    struct Case {
        std::string line;
        K kind;
        const char* frame;
    } cases[] = {
        {"\"V486B10410C1AF8\"", K::Frame, "V486B10410C1AF8"},
        {"\"V486B10410C1AF8\"\r", K::Frame, "V486B10410C1AF8"},
        {"V486B10410C1AF8", K::Frame, "V486B10410C1AF8"},
        {"  \"V486B1041\"\t", K::Frame, "V486B1041"},
        {"\"\"", K::Frame, ""},
        {"", K::Blank, ""},
        {"   \r", K::Blank, ""},
        {"\"V486B10410C1AF8", K::Malformed, ""},
        {"\"V486\"B1041", K::Malformed, ""},
        {"V486\"B1041", K::Malformed, ""},
        {"V486B1041,0C", K::Malformed, ""},
        {std::string("\"V48\x01\x02\"", 7), K::Malformed, ""},
        {std::string("\"V48\0\"", 6), K::Malformed, ""},
        {"\"V48\xC3\xA9\"", K::Malformed, ""},
    };
    for (const Case& c : cases) {
        LogLine l = ParseLogLine(c.line);
        EXPECT_EQ(l.kind, c.kind) << c.line;
        EXPECT_EQ(l.frame, c.frame) << c.line;
        EXPECT_EQ(l.problem.empty(), c.kind != K::Malformed) << c.line;
    }
}

TEST(LogFrames, TheReaderSkipsBadLinesAndTellsTheirNumbers) {
    std::string longLine = "\"" + std::string(5000, 'A') + "\"";
    std::istringstream in(
        "\"V1\"\r\n"
        "\n"
        "\"V2\n" +
        longLine +
        "\r\n"
        "V3\n"
        "\"V4\"");  // no line end after the last line
    LogFrameReader reader(in);
    std::vector<std::pair<long, std::string>> problems;
    reader.onProblem = [&](long line, const std::string& p) { problems.emplace_back(line, p); };
    std::vector<std::pair<long, std::string>> frames;
    LogFrame f;
    while (reader.next(f))
        frames.emplace_back(f.line, f.text);
    EXPECT_EQ(frames, (std::vector<std::pair<long, std::string>>{{1, "V1"}, {5, "V3"}, {6, "V4"}}));
    ASSERT_EQ(problems.size(), 2u);
    EXPECT_EQ(problems[0].first, 3);
    EXPECT_EQ(problems[0].second, "a quote is left open");
    EXPECT_EQ(problems[1].first, 4);
    EXPECT_EQ(problems[1].second, "longer than 4096 characters");
    EXPECT_EQ(reader.lines(), 6);
}

TEST(LogFrames, ALineAtTheLimitIsReadAndOneBeyondIsNot) {
    for (std::size_t length : {8u, 9u}) {
        std::istringstream in("\"" + std::string(length - 2, 'A') + "\"\r\n");
        LogFrameReader reader(in, 8);
        int problems = 0;
        reader.onProblem = [&](long, const std::string&) { ++problems; };
        LogFrame f;
        EXPECT_EQ(reader.next(f), length == 8) << length;
        EXPECT_EQ(problems, length == 8 ? 0 : 1) << length;
    }
}

TEST(LogFrames, AnEmptyInputHasNoLines) {
    std::istringstream in("");
    LogFrameReader reader(in);
    LogFrame f;
    EXPECT_FALSE(reader.next(f));
    EXPECT_EQ(reader.lines(), 0);
}

}  // namespace
}  // namespace ketrel
