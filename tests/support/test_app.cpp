#include "support/test_app.h"

#include <unistd.h>
#include <atomic>
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

TestApp::TestApp(SerialPortFactory* ports) {
    loop.setLimitMs(24LL * 3600 * 1000);  // a day of virtual time: anything longer is a hang
    app = std::make_unique<App>(Platform{loop, dialogs, settings, launcher, display,
                                         ports ? *ports : nullPorts, dir.path()});
}

}  // namespace ketrel::test
