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
        {"\"V486B10410C1AF8\"\r", K::Frame, "V486B10410C1AF8"},
        {"V486B10410C1AF8", K::Frame, "V486B10410C1AF8"},
        {"  \"V486B1041\"\t", K::Frame, "V486B1041"},
        {"   \r", K::Blank, ""},
        {"\"V486B10410C1AF8", K::Malformed, ""},
        {"\"V486\"B1041", K::Malformed, ""},
        {"V486\"B1041", K::Malformed, ""},
        {"V486B1041,0C", K::Malformed, ""},
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
    std::istringstream in("\"V1\"\r\n\n\"V2\n\"" + std::string(4095, 'A') + "\"\r\nV3\n\"V4\"");
    LogFrameReader reader(in);
    std::vector<std::pair<long, std::string>> problems, frames;
    reader.onProblem = [&](long line, const std::string& p) { problems.emplace_back(line, p); };
    for (LogFrame f; reader.next(f);)
        frames.emplace_back(f.line, f.text);
    EXPECT_EQ(frames, (decltype(frames){{1, "V1"}, {5, "V3"}, {6, "V4"}}));
    EXPECT_EQ(problems, (decltype(problems){{3, "a quote is left open"},
                                            {4, "longer than 4096 characters"}}));
    EXPECT_EQ(reader.lines(), 6);
    std::istringstream exact("\"" + std::string(4094, 'A') + "\"\r\n");
    LogFrameReader atLimit(exact);
    LogFrame f;
    EXPECT_TRUE(atLimit.next(f));
}

}  // namespace
}  // namespace ketrel
