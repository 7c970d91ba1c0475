#include "recording/save_dialogue.h"

#include "recording/log_file.h"
#include "recording/log_save.h"
#include "recording/recorder.h"
#include "screens/frm_input_record_name.h"
#include "screens/frm_recorder.h"
#include "state/app.h"

namespace ketrel {

namespace {

void errorBox(App& app, const std::string& text) {
    app.dialogs().show(MessageBox{"Error", text, MsgButtons::Ok, MsgIcon::Stop, false});
}

void save(App& app) {
    FrmInputRecordName& d = SaveNameScreen(app);
    FrmRecorder& r = RecorderScreen(app);
    const std::string name = d.txtSaveName.text();
    if (name.empty()) return;
    if (!IsSafeLogName(name)) {
        errorBox(app, "Invalid Log Name: \"" + name +
                          "\". A name may not hold \"/\", \"\\\" or \"..\".");
        return;
    }
    const LogSaveResult result = SaveRecordedLog(app, name);
    if (!result.saved()) {
        errorBox(app, result.fileError);
        return;
    }
    // The log has its name; without its row it is only kept, not listed.
    if (!result.catalogueError.empty()) errorBox(app, result.catalogueError);
    app.LogName = name;
    r.setCaption("Log Controller - " + name + ".log");
    app.Recording = false;
    app.RecordUnsaved = false;
    r.cmdRecord.setEnabled(app.Connected);
    r.cmdPlay.setEnabled(!app.Connected);
    r.cmdStop.setEnabled(false);
    d.unload();
    app.dialogs().message("File Saved Successfully", "Ketrel", MsgIcon::Information);
    r.show();
}

void cancel(App& app) {
    FrmInputRecordName& d = SaveNameScreen(app);
    FrmRecorder& r = RecorderScreen(app);
    if (app.Connected) {
        d.unload();
        r.show();
        return;
    }
    app.RecordUnsaved = false;
    r.unload();
    d.unload();
}

}  // namespace

void OpenSaveDialogue(App& app) {
    SaveNameScreen(app).show();
}

void InstallSaveDialogue(App& app) {
    FrmInputRecordName& d = SaveNameScreen(app);
    d.onLoad = [&app] {
        app.SaveNameOpen = true;
        app.frmMain().setEnabled(false);
    };
    d.onUnload = [&app] {
        app.SaveNameOpen = false;
        app.frmMain().setEnabled(true);
    };
    d.cmdSave.onClick = [&app] { save(app); };
    d.cmdCancel.onClick = [&app] { cancel(app); };
}

}  // namespace ketrel
