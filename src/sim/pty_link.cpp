#include "sim/pty_link.h"

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace ketrel::sim {

namespace {

// How often the link looks whether the program has opened or closed the terminal.
constexpr int kHostCheckMs = 20;

}  // namespace

PtyLink::PtyLink(PollEventLoop& loop, SimDevice& device) : loop_(loop), device_(device) {}

PtyLink::~PtyLink() {
    hostCheck_.reset();
    if (master_ >= 0) {
        loop_.unwatch(master_);
        ::close(master_);
    }
}

bool PtyLink::open(std::string& error) {
    master_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (master_ < 0 || ::grantpt(master_) != 0 || ::unlockpt(master_) != 0) {
        error = std::string("can't make a pseudo-terminal: ") + std::strerror(errno);
        return false;
    }
    const char* name = ::ptsname(master_);
    if (!name) {
        error = std::string("can't name the pseudo-terminal: ") + std::strerror(errno);
        return false;
    }
    path_ = name;
    termios t{};
    if (::tcgetattr(master_, &t) == 0) {
        ::cfmakeraw(&t);
        ::cfsetispeed(&t, B19200);
        ::cfsetospeed(&t, B19200);
        ::tcsetattr(master_, TCSANOW, &t);
    }
    // Open and close the far side once: from then on the master reports a hang-up while no
    // program has the terminal open, which is how the link sees the port being opened.
    int slave = ::open(name, O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (slave >= 0) ::close(slave);
    device_.attach(*this);
    hostCheck_ = std::make_unique<Timer>(loop_.scheduler(), kHostCheckMs);
    hostCheck_->setHandler([this] { checkHost(); });
    hostCheck_->start();
    return true;
}

std::uint64_t PtyLink::at(std::int64_t micros, std::function<void()> fn) {
    return loop_.scheduler().postAt(micros, std::move(fn));
}

void PtyLink::checkHost() {
    pollfd p{master_, POLLIN, 0};
    if (::poll(&p, 1, 0) < 0) return;
    bool hungUp = (p.revents & POLLHUP) != 0;
    if (hungUp == hostOpen_) setHostOpen(!hungUp);
}

void PtyLink::setHostOpen(bool open) {
    if (open == hostOpen_) return;
    hostOpen_ = open;
    traffic(open ? "open" : "close", {});
    if (open) {
        loop_.watch(master_, [this](short revents) { onReadable(revents); });
        device_.onHostOpen();
    } else {
        loop_.unwatch(master_);
        device_.onHostClose();
    }
}

void PtyLink::onReadable(short revents) {
    char buf[512];
    while (true) {
        ssize_t n = ::read(master_, buf, sizeof buf);
        if (n > 0) {
            traffic("recv", std::string_view(buf, static_cast<std::size_t>(n)));
            for (ssize_t i = 0; i < n; ++i)
                device_.onByte(static_cast<unsigned char>(buf[i]));
            continue;
        }
        if (n < 0 && errno == EINTR) continue;
        if (n < 0 && errno == EAGAIN) break;
        setHostOpen(false);  // EIO or end: the program closed the terminal
        return;
    }
    if (revents & POLLHUP) setHostOpen(false);
}

void PtyLink::send(std::string_view bytes) {
    if (!hostOpen_) {
        traffic("lost", bytes);
        return;
    }
    traffic("send", bytes);
    std::size_t done = 0;
    while (done < bytes.size()) {
        ssize_t n = ::write(master_, bytes.data() + done, bytes.size() - done);
        if (n > 0) {
            done += static_cast<std::size_t>(n);
        } else if (n < 0 && errno == EINTR) {
            continue;
        } else {
            traffic("lost", bytes.substr(done));  // the program does not read: buffer full
            return;
        }
    }
}

}  // namespace ketrel::sim
