#pragma once

namespace ketrel {

class App;

// Opens frmInputRecordName over a disabled main screen, SaveNameOpen set while it is open.
void OpenSaveDialogue(App& app);
// The handlers of frmInputRecordName: cmdSave names and lists the recording, cmdCancel leaves
// it in Untitled.log.
void InstallSaveDialogue(App& app);

}  // namespace ketrel
