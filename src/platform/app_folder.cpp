#include "platform/app_folder.h"

#include <unistd.h>

#include <cstdlib>

namespace ketrel {

namespace fs = std::filesystem;

namespace {

fs::path userDataFolder() {
    if (const char* xdg = std::getenv("XDG_DATA_HOME"); xdg && *xdg)
        return fs::path(xdg) / "Ketrel";
    if (const char* home = std::getenv("HOME"); home && *home)
        return fs::path(home) / ".local" / "share" / "Ketrel";
    return fs::temp_directory_path() / "Ketrel";
}

// Copies the files of from/ that to/ does not have yet; the user's own copies stay.
void seed(const fs::path& from, const fs::path& to) {
    std::error_code ec;
    if (!fs::is_directory(from, ec)) return;
    for (auto it = fs::recursive_directory_iterator(from, ec);
         !ec && it != fs::recursive_directory_iterator(); it.increment(ec)) {
        fs::path target = to / fs::relative(it->path(), from, ec);
        if (it->is_directory(ec)) {
            fs::create_directories(target, ec);
        } else if (!fs::exists(target, ec)) {
            fs::create_directories(target.parent_path(), ec);
            fs::copy_file(it->path(), target, ec);
        }
    }
}

}  // namespace

fs::path ResolveAppFolder(const fs::path& programDir) {
    // An installed program (bin/ beside share/ketrel) keeps its data per user even where it may
    // write its own folder, as root may.
    std::error_code ec;
    const bool installed = fs::is_directory(programDir / ".." / "share" / "ketrel", ec);
    const bool writable = !installed && ::access(programDir.c_str(), W_OK) == 0;
    return ResolveAppFolder(programDir, writable, userDataFolder());
}

fs::path ResolveAppFolder(const fs::path& programDir, bool writable, const fs::path& userFolder) {
    fs::path folder = programDir;
    if (!writable) {
        folder = userFolder;
        // Installed copies sit beside the program or in ../share/ketrel.
        for (const fs::path& installed : {programDir, programDir / ".." / "share" / "ketrel"}) {
            seed(installed / "System", folder / "System");
            seed(installed / "Help", folder / "Help");
        }
    }
    std::error_code ec;
    for (const char* sub : {"System", "Log", "Help"})
        fs::create_directories(folder / sub, ec);
    return folder;
}

}  // namespace ketrel
