#pragma once
#include <filesystem>

namespace ketrel {

// The application folder, which holds System/, Log/ and Help/: the program's own folder when
// it may write there and is not an installed bin/ beside share/ketrel (a build tree), else
// $XDG_DATA_HOME/Ketrel (~/.local/share/Ketrel) seeded with the installed System/ and Help/
// files it lacks. The three folders are made if missing.
std::filesystem::path ResolveAppFolder(const std::filesystem::path& programDir);
// The same choice with its inputs given: whether the program's folder is writable and where
// the per-user data folder is.
std::filesystem::path ResolveAppFolder(const std::filesystem::path& programDir, bool writable,
                                       const std::filesystem::path& userFolder);

}  // namespace ketrel
