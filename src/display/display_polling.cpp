#include "display/display_polling.h"

#include <cctype>
#include <cstdlib>
#include <string>

#include "state/app.h"

namespace ketrel {

double TextValue(std::string_view text) {
    std::size_t i = 0;
    while (i < text.size() && text[i] == ' ')
        ++i;
    std::string number;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) number += text[i++];
    bool point = false, digits = false;
    for (; i < text.size(); ++i) {
        const char c = text[i];
        if (std::isdigit(static_cast<unsigned char>(c))) {
            number += c;
            digits = true;
        } else if ((c == '.' || c == ',') && !point) {
            number += '.';
            point = true;
        } else {
            break;
        }
    }
    return digits ? std::strtod(number.c_str(), nullptr) : 0.0;
}

void SavePolling(App& app) {
    for (std::size_t i = 0; i < app.SavedPidWanted.size(); ++i) {
        app.SavedPidWanted[i] = app.PidWanted[i];
        app.PidWanted[i] = false;
    }
}

void RestorePolling(App& app) {
    for (std::size_t i = 0; i < app.SavedPidWanted.size(); ++i) {
        app.PidWanted[i] = app.SavedPidWanted[i];
        app.loop().pump();
    }
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
