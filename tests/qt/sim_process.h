#pragma once
// ketrel-sim started as a program for the GUI tests: a simulated converter and car on a
// pseudo-terminal, reached through a symbolic link, stopped when the object goes.
#include <signal.h>

#include <filesystem>
#include <string>

#include "system/child_process.h"

namespace ketrel::test {

class SimProcess {
  public:
    // Starts the simulator with the given vehicle file and waits for its terminal.
    SimProcess(const std::string& link, const std::string& vehicleFile,
               const std::string& converter = "dorvane")
        : link_(Fresh(link)),
          sim_(KETREL_SIM_BINARY,
               {"--converter", converter, "--vehicle", vehicleFile, "--link", link_}),
          device_(sim_.firstLine()) {}
    ~SimProcess() {
        if (!killed_) sim_.stop(SIGTERM);
        std::error_code ignored;
        std::filesystem::remove(link_, ignored);
    }

    bool ready() const { return !device_.empty() && std::filesystem::exists(link_); }
    // Ends the simulator at once, as an adapter pulled out: its end of the terminal closes.
    void kill() {
        sim_.stop(SIGKILL);
        killed_ = true;
    }
    const std::string& link() const { return link_; }

  private:
    static std::string Fresh(const std::string& link) {
        std::filesystem::remove(link);
        return link;
    }

    std::string link_;
    ChildProcess sim_;
    std::string device_;
    bool killed_ = false;
};

}  // namespace ketrel::test
