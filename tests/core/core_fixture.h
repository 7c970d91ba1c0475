#pragma once
#include <map>
#include <string>
#include <vector>

#include "core/application.h"
#include "core/startup.h"
#include "support/test_app.h"

namespace ketrel::test {

// An application with its logic installed, started from a given settings store.
struct StartedApp : TestApp {
    explicit StartedApp(const std::map<std::string, std::string>& stored = {},
                        SerialPortFactory* ports = nullptr)
        : TestApp(ports) {
        for (auto& [key, value] : stored)
            settings.save(kAppName, kSection, key, value);
        settings.clearSaveLog();
        InstallApplication(*app);
    }
    void start() { StartApplication(*app); }
    // The saves of one key, in order.
    std::vector<std::string> savesOf(const std::string& key) const {
        std::vector<std::string> out;
        std::string prefix = std::string(kSection) + "/" + key + "=";
        for (auto& line : settings.saveLog())
            if (line.rfind(prefix, 0) == 0) out.push_back(line.substr(prefix.size()));
        return out;
    }
};

}  // namespace ketrel::test
