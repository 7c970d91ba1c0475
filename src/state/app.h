#pragma once
#include <array>
#include <filesystem>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>

#include "platform/desktop.h"
#include "platform/dialogs.h"
#include "platform/event_loop.h"
#include "platform/printer.h"
#include "platform/realtime_section.h"
#include "platform/serial_port.h"
#include "platform/settings_store.h"
#include "screens/frm_alert_mil.h"
#include "screens/frm_connecting.h"
#include "screens/frm_main.h"
#include "screens/frm_new_pids.h"
#include "screens/frm_settings.h"
#include "state/c_time_it.h"
#include "state/mode6_vars.h"

namespace ketrel {

class ConnectLog;  // the connecting log file, made and used by the link layer
class Recorder;    // the log controller's logic, made by the recording layer

// The application's name in the settings store, and its section.
inline constexpr const char* kAppName = "Ketrel";
inline constexpr const char* kSection = "Settings";
inline constexpr const char* kAppVersion = "0.77";

// The four converters, as OBDIIHardware names them.
inline constexpr const char* kDorvane = "DORVANE PROTOCOL CONVERTER";
inline constexpr const char* kBr3 = "BR3 PROTOCOL CONVERTER";
inline constexpr const char* kKesh = "KESH PROTOCOL CONVERTER";
inline constexpr const char* kTactrix = "TACTRIX CABLE";

// The handles of the platform that the logic runs on.
struct Platform {
    EventLoop& loop;
    Dialogs& dialogs;
    SettingsStore& settings;
    Launcher& launcher;
    DisplayInfo& display;
    SerialPortFactory& ports;
    std::filesystem::path appPath;  // holds System/, Log/, Help/
};

// Routines of the session logic that the converter drivers call back into; core/ installs
// them, so the drivers (link/) need not depend on it.
struct SessionHooks {
    std::function<void()> LinkUp;
    std::function<void()> EndSession;
    std::function<void()> CancelConnect;
    // The connect command, for screens below core/ that start one (auto detect's Connect).
    std::function<void()> Connect;
    // Writes one frame to the log being recorded (set by the recorder while it records).
    std::function<void(const std::string&)> RecordFrame;
    // Runs after each frame of the scan has been decoded, RawFrame holding it (a headless
    // run writes its values out here).
    std::function<void()> FrameDecoded;
    // The request routines hand the line to the oxygen-sensor tests here when Mode5Requested
    // was up (the sweeps layer installs it).
    std::function<void()> Mode5Sequence;
};

// The count-byte converter's connect: whether the connect is over and the probe loops stop,
// whether a second module's frame is looked for, and which probes' list requests went
// unanswered. Reset at the start of every connect.
struct Br3ConnectState {
    bool ConnectEnded = false;
    bool SecondFrameExpected = false;
    bool VpwProbeDone = false, PwmProbeDone = false, IsoProbeDone = false, KwpSlowProbeDone = false,
         KwpFastProbeDone = false;
};

// The count-byte converter's request counters. They outlive a session, so a new connection
// goes on where the last one stopped. J1850 counters: index 0 PWM, 1 VPW; the others are per
// protocol: 0 PWM, 1 VPW, 2 ISO 9141, 3 KWP 2000.
struct Br3Counters {
    std::array<int, 2> VinFrame{0, 0}, CodeFrame{0, 0}, PendingFrame{0, 0};
    std::array<int, 4> PidIndex{1, 1, 1, 1}, FreezeIndex{1, 1, 1, 1}, ExtendedIndex{33, 33, 33, 33};
};

// Where the raw K-line connect stands: the connect routine waits on these while the wake-up
// runs on the port's events and the time-out.
struct KeshConnectState {
    bool Finished = false;  // the link is up, or "No Communication" was answered
    bool Retry = false;     // the user asked for the whole connect again
    // Real-time priority held from the address byte until the inverted key byte is out, so
    // the thread wakes at once for the key bytes and keeps the 25 ms to the answer under load.
    std::unique_ptr<RealtimeSection> HandshakePriority;
};

// The application object: the one block of session variables, under the names the whole
// program uses, the screens, and the platform handles. Tests make a fresh one per case.
class App {
  public:
    explicit App(Platform platform);
    App(const App&) = delete;
    App& operator=(const App&) = delete;
    ~App();

