#pragma once
#include <functional>
#include <istream>
#include <memory>
#include <ostream>
#include <string>

#include "platform/desktop.h"
#include "platform/dialogs.h"
#include "platform/null_serial_port.h"
#include "platform/settings_store.h"
#include "platform/virtual_event_loop.h"
#include "state/app.h"

namespace ketrel {

// Message boxes of a run without a screen: written to an error stream behind a prefix,
// answered with Cancel where the box has one, else with its default button.
class StreamDialogs : public Dialogs {
  public:
    StreamDialogs(std::ostream& err, std::string prefix) : err_(err), prefix_(std::move(prefix)) {}
    MsgAnswer show(const MessageBox& box) override;
    // Said before each message, such as "line 12".
    std::string context;

  private:
    std::ostream& err_;
    std::string prefix_;
};

// A launcher that opens nothing.
class NoLauncher : public Launcher {
  public:
    bool openTextFile(const std::string&) override { return false; }
    bool openDisplaySettings() override { return false; }
};

// Units of a replay without a window, as the settings name them.
struct ReplayUnits {
    std::string temp = "F", speed = "MPH", pressure = "PSI";
};

// An application that replays frames as the log player does, on virtual time, with settings
// in memory and no serial port: nothing of the user's is read or written. Used to turn a log
// into values without touching the application that is running.
class HeadlessReplay {
  public:
    // A replay of a log of this type word ("DORVANE", "BR3", ...); messages go to err.
    HeadlessReplay(std::ostream& err, const std::string& messagePrefix, const std::string& type,
                   const ReplayUnits& units);
    App& app() { return *app_; }
    StreamDialogs& dialogs() { return dialogs_; }
    // One frame of the log through the receive routine of its type, as the player pushes it.
    void play(const std::string& frame);
    // Every frame of a log file in `in`, in order: a line that is no frame is reported on err
    // and skipped, a frame's messages name its line; afterFrame (if any) runs after each.
    // Returns the frames played; `lines` gets the lines read and `readError` a failed read.
    long playLog(std::istream& in, const std::string& inputName,
                 const std::function<void(const std::string& frame)>& afterFrame, long& lines,
                 bool& readError);

  private:
    std::ostream& err_;
    std::string prefix_;
    VirtualEventLoop loop_;
    StreamDialogs dialogs_;
    MemorySettingsStore settings_;
    NoLauncher launcher_;
    FixedDisplayInfo display_;
    NullSerialPortFactory ports_;
    std::unique_ptr<App> app_;
};

}  // namespace ketrel
