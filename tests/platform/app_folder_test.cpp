#include <gtest/gtest.h>

#include "platform/app_folder.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

// An installed program seeds the user's folder with its databases once; the user's copy,
// with its saved logs, is never replaced by a later start or a newer install.
TEST(AppFolder, AShippedDatabaseReachesTheUserFolderAndIsNeverOverwritten) {
    test::TempDir dir;
    const auto bin = dir.path() / "usr" / "bin";
    const auto shipped = dir.path() / "usr" / "share" / "ketrel" / "System" / "LogRecords.db";
    std::filesystem::create_directories(bin);
    test::WriteFile(shipped, "empty table");
    const auto user = dir.path() / "data" / "Ketrel";
    const auto mine = user / "System" / "LogRecords.db";

    EXPECT_EQ(ResolveAppFolder(bin, false, user), user);
    EXPECT_EQ(test::ReadFile(mine), "empty table");
    test::WriteFile(mine, "two saved logs");
    test::WriteFile(shipped, "newer empty table");
    ResolveAppFolder(bin, false, user);
    EXPECT_EQ(test::ReadFile(mine), "two saved logs");
}

}  // namespace
}  // namespace ketrel