    Platform platform;
    EventLoop& loop() { return platform.loop; }
    Dialogs& dialogs() { return platform.dialogs; }
    std::filesystem::path appPath() const { return platform.appPath; }

    // GetSetting / SaveSetting on the section "Settings".
    std::string GetSetting(const std::string& key, const std::string& def = "");
    void SaveSetting(const std::string& key, const std::string& value);

    // ---- Screens (made with the application, loaded and unloaded explicitly)
    FrmMain& frmMain() { return *frmMain_; }
    FrmSettings& frmSettings() { return *frmSettings_; }
    FrmConnecting& frmConnecting() { return *frmConnecting_; }
    FrmSplash& frmSplash() { return *frmSplash_; }
    FrmNewPids& frmNewPids() { return *frmNewPids_; }
    FrmAlertMIL& frmAlertMIL() { return *frmAlertMIL_; }
    // Every screen that exists, by name, for the shutdown order and the views.
    Screen* screenByName(const std::string& name);
    // Unloads the named screens in the order given; screens not in the program are passed over.
    template <class Names>
    void unloadScreens(const Names& names) {
        for (const char* name : names) {
            if (Screen* s = screenByName(name)) s->unload();
        }
    }
    void unloadScreens(std::initializer_list<const char*> names) {
        unloadScreens<std::initializer_list<const char*>>(names);
    }
    // Hides a screen if the program has it (the recorder, while codes are cleared).
    void hideScreen(const std::string& name) {
        if (Screen* s = screenByName(name)) s->hide();
    }
    std::vector<Screen*> screens();
    // Later screens register themselves here when they are made.
    void addScreen(std::unique_ptr<Screen> screen);

    cTimeIt& TimerObject();
    SessionHooks hooks;
    // The connecting log, made on first use by ConnLog(app) of the link layer.
    std::shared_ptr<ConnectLog> connectLog;
    // The log controller's file, replay and elapsed time, made by InstallRecorder.
    std::shared_ptr<Recorder> recorder;

    // ---- Session and link state
    bool Connected = false;
    bool Connecting = false;
    bool ConnectCancelled = false;
    bool Mode2ListMissing = false;
    long ConnectSeconds = 0;
    bool PlayingLog = false;
    bool Recording = false;
    bool PlayFormOpen = false;
    std::string OBDIIHardware;
    std::string ConnectPort;
    long TimeOut = 0;
    std::string ProtocolCode;
    std::string ConverterVersion;
    long ConnectCount = 0;

    // ---- One-shot request flags and answer markers
    bool RequestClearCodes = false, RequestTroubleCodes = false, RequestPendingCodes = false,
         RequestFFCode = false, RequestFFData = false, RequestInfo = false, RequestFirmware = false,
         RequestPid1C = false;
    bool PendingAnswered = false, FFCodeAnswered = false, TroubleAnswered = false;

    // ---- The decoded frame. A byte cell is empty ("" / nothing) or holds its value.
    std::string RawFrame;
    std::string RxMode;
    std::string RxPID;
    std::array<std::string, 19> ByteBits{};         // 1..18
    std::array<std::optional<int>, 6> ByteValue{};  // 1..5
    std::array<std::string, 19> ByteHex{};          // 1..18

    // ---- PID bookkeeping
    std::array<bool, 97> Mode1Supported{};  // 0..96
    std::array<bool, 97> Mode2Supported{};  // 0..96
    std::array<bool, 101> PidWanted{};      // 0..100
    bool FFPidsKnown = false;
    int SupportedCount = 0, FFSupportedCount = 0, ExtendedPIDCount = 0;
    bool PidDiscoveryDone = false, Mode1ListRead = false, Mode2ListRead = false;
    // Bits of PID 13 and PID 1D, index 0 for the first character of the bit text.
    std::array<bool, 8> O2Location{}, O2LocationAlt{};
    // Runs after a live mass air flow reply has been written to lblMAF (fuel economy hooks in).
    std::function<void()> AfterLiveMAF;

