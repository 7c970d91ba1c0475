#include "recording/replay.h"

#include "obd/trouble_codes.h"
#include "state/app.h"

namespace ketrel {

void BeginReplay(App& app, const std::string& logType) {
    FrmMain& m = app.frmMain();
    app.Connected = false;
    app.PlayingLog = true;
    app.PlayFormOpen = true;
    app.LogType = logType;
    m.gridPending.clear();
    m.gridTroubleCode.clear();
    FormatCodeGrids(app);
    m.lstCodes.clear();
    m.lstPendingCodes.clear();
    m.lstFreezeCodes.clear();
}

void EndReplay(App& app) {
    app.PlayingLog = false;
    app.PlayFormOpen = false;
}

}  // namespace ketrel
