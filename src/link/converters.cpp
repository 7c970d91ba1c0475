#include "link/converters.h"

#include "link/br3_connect.h"
#include "link/br3_receive.h"
#include "link/dorvane_link.h"
#include "link/dorvane_receive.h"
#include "link/kesh_connect.h"
#include "link/kesh_receive.h"
#include "platform/text_compare.h"
#include "state/app.h"

namespace ketrel {
namespace {

const char* dorvaneLogType(const App&) {
    return "DORVANE";
}

// The text converter's connect is armed here and runs on the port's events and timers.
ConnectOutcome connectDorvane(App& app) {
    DORVANEOpenConnect(app);
    return ConnectOutcome::Done;
}

// The text converter's replay: RxMode and RxPID come from the frame's own columns; a frame too
// short to hold both PID digits has none.
void replayDorvane(App& app) {
    SetDorvaneFrame(app, app.RawFrame);
    if (app.RawFrame.size() < 11) app.RxPID.clear();
    DORVANERECEIVE(app);
}

const std::array<ConverterDriver, 4> kConverters{{
    {kBr3,
     "BR3",
     19200,
     InstallBr3,
     BR3Connect,
     nullptr,
     Br3LogType,
     {{{"BR3", BR3ReceiveJ1850}, {"BR3ISO", BR3ReceiveISO}}},
     {"Count-byte protocol converter, serial 19200 baud", "Corvale Instruments",
      "https://corvale.example.com", "Not reported by the converter",
      "J1850 VPW, J1850 PWM, ISO 9141, ISO 14230 (KWP 2000)"}},
    {kDorvane,
     "DORVANE",
     19200,
     InstallDorvane,
     connectDorvane,
     DorvaneConnectEnded,
     dorvaneLogType,
     {{{"DORVANE", replayDorvane}}},
     {"Text-command protocol converter, serial 19200 baud", "Harlow Bench Electronics",
      "https://harlow-bench.example.com", "Asked for at the connect",
      "J1850 VPW, J1850 PWM, ISO 9141, ISO 14230 (KWP 2000)"}},
    {kKesh,
     "KESH",
     10400,
     InstallKesh,
     KeshConnect,
     nullptr,
     KeshLogType,
     {{{"KESHISO-9141", KeshReceiveISO}}},
     {"K-line interface, raw 10400 baud", "Tessam Works", "https://tessam.example.com",
      "Not reported by the interface", "ISO 9141, ISO 14230 (KWP 2000)"}},
    // The same cable logic under another name; only the log type word differs.
    {kTactrix,
     "TACTRIX",
     10400,
     nullptr,
     KeshConnect,
     nullptr,
     KeshLogType,
     {{{"TACTRIXISO-9141", KeshReceiveISO}}},
     {"K-line cable, raw 10400 baud", "Ombrell Cable Company", "https://ombrell.example.com",
      "None (a cable without firmware of its own)", "ISO 9141, ISO 14230 (KWP 2000)"}},
}};

}  // namespace

std::span<const ConverterDriver> Converters() {
    return kConverters;
}

const ConverterDriver* FindConverter(const std::string& hardware) {
    for (const ConverterDriver& d : kConverters)
        if (hardware == d.hardware) return &d;
    return nullptr;
}

std::string ConverterByWord(const std::string& word) {
    for (const ConverterDriver& d : kConverters)
        if (EqualsNoCase(word, d.hardware) || EqualsNoCase(word, d.word)) return d.hardware;
    return {};
}

void InstallConverters(App& app) {
    for (const ConverterDriver& d : kConverters)
        if (d.install) d.install(app);
}

ReceiveRoutine ReplayRoutine(const std::string& type) {
    for (const ConverterDriver& d : kConverters)
        for (const LogTypeRoute& r : d.replays)
            if (r.type && type == r.type) return r.receive;
    return nullptr;
}

bool PlayFrame(App& app, const std::string& type, const std::string& frame) {
    ReceiveRoutine receive = ReplayRoutine(type);
    if (!receive) return false;
    app.RawFrame = frame;
    receive(app);
    return true;
}

}  // namespace ketrel
