#include <gtest/gtest.h>

#include "soak/soak_driver.h"

namespace ketrel::soak {
namespace {

// Twenty virtual minutes of each link device with a recording running and the code buttons
// pressed now and then: every frame the decoders got is in the log, and no list passes its cap.
TEST(Soak, EachDeviceRecordsEveryDecodedFrameAndKeepsItsListsBounded) {
    for (const std::string& device : SoakDevices()) {
        SCOPED_TRACE(device);
        const SoakReport r = RunSoak(device, 20, 5);
        EXPECT_TRUE(r.connected);
        EXPECT_GT(r.decoded, 1000);
        EXPECT_EQ(r.decoded, r.recorded);
        EXPECT_EQ(r.codeRequests, 4);
        EXPECT_TRUE(r.messages.empty()) << r.messages.front();
        for (const BufferSize& b : r.buffers) {
            if (b.cap > 0) {
                EXPECT_LE(b.size, b.cap) << b.name;
            }
        }
    }
}

}  // namespace
}  // namespace ketrel::soak
