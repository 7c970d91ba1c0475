#include "link/kline_adapter.h"

#include <gtest/gtest.h>

#include "platform/null_serial_port.h"

namespace ketrel {
namespace {

// A port whose driver refuses breaks or not, and counts the break calls.
struct BreakPort : NullSerialPort {
    bool refuses = false;
    int breaks = 0;
    void setBreak(bool on) override { breaks += on ? 1 : 0; }
    bool breakRefused() const override { return refuses && breaks > 0; }
};

// An FTDI adapter whose latency timer may or may not be written.
struct Ftdi : SerialAdapterInspector {
    bool writable = true;
    SerialAdapterInfo inspect(const std::string& path) override {
        return {path, "ftdi_sio", true, true, 16};
    }
    LowLatencyResult requestLowLatency(const std::string&) override {
        return {writable, writable ? 1 : 16, false};
    }
    BreakSupport probeBreak(const std::string&) override { return BreakSupport::Unknown; }
};

TEST(KlineAdapter, TellsTheLogAndTheStatusLineWhatStandsInTheWay) {
    const std::string adapter = "ADAPTER:  ftdi_sio (FTDI), latency timer 16 ms",
                      set = "LATENCY TIMER SET:  1 mS", noLow = "LOW LATENCY:  NOT AVAILABLE";
    struct Case {
        bool refuses, writable;
        std::vector<std::string> log;
        std::string status;
    } cases[] = {
        {false, true, {adapter, set, noLow}, ""},
        {false,
         false,
         {adapter, "LATENCY TIMER NOT CHANGED:  16 mS", noLow},
         "Adapter latency timer 16 ms: answers may come late"},
        {true,
         true,
         {adapter, set, noLow, "THE ADAPTER DRIVER REFUSES A BREAK:  ftdi_sio"},
         "The adapter's driver refuses a break: no K-line wake-up possible"},
    };
    for (const auto& c : cases) {
        BreakPort port;
        port.refuses = c.refuses;
        Ftdi ftdi;
        ftdi.writable = c.writable;
        AdapterCheck check = CheckAdapterBeforeWakeUp(&ftdi, port, "/dev/ttyUSB0");
        EXPECT_EQ(check.logLines, c.log);
        EXPECT_EQ(check.status, c.status);
        EXPECT_EQ(check.breakRefused, c.refuses);
    }
}

}  // namespace
}  // namespace ketrel
