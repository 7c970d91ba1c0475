// The desktop serial port on pseudo-terminals: real I/O through Qt Serial Port, real time,
// short waits.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <termios.h>
#include <unistd.h>

#include <QCoreApplication>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>

#include "link/port_map.h"
#include "qt/qt_serial_port.h"
#include "system/child_process.h"

namespace ketrel {
namespace {

QCoreApplication& qtApp() {
    static int argc = 1;
    static char name[] = "serial_test";
    static char* argv[] = {name, nullptr};
    static QCoreApplication* app = new QCoreApplication(argc, argv);
    return *app;
}

// The far end of a pseudo-terminal: the test plays the device on the master side.
class PtyPair {
  public:
    PtyPair() {
        master_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
        EXPECT_GE(master_, 0);
        ::grantpt(master_);
        ::unlockpt(master_);
        path_ = ::ptsname(master_);
        termios t{};
        ::tcgetattr(master_, &t);
        ::cfmakeraw(&t);
        ::tcsetattr(master_, TCSANOW, &t);
    }
    ~PtyPair() { closeMaster(); }
    const std::string& path() const { return path_; }
    void write(const std::string& bytes) {
        ASSERT_EQ(::write(master_, bytes.data(), bytes.size()), ssize_t(bytes.size()));
    }
    // Reads until `count` bytes came (ten seconds at most: only a hang takes that long).
    std::string read(std::size_t count) {
        return test::ReadUntil(
            master_, [count](const std::string& s) { return s.size() >= count; }, 10000);
    }
    void closeMaster() {
        if (master_ >= 0) ::close(master_);
        master_ = -1;
    }

  private:
    int master_ = -1;
    std::string path_;
};

// Waits until pred() holds, running the Qt event loop or not; the ten seconds at most only stop
// a test that would hang, a loaded machine being slow to pass the bytes on.
bool waitUntil(const std::function<bool()>& pred, bool pump = true) {
    auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!pred()) {
        if (std::chrono::steady_clock::now() > end) return false;
        if (pump) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        if (!pump) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}
const auto pumpUntil = [](const std::function<bool()>& pred) { return waitUntil(pred); };
const auto spinUntil = [](const std::function<bool()>& pred) { return waitUntil(pred, false); };

class QtSerialPortTest : public ::testing::Test {
  protected:
    QtSerialPortTest() {
        qtApp();
        SavePortDevicePath(settings, 3, pty.path());
    }
    std::unique_ptr<SerialPort> makePort(int number = 3) {
        auto port = factory.create("MSComm");
        port->setCommPort(number);
        port->setSettings("19200,n,8,1");
        return port;
    }

