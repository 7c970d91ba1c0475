#pragma once
#include "platform/serial_port.h"
#include "state/app.h"

namespace ketrel {

// The request cycles of the count-byte converter and the K-line cables walk their PID index
// the same way; only the scanning port differs.

// The session has ended under a request, or its scanning port has closed.
inline bool ScanSessionGone(App& app, SerialPort& port) {
    return !app.Connected || !port.portOpen();
}

// Walks `index` over [low, high] until `holds(index)`, pumping at each step. False when the walk
// was left for a sweep (`watchSweeps`; then `leftForSweep` is set) or the session ended under it.
template <class Holds>
bool WalkToWanted(App& app, SerialPort& port, int& index, int low, int high, bool watchSweeps,
                  Holds holds, bool* leftForSweep = nullptr) {
    while (!holds(index)) {
        app.loop().pump();
        if (watchSweeps && (app.Mode6Active || app.Mode5ManufActive)) {
            if (leftForSweep) *leftForSweep = true;
            return false;
        }
        if (ScanSessionGone(app, port)) return false;
        if (++index > high) index = low;
    }
    return true;
}

// The box that ends a connect of the text converter or the K-line cables that found no
// vehicle: Retry or Cancel.
inline MessageBox NoCommunicationBox() {
    return MessageBox{"No Communication",
                      "Unable To Establish Communication, Check The Following Below.\n\n"
                      "* Make Sure Hardware Is Connected To Serial Port\n"
                      "* Make Sure OBD II Connector Is Connected To Vehicle\n"
                      "* Tampered/Incorrect Settings\n"
                      "* Changed/Incorrect Hardware Device\n"
                      "* Make Sure Ignition Key Is On",
                      MsgButtons::RetryCancel, MsgIcon::Stop, false};
}

}  // namespace ketrel
