#include "link/serial_timing.h"

namespace ketrel {

std::string ByteToHex(unsigned char byte) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    return std::string{kDigits[byte >> 4], kDigits[byte & 0x0F]};
}

std::string BytesToHex(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() * 2);
    for (char c : bytes)
        out += ByteToHex(static_cast<unsigned char>(c));
    return out;
}

std::string BytesToSpacedHex(std::string_view bytes) {
    std::string out;
    out.reserve(bytes.size() * 3);
    for (char c : bytes) {
        out += ByteToHex(static_cast<unsigned char>(c));
        out += ' ';
    }
    return out;
}

void BlockingSleep(EventLoop& loop, int ms) {
    loop.sleep(ms);
}

void BusyWait(cTimeIt& timer, double seconds) {
    BusyWaitPolling(timer, seconds, [] { return false; });
}

bool BusyWaitPolling(cTimeIt& timer, double seconds, const std::function<bool()>& poll) {
    if (timer.Frequency() == 0) return poll();
    timer.Start();
    while (true) {
        if (poll()) return true;
        timer.StopNow();
        if (timer.Result() >= seconds) return false;
    }
}

void PumpedWait(EventLoop& loop, const std::function<bool()>& done) {
    while (!done())
        loop.waitAndPump();
}

}  // namespace ketrel