    MemorySettingsStore settings;
    FixedSerialDeviceLister devices;
    QtSerialPortFactory factory{settings, devices};
    PtyPair pty;
};

TEST_F(QtSerialPortTest, BytesTravelUnchangedAndInputNeverBlocksNorKeepsWhatItGave) {
    auto port = makePort();
    port->setPortOpen(true);
    std::string all;
    for (int b = 0; b < 256; ++b)
        all += static_cast<char>(b);
    port->output(all);
    EXPECT_EQ(pty.read(all.size()), all);
    EXPECT_EQ(port->input(), "");  // nothing there: returns at once, empty
    const std::string sent(
        "V\x00\x80\xFF\x00"
        "41",
        7);
    pty.write(sent);
    ASSERT_TRUE(pumpUntil([&] { return port->inBufferCount() == int(sent.size()); }));
    EXPECT_EQ(port->input(), sent);
    EXPECT_EQ(port->input(), "");
    EXPECT_EQ(port->inBufferCount(), 0);
    pty.write("garbage");
    ASSERT_TRUE(pumpUntil([&] { return port->inBufferCount() == 7; }));
    port->clearInput();
    EXPECT_EQ(port->inBufferCount(), 0);
    pty.write("S");
    ASSERT_TRUE(pumpUntil([&] { return port->inBufferCount() == 1; }));
    EXPECT_EQ(port->input(), "S");
}

TEST_F(QtSerialPortTest, ReceivedDataEventRunsOnTheEventThreadOnlyWithThresholdOne) {
    auto port = makePort();
    port->setPortOpen(true);
    std::string got;
    int events = 0;
    std::thread::id handlerThread;
    port->setOnComm([&] {
        ++events;
        handlerThread = std::this_thread::get_id();
        if (port->commEvent() == kCommEventReceive) got += port->input();
    });

    port->setRThreshold(0);
    pty.write("P");
    ASSERT_TRUE(pumpUntil([&] { return port->inBufferCount() == 1; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(events, 0);  // polled port: no event, the byte waits
    EXPECT_EQ(port->input(), "P");

    port->setRThreshold(1);
    std::thread writer([&] { pty.write("S"); });  // arrives from another thread
    writer.join();
    ASSERT_TRUE(pumpUntil([&] { return got == "S"; }));
    EXPECT_EQ(handlerThread, std::this_thread::get_id());
    EXPECT_GE(events, 1);

    // Counting what is there does not take the event away; reading it does.
    pty.write("V1.23");
    ASSERT_TRUE(spinUntil([&] { return port->inBufferCount() == 5; }));
    ASSERT_TRUE(pumpUntil([&] { return got == "SV1.23"; }));
    int before = events;
    pty.write("T");
    ASSERT_TRUE(spinUntil([&] { return port->inBufferCount() == 1; }));
    EXPECT_EQ(port->input(), "T");
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    EXPECT_EQ(events, before);
}

TEST_F(QtSerialPortTest, AnArrivalDuringAPumpingHandlerRaisesANestedEvent) {
    auto port = makePort();
    port->setPortOpen(true);
    port->setRThreshold(1);
    int depth = 0, deepest = 0;
    std::string chunks;
    port->setOnComm([&] {
        ++depth;
        deepest = std::max(deepest, depth);
        std::string in = port->input();
        chunks += "[" + in + "]";
        if (in == "S") {
            // The request goes out and the handler pumps; the answer comes meanwhile.
            pty.write("V486B10410C1AF8");
            pumpUntil([&] { return chunks.find("V486B") != std::string::npos; });
        }
        --depth;
    });
    pty.write("S");
    ASSERT_TRUE(pumpUntil([&] { return chunks.find("V486B") != std::string::npos; }));
    EXPECT_EQ(chunks, "[S][V486B10410C1AF8]");
    EXPECT_EQ(deepest, 2);
}

TEST_F(QtSerialPortTest, BaudChangeOnAnOpenPortKeepsWhatWasReceived) {
    auto port = makePort();
    EXPECT_FALSE(port->setBaud(10400));  // closed: nothing to change
    port->setPortOpen(true);
    pty.write("\x55\x08\x08");
    ASSERT_TRUE(pumpUntil([&] { return port->inBufferCount() == 3; }));
    EXPECT_TRUE(port->setBaud(10400));
    EXPECT_TRUE(port->setBaud(200));
    pty.write("\xF7");
    ASSERT_TRUE(pumpUntil([&] { return port->inBufferCount() == 4; }));
    EXPECT_EQ(port->input(), "\x55\x08\x08\xF7");
    EXPECT_TRUE(port->portOpen());
}

TEST_F(QtSerialPortTest, OpeningErrorsCarryTheCodesTheMessagesNeed) {
    struct Case {
        const char* what;
        std::function<void()> open;
        int code;
    };
    auto first = makePort();
    auto second = makePort();
    auto missing = makePort(7);
    SavePortDevicePath(settings, 7, "/dev/ketrel-no-such-device");
    auto unmapped = makePort(9);
    first->setPortOpen(true);
    Case cases[] = {
        {"same device twice", [&] { second->setPortOpen(true); }, kErrPortOpen},
        {"same object twice", [&] { first->setPortOpen(true); }, kErrPortOpen},
        {"missing device", [&] { missing->setPortOpen(true); }, kErrInvalidPort},
        {"number with no device", [&] { unmapped->setPortOpen(true); }, kErrInvalidPort},
    };
    for (const auto& c : cases) {
        try {
            c.open();
            ADD_FAILURE() << c.what << ": opened";
        } catch (const SerialError& e) {
            EXPECT_EQ(e.code(), c.code) << c.what;
            EXPECT_STRNE(e.what(), "") << c.what;
        }
    }
    EXPECT_FALSE(second->portOpen());
    EXPECT_TRUE(first->portOpen());
    try {
        missing->output("x");
        ADD_FAILURE() << "wrote to a closed port";
    } catch (const SerialError& e) {
        EXPECT_EQ(e.code(), kErrPortClosed);
    }
}

TEST_F(QtSerialPortTest, AVanishedDeviceRaisesAnErrorEventAndClosesThePort) {
    auto port = makePort();
    port->setPortOpen(true);
    port->setRThreshold(1);
    std::vector<int> events;
    port->setOnComm([&] { events.push_back(port->commEvent()); });
    pty.closeMaster();
    ASSERT_TRUE(pumpUntil([&] { return !events.empty() && events.back() == kCommEventError; }));
    EXPECT_FALSE(port->portOpen());
    EXPECT_EQ(port->input(), "");
    EXPECT_EQ(port->inBufferCount(), 0);
    // Nothing keeps firing once it is closed.
    std::size_t seen = events.size();
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    EXPECT_EQ(events.size(), seen);
}

TEST(LineSettings, ReadsTheSettingsTextOrRefusesIt) {
    struct Case {
        const char* text;
        bool ok;
        int baud;
        QSerialPort::Parity parity;
        QSerialPort::DataBits bits;
        QSerialPort::StopBits stop;
    };
    const Case cases[] = {
        {"19200,n,8,1", true, 19200, QSerialPort::NoParity, QSerialPort::Data8,
         QSerialPort::OneStop},
        {"10400,E,7,2", true, 10400, QSerialPort::EvenParity, QSerialPort::Data7,
         QSerialPort::TwoStop},
        {"200,o,8,1.5", true, 200, QSerialPort::OddParity, QSerialPort::Data8,
         QSerialPort::OneAndHalfStop},
        {"19200,n,8", false, 0, {}, {}, {}},
        {"fast,n,8,1", false, 0, {}, {}, {}},
        {"19200,x,8,1", false, 0, {}, {}, {}},
        {"19200,n,9,1", false, 0, {}, {}, {}},
        {"19200,n,8,3", false, 0, {}, {}, {}},
    };
    for (const auto& c : cases) {
        LineSettings s;
        s.baud = -1;
        EXPECT_EQ(ParseLineSettings(c.text, s), c.ok) << c.text;
        if (!c.ok) {
            EXPECT_EQ(s.baud, -1) << c.text;
            continue;
        }
        EXPECT_EQ(s.baud, c.baud) << c.text;
        EXPECT_EQ(s.parity, c.parity) << c.text;
        EXPECT_EQ(s.dataBits, c.bits) << c.text;
        EXPECT_EQ(s.stopBits, c.stop) << c.text;
    }
}

}  // namespace
}  // namespace ketrel
