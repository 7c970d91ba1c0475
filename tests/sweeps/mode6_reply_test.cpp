#include <gtest/gtest.h>

#include "sweeps/mode6_reply.h"

namespace ketrel {
namespace {

// A J1850 frame with component 85; an ISO frame cut short holds no limit, an empty one nothing.
TEST(Mode6Reply, FramesAreCutByTheColumnsOfTheirFamily) {
    Mode6Frame j = ReadMode6Frame("0B486B104610850100010055", kMode6J1850);
    EXPECT_EQ(j.controlByte + " " + j.component + " " + *j.limit, "133 05 256");
    EXPECT_EQ(ReadMode6Frame("486B10460111FFFF", kMode6Iso).limit, std::nullopt);
    EXPECT_EQ(ReadMode6Frame("", kMode6Iso).component, "00");
    EXPECT_EQ(Mode6Word("1F"), 0x1F00);
}

TEST(Mode6Reply, IsoFramesFollowWhileTheNextLooksLikeATestFrame) {
    const std::string a = "486B104601110064012C99", b = "486B104601210064012CAA";
    EXPECT_EQ(Mode6IsoFrames(a + b).size(), 2u);
    EXPECT_EQ(Mode6IsoFrames(a + b + a).size(), 3u);
    EXPECT_EQ(Mode6IsoFrames(a + "486B1041").size(), 1u);        // 15 digits or fewer
    EXPECT_EQ(Mode6IsoFrames(a + "486B10410C1AF8").size(), 1u);  // not a 6 at the eighth
    EXPECT_EQ(Mode6IsoFrames("").size(), 1u);                    // the head always
    EXPECT_EQ(Mode6IsoFrames(a + b)[1].substr(0, 12), "486B10460121");
}

}  // namespace
}  // namespace ketrel
