#include "display/display_polling.h"

#include "state/app.h"

namespace ketrel {

void NarrowPolling(App& app, SavedFlags& saved, std::initializer_list<int> pids) {
    for (std::size_t i = 0; i < saved.size(); ++i) {
        saved[i] = app.PidWanted[i];
        app.PidWanted[i] = false;
    }
    for (int pid : pids)
        app.PidWanted[std::size_t(pid)] = true;
}

void RestorePolling(App& app, const SavedFlags& saved, bool pumpEach) {
    for (std::size_t i = 0; i < saved.size(); ++i) {
        app.PidWanted[i] = saved[i];
        if (pumpEach) app.loop().pump();
    }
}

void SavePolling(App& app) {
    NarrowPolling(app, app.SavedPidWanted, {});
}

void RestorePolling(App& app) {
    RestorePolling(app, app.SavedPidWanted, true);
}

void SettleWait(App& app, double seconds) {
    cTimeIt& t = app.TimerObject();
    t.Start();
    do {
        app.loop().pump();
        t.StopNow();
    } while (t.Result() >= 0 && t.Result() < seconds);
}

}  // namespace ketrel
