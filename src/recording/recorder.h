#pragma once
#include <cstdint>
#include <string>

#include "platform/local_time.h"
#include "recording/log_file.h"

namespace ketrel {

class App;
class FrmRecorder;
class FrmInputRecordName;

// The elapsed time of recordings, in tenths, seconds, minutes and hours; it runs on across
// recordings for as long as the program does.
struct ElapsedTime {
    int tenths = 0, seconds = 0, minutes = 0, hours = 0;
    // One tenth of a second more.
    void step();
    // "hh:mm.ss.t", as the status bar shows it.
    std::string text() const;
};

// The log controller's logic: the handlers of frmRecorder, the file of the recording being
// written and the player of a saved log. One per application (App::recorder).
class Recorder {
  public:
    explicit Recorder(App& app);
    ~Recorder();
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    // frmRecorder's load: on top at its place, Untitled.log gone, counts at zero.
    void opening();
    // cmdRecord: starts (or goes on with) the recording into Untitled.log.
    void record();
    // Timer1: the elapsed time and frame count; ends the recording when the link has gone.
    void tick();
    // cmdStop: closes the recording or stops the replay.
    void stop();
    // cmdPlay: plays Log/<LogName>.log of type LogType through the receive routines, one frame
    // per turn of the event loop, sldSpeed's value in ms apart.
    void play();
    // The close request: refused while recording or playing; asks to save an unsaved recording.
    void closing(bool& cancel);
    // The window goes: a stopped replay that has not read its next frame yet ends now.
    void windUp();

    // The part of cmdRecord that a recording without the window shares: opens Untitled.log for
    // appending, takes LogType and RecordDate, sets Recording and RecordUnsaved. False (after
    // the "Error" box) when the file can't be opened.
    bool beginRecording();
    // Closes the file and ends the recording; the frames written stay in Untitled.log.
    void endRecording();
    // The file half of the record step (App::hooks.RecordFrame): one line, written through. A
    // write that fails ends the recording with the "Error" box.
    void writeFrame(const std::string& frame);

    // Where RecordDate comes from (tests fix it).
    void setTimeSource(LocalTimeSource& source) { time_ = &source; }
    const ElapsedTime& elapsed() const { return elapsed_; }
    // Frames of the replay read so far (the counter of the status bar).
    long framesPlayed() const { return played_; }
    bool replaying() const { return reader_.isOpen(); }

  private:
    void fileError(const std::string& text);
    void playStep();
    void armPlayStep(int delayMs);
    void endReplay();
    void setButtons(bool record, bool play, bool stop);

    App& app_;
    LogWriter writer_;
    LogReader reader_;
    ElapsedTime elapsed_;
    long played_ = 0;
    std::uint64_t playEvent_ = 0;
    std::string frame_;
    SystemLocalTime systemTime_;
    LocalTimeSource* time_ = &systemTime_;
};

// The log controller's screen and the save dialogue, made on first use.
FrmRecorder& RecorderScreen(App& app);
FrmInputRecordName& SaveNameScreen(App& app);
// The application's recorder, made on first use.
Recorder& RecorderOf(App& app);

// Makes the recorder and its screens and sets their handlers, the record step of the receive
// paths and the main screen's Edit entries Record, Play and Stop.
void InstallRecorder(App& app);

}  // namespace ketrel
