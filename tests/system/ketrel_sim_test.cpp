// ketrel-sim as a program: what it can't do ends at once with a clear message. Its answers on a
// pseudo-terminal are those the export tool and the auto-detect sweep connect to.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "system/child_process.h"

namespace {

TEST(KetrelSim, RefusesWhatItCannotDoWithAClearMessage) {
    struct Case {
        std::vector<std::string> args;
        const char* message;
    };
    const Case cases[] = {
        {{"--converter", "tactrix"}, "pseudo-terminal can't carry a break"},
        {{"--converter", "kesh"}, "--hardware kesh --port sim:"},
        {{}, "--converter is required"},
        {{"--converter", "dorvane", "--vehicle", "/nonexistent.vehicle"},
         "can't open vehicle file"},
    };
    for (const auto& c : cases) {
        ketrel::test::ChildProcess sim(KETREL_SIM_BINARY, c.args);
        EXPECT_EQ(sim.stop(0), 2);
        EXPECT_NE(sim.errors().find(c.message), std::string::npos) << c.message;
    }
}

}  // namespace