    // ---- Settings mirrored in memory
    std::string Temp, Pressure, Speed, DataStyle, BR3Delay;
    bool BR3SetDelay = false;
    int KeshStart = 0, BR3Start = 0;
    bool ConnectLogEnabled = false, DisplaySet = false, AlertOnMIL = false, SaveInfo = false;
    bool SecondFrameConnect = false;
    bool GridStyle = false;

    // ---- Flags of screens shown beside the session
    bool AppClosing = false, DetectPanelEnabled = false, Mode6ListVisible = false;

    // ---- Variables one feature owns and several share
    std::string FrameOut, FrameHeader, FrameHeader3, PortInput, LastRequestHex, KeywordHex;
    bool RequestPid20 = false, RequestPid40 = false;
    bool KeshRequestMode2List = false, KeshRequestPid1C = false;
    bool CustomListActive = false;
    // PidWanted(0..41) while a display or a sweep holds the polling.
    std::array<bool, 42> SavedPidWanted{};
    std::string VinText;
    std::string CodeDescription;
    // Where printed pages go: the desktop's printer; none in a run without one.
    PagePrinter* printer = nullptr;
    std::array<std::string, 10> TroubleCodes{};  // 1..9, the codes of the last Mode 03 reply
    std::array<std::string, 10> PendingCodes{};  // 1..9, the codes of the last Mode 07 reply
    std::string LastFreezeCode;                  // the code of the last Mode 02 PID 02 reply
    bool Mode6Active = false, Mode6Cancel = false;
    int Mode6PIDIndex = 0;
    bool Mode5Requested = false;
    int Mode5TestID = 0, Mode5Sensor = 0;
    bool Mode5ManufActive = false;
    int RecordIndex = 0;
    double RecordCount = 0;
    std::string RecordDate;
    bool RecordUnsaved = false;
    std::string LogName, LogType;
    long LogFrames = 0;
    bool SaveNameOpen = false;
    bool StopPlay = false;
    int DetectTicks = 0;

    // ---- The DORVANE path's own state, kept between calls
    bool SendFirstCommand = false;
    int PollPosition = 0;
    int FFPosition = 0;
    int SyncCount = 0;
    int RetryCount = 0;
    int TimeOutCount = 0;  // firings of the watchdog, 1 to 4

    // ---- The count-byte converter's own state
    Br3ConnectState Br3Connect;
    Br3Counters Br3Count;

    // ---- The raw K-line cables' own state (their counters use the ISO and KWP slots)
    KeshConnectState KeshConnect;
    Br3Counters KeshCount;

    // ---- Display measurement shared with the start-up check
    int DisplayWidth = 0, DisplayHeight = 0, DisplayDepth = 0;

    // ---- The Mode 6 sweeps: the count-byte converter's and the K-line cables' own variables,
    // the J1850 frame index and repeat flag (the polling flags they hold: SavedPidWanted).
    Mode6Vars Mode6Br3, Mode6Kesh;
    int Mode6FrameIndex = 0;
    bool Mode6Again = false;

  private:
    std::unique_ptr<FrmMain> frmMain_;
    std::unique_ptr<FrmSettings> frmSettings_;
    std::unique_ptr<FrmConnecting> frmConnecting_;
    std::unique_ptr<FrmSplash> frmSplash_;
    std::unique_ptr<FrmNewPids> frmNewPids_;
    std::unique_ptr<FrmAlertMIL> frmAlertMIL_;
    std::array<Screen*, 6> fixedScreens() const;
    std::vector<std::unique_ptr<Screen>> extraScreens_;
    std::unique_ptr<cTimeIt> timerObject_;
};

// Booleans as the settings store keeps them.
inline std::string BoolText(bool b) {
    return b ? "True" : "False";
}

}  // namespace ketrel
