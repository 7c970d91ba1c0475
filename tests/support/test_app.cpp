#include "support/test_app.h"

#include <unistd.h>
#include <atomic>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

namespace ketrel::test {

TempDir::TempDir() {
    static std::atomic<int> counter{0};
    path_ = std::filesystem::temp_directory_path() /
            ("ketrel-test-" + std::to_string(::getpid()) + "-" + std::to_string(counter++));
    std::filesystem::remove_all(path_);
    std::filesystem::create_directories(path_);
}

TempDir::~TempDir() {
    std::error_code ec;
    std::filesystem::remove_all(path_, ec);
}

std::string ReadFile(const std::filesystem::path& p) {
    std::ifstream in(p, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::filesystem::path WriteFile(const std::filesystem::path& p, const std::string& bytes) {
    if (p.has_parent_path()) std::filesystem::create_directories(p.parent_path());
    std::ofstream(p, std::ios::binary) << bytes;
    return p;
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> v;
    std::istringstream in(text);
    for (std::string l; std::getline(in, l);)
        v.push_back(l);
    return v;
}

std::filesystem::path EditedCopy(const std::string& source, const std::string& from,
                                 const std::string& to, const std::filesystem::path& p) {
    std::string text = ReadFile(source);
    std::size_t at = text.find(from);
    if (at != std::string::npos) text.replace(at, from.size(), to);
    return WriteFile(p, text);
}

TestApp::TestApp(SerialPortFactory* ports) {
    loop.setLimitMs(24LL * 3600 * 1000);  // a day of virtual time: anything longer is a hang
    app = std::make_unique<App>(Platform{loop, dialogs, settings, launcher, display,
                                         ports ? *ports : nullPorts, dir.path()});
}

}  // namespace ketrel::test
