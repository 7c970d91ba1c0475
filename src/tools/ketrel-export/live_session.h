#pragma once
#include <filesystem>
#include <memory>
#include <ostream>

#include "export.h"

namespace ketrel {
class App;
}  // namespace ketrel

namespace ketrel::exporter {

// Where a live session finds the user's settings and the program's folders.
struct LiveSetup {
    std::filesystem::path configRoot;  // holds Ketrel/Ketrel.ini
    std::filesystem::path appPath;     // holds Log/, where the connecting log goes
};

// Why a live run ended.
enum class LiveEnd { Running, TimeUp, Interrupted, NoLink, LinkLost, OutputFailed };

// The program's session without a window: the application object with its whole logic on
// Qt's event loop (a QCoreApplication must exist), the settings of the INI file read through
// an overlay that keeps every save in memory, the command line's converter and port put on
// top. It connects as the Connect command does, prints the connecting status, the status
// bar's connection text and every message box to `err`, and writes a CSV row to `out` for
// each frame the scan decodes.
class LiveSession {
  public:
    LiveSession(const ExportOptions& options, const LiveSetup& setup, std::ostream& out,
                std::ostream& err);
    ~LiveSession();
    LiveSession(const LiveSession&) = delete;
    LiveSession& operator=(const LiveSession&) = delete;

    // Connects and scans until the time is up, the link is lost or interrupt() is called;
    // returns the exit status.
    int run();
    // Ends the run: a connect under way is cancelled, a session is ended. Runs on the event
    // thread (a signal handler only wakes it).
    void interrupt();
    LiveEnd end() const;
    // Frames decoded by the scan so far.
    long frames() const;
    App& app();

  private:
    struct Impl;
    std::unique_ptr<Impl> d_;
};

// --connect as a program: Qt's core application, SIGINT and SIGTERM turned into interrupt()
// through a pipe the event loop watches, the session on standard output and error.
int RunLive(int& argc, char** argv, const ExportOptions& options);

}  // namespace ketrel::exporter
