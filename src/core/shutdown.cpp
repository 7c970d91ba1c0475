#include "core/shutdown.h"

#include "state/app.h"

namespace ketrel {

namespace {

// Port errors don't cross the handler: a failed close is passed over.
void closePort(SerialPort& port) {
    try {
        port.setPortOpen(false);
    } catch (const SerialError&) {
    }
}

void queryUnloadMain(App& app, bool& cancel) {
    FrmMain& m = app.frmMain();
    app.SaveSetting("DataStyle", app.DataStyle);
    app.AppClosing = true;
    if (app.Connected || app.PlayingLog) {
        cancel = true;
        return;
    }
    if (m.MSComm->portOpen()) closePort(*m.MSComm);
    if (m.BR3MSComm->portOpen()) closePort(*m.BR3MSComm);
    // An open K-line port is answered by closing MSComm: the K-line port itself stays open
    // until the process ends.
    if (m.KeshMSComm->portOpen()) closePort(*m.MSComm);
}

void unloadMain(App& app) {
    app.Connected = false;
    app.unloadScreens(kShutdownOrder);
}

}  // namespace

void InstallShutdown(App& app) {
    FrmMain& m = app.frmMain();
    m.onQueryUnload = [&app](bool& cancel) { queryUnloadMain(app, cancel); };
    m.onUnload = [&app] { unloadMain(app); };
}

}  // namespace ketrel
