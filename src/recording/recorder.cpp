#include "recording/recorder.h"

#include <cmath>
#include <ctime>
#include <exception>
#include <memory>

#include "link/converters.h"
#include "obd/trouble_codes.h"
#include "recording/replay.h"
#include "recording/save_dialogue.h"
#include "screens/frm_input_record_name.h"
#include "screens/frm_recorder.h"
#include "state/app.h"

namespace ketrel {

namespace {

constexpr Geometry kRecorderPlace{100, 100, 420, 145};

std::string twoDigits(int n) {
    return (n < 10 ? "0" : "") + std::to_string(n);
}

// The date in the system's short form.
std::string shortDate(const LocalDateTime& t) {
    std::tm tm{};
    tm.tm_year = t.year - 1900;
    tm.tm_mon = t.month - 1;
    tm.tm_mday = t.day;
    char buf[64];
    std::size_t n = std::strftime(buf, sizeof buf, "%x", &tm);
    return std::string(buf, n);
}

std::string countText(double count) {
    return std::to_string(std::llround(count));
}

template <class T>
T& screenOf(App& app, const char* name) {
    if (Screen* s = app.screenByName(name)) return dynamic_cast<T&>(*s);
    auto made = std::make_unique<T>(app.loop());
    T& screen = *made;
    app.addScreen(std::move(made));
    return screen;
}

void setDelayControls(FrmRecorder& r, bool on) {
    r.sldSpeed.setEnabled(on);
    r.Label1[54].setEnabled(on);
    r.lblSpeed.setEnabled(on);
}

// Runs a button's handler whatever its state, as the menu entries press them.
void press(Field& button) {
    if (button.onClick) button.onClick();
}

}  // namespace

void ElapsedTime::step() {
    if (tenths == 9) {
        if (seconds == 59) {
            minutes++;
            seconds = 0;
            if (minutes == 60) {
                hours++;
                minutes = 0;
            }
        } else {
            seconds++;
        }
        tenths = 0;
    } else {
        tenths++;
    }
}

std::string ElapsedTime::text() const {
    return twoDigits(hours) + ":" + twoDigits(minutes) + "." + twoDigits(seconds) + "." +
           std::to_string(tenths);
}

Recorder::Recorder(App& app) : app_(app) {}

Recorder::~Recorder() {
    if (playEvent_) app_.loop().scheduler().cancel(playEvent_);
}

void Recorder::setButtons(bool record, bool play, bool stop) {
    FrmRecorder& r = RecorderScreen(app_);
    FrmMain& m = app_.frmMain();
    r.cmdRecord.setEnabled(record);
    r.cmdPlay.setEnabled(play);
    r.cmdStop.setEnabled(stop);
    m.mnuEditRecord.setEnabled(record);
    m.mnuEditPlay.setEnabled(play);
    m.mnuEditStop.setEnabled(stop);
}

void Recorder::fileError(const std::string& text) {
    app_.dialogs().show(MessageBox{"Error", text, MsgButtons::Ok, MsgIcon::Stop, false});
}

void Recorder::opening() {
    FrmRecorder& r = RecorderScreen(app_);
    r.setTopmost(kRecorderPlace);
    DeleteWorkingLog(app_.appPath());
    app_.RecordCount = 0;
    app_.RecordIndex = 0;
    if (!app_.Connected) setDelayControls(r, true);
    r.lblSpeed.setText(std::to_string(r.sldSpeed.value()));
    app_.frmMain().lstRecordData.clear();
    app_.unloadScreens({"frmRealDisplay"});
}

bool Recorder::beginRecording() {
    std::error_code ignored;
    std::filesystem::create_directories(LogFolder(app_.appPath()), ignored);
    if (!writer_.open(LogFilePath(app_.appPath(), kWorkingLogName))) {
        const std::string text = writer_.error();
        writer_.close();
        RecorderScreen(app_).panel(1).setText("-----");
        fileError(text);
        return false;
    }
    const ConverterDriver* driver = FindConverter(app_.OBDIIHardware);
    app_.LogType = driver && driver->logType ? driver->logType(app_) : "";
    app_.RecordDate = shortDate(time_->now());
    app_.Recording = true;
    app_.RecordUnsaved = true;
    return true;
}

void Recorder::endRecording() {
    writer_.close();
    app_.Recording = false;
}

void Recorder::record() {
    if (!beginRecording()) return;
    FrmRecorder& r = RecorderScreen(app_);
    r.sldSpeed.setEnabled(false);
    r.panel(1).setText("STATUS:  RECORDING...");
    r.Timer1.start();
    setButtons(false, false, true);
}

void Recorder::writeFrame(const std::string& frame) {
    if (!writer_.isOpen()) return;
    if (writer_.writeLine(frame)) return;
    const std::string text = writer_.error();
    endRecording();
    FrmRecorder& r = RecorderScreen(app_);
    r.Timer1.stop();
    r.panel(1).setText("-----");
    setButtons(app_.Connected, false, false);
    fileError(text);
}

void Recorder::tick() {
    FrmRecorder& r = RecorderScreen(app_);
    if (!app_.Connected) {
        press(r.cmdStop);
        r.unload();
        return;
    }
    elapsed_.step();
    r.panel(3).setText("ELAPSE:  " + elapsed_.text());
    r.panel(2).setText("FRAME:  " + countText(app_.RecordCount));
}

void Recorder::stop() {
    FrmRecorder& r = RecorderScreen(app_);
    if (app_.Recording) writer_.close();
    app_.StopPlay = true;
    app_.PlayingLog = false;
    app_.Recording = false;
    r.Timer1.stop();
    r.panel(1).setText("STATUS:  STOP");
    setButtons(app_.Connected, !app_.Connected, false);
}

void Recorder::play() {
    FrmRecorder& r = RecorderScreen(app_);
    FrmMain& m = app_.frmMain();
    // A replay still winding down after a stop gives way to the new one.
    if (playEvent_) app_.loop().scheduler().cancel(playEvent_);
    playEvent_ = 0;
    reader_.close();
    played_ = 0;
    setDelayControls(r, true);
    app_.StopPlay = false;
    BeginReplay(app_, app_.LogType);
    for (Control* c :
         {static_cast<Control*>(&m.mnuFileOpen), static_cast<Control*>(&m.mnuOptionSettings),
          static_cast<Control*>(&m.mnuVehicleConnect), static_cast<Control*>(&m.button(2))})
        c->setEnabled(false);
    if (!reader_.open(LogFilePath(app_.appPath(), app_.LogName))) {
        const std::string text = reader_.error();
        fileError(text);
        press(r.cmdStop);
        endReplay();
        r.panel(1).setText("-----");
        return;
    }
    armPlayStep(0);
}

void Recorder::armPlayStep(int delayMs) {
    Scheduler& s = app_.loop().scheduler();
    playEvent_ = s.postAt(s.clock().nowMicros() + std::int64_t(delayMs) * 1000, [this] {
        playEvent_ = 0;
        playStep();
    });
}

// One frame of the replay: read, count, stop if asked (the frame just read is dropped), else
// through its receive routine, then the next frame after the delay.
void Recorder::playStep() {
    FrmRecorder& r = RecorderScreen(app_);
    try {
        if (!reader_.next(frame_)) {
            const std::string text = reader_.error();
            endReplay();
            if (!text.empty()) {
                fileError(text);
                r.panel(1).setText("-----");
            }
            return;
        }
        played_++;
        r.panel(2).setText("FRAME:  " + std::to_string(played_) + " of " +
                           std::to_string(app_.LogFrames));
        if (app_.StopPlay) {
            endReplay();
            return;
        }
        PlayFrame(app_, app_.LogType, frame_);
        r.panel(1).setText("STATUS:  PLAYING...");
        r.panel(3).setText("-----");
        setButtons(false, false, true);
    } catch (const std::exception& e) {
        fileError(e.what());
        press(r.cmdStop);
        reader_.close();
        EndReplay(app_);
        r.panel(1).setText("-----");
        return;
    }
    armPlayStep(r.sldSpeed.value());
}

void Recorder::endReplay() {
    FrmRecorder& r = RecorderScreen(app_);
    FrmMain& m = app_.frmMain();
    reader_.close();
    m.mnuVehicleConnect.setEnabled(true);
    m.button(2).setEnabled(true);
    m.mnuOptionSettings.setEnabled(true);
    r.panel(1).setText("STATUS:  END");
    m.mnuEditPlay.setEnabled(true);
    m.mnuEditStop.setEnabled(false);
    r.cmdStop.setEnabled(false);
    r.cmdPlay.setEnabled(true);
    EndReplay(app_);
}

void Recorder::windUp() {
    if (playEvent_) app_.loop().scheduler().cancel(playEvent_);
    playEvent_ = 0;
    if (reader_.isOpen()) endReplay();
}

void Recorder::closing(bool& cancel) {
    if (app_.Recording || app_.PlayingLog) {
        cancel = true;
        return;
    }
    FrmRecorder& r = RecorderScreen(app_);
    FrmMain& m = app_.frmMain();
    r.hide();
    app_.Recording = false;
    if (app_.RecordUnsaved) {
        MsgAnswer a = app_.dialogs().show(MessageBox{"Save File", "Do You Want To Save Data Log?",
                                                     MsgButtons::YesNo, MsgIcon::Question, false});
        if (a == MsgAnswer::Yes) {
            cancel = true;
            OpenSaveDialogue(app_);
            return;
        }
    }
    app_.RecordUnsaved = false;
    for (int b : {7, 10, 4})
        m.button(b).setEnabled(true);
    for (MenuItem* e : {&m.mnuView, &m.mnuHelp, &m.mnuOption, &m.mnuFile})
        e->setEnabled(true);
    m.mnuEditPlay.setEnabled(false);
    m.mnuEditStop.setEnabled(false);
    if (app_.Connected) {
        for (int b : {5, 12, 14, 15})
            m.button(b).setEnabled(true);
        m.mnuEditRecord.setEnabled(true);
    } else {
        m.gridPending.clear();
        m.gridTroubleCode.clear();
        FormatCodeGrids(app_);
        m.lstCodes.clear();
        m.lstPendingCodes.clear();
        m.lstRecordData.clear();
        for (Control* c :
             {static_cast<Control*>(&m.cmdPrintFFData), static_cast<Control*>(&m.mnuFilePrintFF),
              static_cast<Control*>(&m.cmdClearCodes), static_cast<Control*>(&m.button(5)),
              static_cast<Control*>(&m.button(12))})
            c->setEnabled(false);
        m.mnuOptionSettings.setEnabled(true);
        m.mnuFileOpen.setEnabled(true);
    }
}

FrmRecorder& RecorderScreen(App& app) {
    return screenOf<FrmRecorder>(app, "frmRecorder");
}

FrmInputRecordName& SaveNameScreen(App& app) {
    return screenOf<FrmInputRecordName>(app, "frmInputRecordName");
}

Recorder& RecorderOf(App& app) {
    if (!app.recorder) app.recorder = std::make_shared<Recorder>(app);
    return *app.recorder;
}

void InstallRecorder(App& app) {
    // A screen of another kind under these names (a stand-in) keeps its place.
    for (const char* name : {"frmRecorder", "frmInputRecordName"}) {
        Screen* s = app.screenByName(name);
        if (s && !dynamic_cast<FrmRecorder*>(s) && !dynamic_cast<FrmInputRecordName*>(s)) return;
    }
    Recorder& rec = RecorderOf(app);
    FrmRecorder& r = RecorderScreen(app);
    FrmMain& m = app.frmMain();
    r.onLoad = [&rec] { rec.opening(); };
    r.cmdRecord.onClick = [&rec] { rec.record(); };
    r.cmdStop.onClick = [&rec] { rec.stop(); };
    r.cmdPlay.onClick = [&rec] { rec.play(); };
    r.Timer1.setHandler([&rec] { rec.tick(); });
    r.sldSpeed.onChange = [&r] { r.lblSpeed.setText(std::to_string(r.sldSpeed.value())); };
    r.onQueryUnload = [&rec](bool& cancel) { rec.closing(cancel); };
    // A replay that was stopped and not yet wound down ends with the window.
    r.onUnload = [&rec] { rec.windUp(); };
    app.hooks.RecordFrame = [&rec](const std::string& frame) { rec.writeFrame(frame); };
    // Play and Stop have nothing to act on until a log is recorded or opened.
    for (MenuItem* e : {&m.mnuEditPlay, &m.mnuEditStop}) {
        e->setEnabled(false);
        e->markDesign();
    }

    m.mnuEditRecord.onClick = [&m, &r] {
        for (int b : {5, 7, 10, 12})
            m.button(b).setEnabled(false);
        for (MenuItem* e : {&m.mnuView, &m.mnuHelp, &m.mnuOption})
            e->setEnabled(false);
        r.show();
        r.cmdPlay.setEnabled(false);
        r.cmdStop.setEnabled(false);
        r.cmdRecord.setEnabled(true);
        press(r.cmdRecord);
    };
    m.mnuEditPlay.onClick = [&r] {
        r.show();
        press(r.cmdPlay);
    };
    m.mnuEditStop.onClick = [&r] {
        r.show();
        press(r.cmdStop);
    };
    InstallSaveDialogue(app);
}

}  // namespace ketrel
