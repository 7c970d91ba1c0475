#pragma once
#include <array>
#include <span>
#include <string>

namespace ketrel {

class App;

// A receive routine: decodes the frame in RawFrame (cells cut by the routine itself).
using ReceiveRoutine = void (*)(App& app);

// One type word of a recorded log and the receive routine that replays its frames.
struct LogTypeRoute {
    const char* type = nullptr;  // "DORVANE", "BR3", "BR3ISO", ...
    ReceiveRoutine receive = nullptr;
};

// How a device's connect ended: done (linked, failed or cancelled; the screens say which), or
// the user asked to begin the whole connect again from the start.
enum class ConnectOutcome { Done, Retry };

// What the about-hardware screen tells of a link device.
struct ConverterFacts {
    const char* type;       // what kind of device it is
    const char* maker;      // who makes it
    const char* web;        // the maker's web address
    const char* firmware;   // shown when the device has not given its own version
    const char* protocols;  // the vehicle protocols it carries
};

// One link device as the session, the scan cycle and the log player meet it. Every place that
// differs by device goes through this row; a new device is a new row.
struct ConverterDriver {
    const char* hardware;  // the name OBDIIHardware holds
    const char* word;      // its first word, as command lines and log types name it
    int baud;              // line rate of the scan, shown on the status bar
    // Installs the handlers of the device's ports and timers; run once with the application.
    void (*install)(App& app);
    // The device's branch of frmConnecting.StartTimer: opens the connecting port and runs or
    // arms the connect. Throws SerialError when a port can't be opened. Null while this build
    // cannot connect to the device.
    ConnectOutcome (*connect)(App& app);
    // Runs when frmConnecting unloads after a connect that was not cancelled; may be null.
    void (*connectEnded)(App& app);
    // The type word of a log recorded now (ProtocolCode may decide) and the routines that
    // replay each type word of this device's logs.
    const char* (*logType)(const App& app);
    std::array<LogTypeRoute, 2> replays;
    ConverterFacts facts;
};

// Every link device, in the order the settings screen lists them.
std::span<const ConverterDriver> Converters();
// The row of the device OBDIIHardware names, or null.
const ConverterDriver* FindConverter(const std::string& hardware);
// The full name for a word of a command line: the full name or its first word, in any case.
// Empty when it names none.
std::string ConverterByWord(const std::string& word);
// Runs every device's install routine.
void InstallConverters(App& app);

// The receive routine of a log type word, or null for a word no device writes.
ReceiveRoutine ReplayRoutine(const std::string& type);
// One frame of a log of that type through its receive routine, as the player pushes it:
// RawFrame takes the text (the text converter's RxMode and RxPID are cut from it here; the
// hex types cut their own). False, and nothing done, for an unknown type.
bool PlayFrame(App& app, const std::string& type, const std::string& frame);

}  // namespace ketrel
