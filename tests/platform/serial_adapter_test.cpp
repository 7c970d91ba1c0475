#include "platform/serial_adapter.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <fstream>

namespace ketrel {
namespace {
namespace fs = std::filesystem;

// A sysfs tree with an FTDI adapter (ttyUSB0, reached through a by-id link) and a built-in
// port (ttyS0), in a temporary folder.
class FakeSysfs : public ::testing::Test {
  protected:
    void SetUp() override {
        char tmpl[] = "/tmp/ketrel_sysfs_XXXXXX";
        base_ = mkdtemp(tmpl);
        fs::path sys = base_ / "sys";
        addTty(sys, "ttyUSB0", "devices/pci0000:00/usb1/1-1/1-1:1.0/ttyUSB0",
               "bus/usb-serial/drivers/ftdi_sio");
        std::ofstream(sys / "devices/pci0000:00/usb1/1-1/1-1:1.0/ttyUSB0/latency_timer") << "16\n";
        addTty(sys, "ttyS0", "devices/platform/serial8250/serial8250:0/serial8250:0.0",
               "bus/serial-base/drivers/port");
        fs::create_directories(sys / "bus/platform/drivers/serial8250");
        fs::create_symlink(sys / "bus/platform/drivers/serial8250",
                           sys / "devices/platform/serial8250/driver");
        fs::create_directories(base_ / "dev/serial/by-id");
        std::ofstream(base_ / "dev/ttyUSB0");
        fs::create_symlink("../../ttyUSB0", base_ / "dev/serial/by-id/usb-Adapter_A1-if00-port0");
    }
    void TearDown() override { fs::remove_all(base_); }

    void addTty(const fs::path& sys, const std::string& name, const std::string& dev,
                const std::string& driver) {
        fs::create_directories(sys / dev);
        fs::create_directories(sys / driver);
        fs::create_directories(sys / "class/tty" / name);
        fs::create_symlink(sys / driver, sys / dev / "driver");
        fs::create_symlink(sys / dev, sys / "class/tty" / name / "device");
    }

    fs::path base_;
};

TEST_F(FakeSysfs, TellsDriverAndLatencyThroughLinks) {
    SysfsSerialAdapterInspector inspector(base_ / "sys");
    struct Case {
        std::string path, driver, description;
        bool usb, ftdi;
        int latency;
    } cases[] = {
        {(base_ / "dev/serial/by-id/usb-Adapter_A1-if00-port0").string(), "ftdi_sio",
         "ftdi_sio (FTDI), latency timer 16 ms", true, true, 16},
        {"/dev/ttyS0", "serial8250", "serial8250", false, false, -1},
        {"/dev/ttyXYZ9", "", "ttyXYZ9: no adapter driver found", false, false, -1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.path);
        SerialAdapterInfo info = inspector.inspect(c.path);
        EXPECT_EQ(info.driver, c.driver);
        EXPECT_EQ(info.usb, c.usb);
        EXPECT_EQ(info.ftdi, c.ftdi);
        EXPECT_EQ(info.latencyTimerMs, c.latency);
        EXPECT_EQ(DescribeAdapter(info), c.description);
    }
    EXPECT_EQ(inspector.inspect(cases[0].path).device, (base_ / "dev/ttyUSB0").string());
}

TEST_F(FakeSysfs, LowLatencyWritesTheTimerWhereThereIsOne) {
    SysfsSerialAdapterInspector inspector(base_ / "sys");
    LowLatencyResult ftdi = inspector.requestLowLatency((base_ / "dev/ttyUSB0").string());
    EXPECT_TRUE(ftdi.latencyTimerSet);
    EXPECT_EQ(inspector.inspect((base_ / "dev/ttyUSB0").string()).latencyTimerMs, 1);
    EXPECT_FALSE(ftdi.asyncLowLatency);  // a plain file is no tty
    LowLatencyResult builtIn = inspector.requestLowLatency("/dev/ttyXYZ9");
    EXPECT_FALSE(builtIn.latencyTimerSet);
    EXPECT_EQ(builtIn.latencyTimerMs, -1);
}

TEST_F(FakeSysfs, BreakProbeTellsRefusalFromNoDevice) {
    SysfsSerialAdapterInspector inspector(base_ / "sys");
    int master = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_GE(master, 0);
    ASSERT_EQ(grantpt(master), 0);
    ASSERT_EQ(unlockpt(master), 0);
    EXPECT_EQ(inspector.probeBreak(ptsname(master)), BreakSupport::Works);
    close(master);
    // The break ioctl fails on a device whose driver has none.
    EXPECT_EQ(inspector.probeBreak((base_ / "dev/ttyUSB0").string()), BreakSupport::Refused);
    EXPECT_EQ(inspector.probeBreak("/dev/ttyXYZ9"), BreakSupport::Unknown);
}

}  // namespace
}  // namespace ketrel
