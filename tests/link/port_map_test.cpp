#include "link/port_map.h"

#include <gtest/gtest.h>

#include "platform/serial_port.h"

namespace ketrel {
namespace {

std::vector<std::string> paths(const std::vector<SerialDeviceInfo>& devices) {
    std::vector<std::string> out;
    for (const auto& d : devices)
        out.push_back(d.path);
    return out;
}

TEST(PortMap, DevicesAreNumberedUsbFirstThenByPathWithNumbersAsNumbers) {
    struct Case {
        const char* what;
        std::vector<SerialDeviceInfo> given;
        std::vector<std::string> expected;
    };
    const Case cases[] = {
        {"usb adapters before built-in ports",
         {{"/dev/ttyS0", "", false}, {"/dev/ttyUSB0", "", true}, {"/dev/ttyS1", "", false}},
         {"/dev/ttyUSB0", "/dev/ttyS0", "/dev/ttyS1"}},
        {"ten after two",
         {{"/dev/ttyUSB10", "", true}, {"/dev/ttyUSB2", "", true}, {"/dev/ttyACM0", "", true}},
         {"/dev/ttyACM0", "/dev/ttyUSB2", "/dev/ttyUSB10"}},
        {"order of discovery does not matter",
         {{"/dev/ttyS1", "", false}, {"/dev/ttyS0", "", false}},
         {"/dev/ttyS0", "/dev/ttyS1"}},
        {"a device listed twice counts once",
         {{"/dev/ttyUSB0", "", true}, {"/dev/ttyUSB0", "", true}},
         {"/dev/ttyUSB0"}},
        {"nothing present", {}, {}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(paths(OrderedSerialDevices(c.given)), c.expected) << c.what;
    }
}

TEST(PortMap, APortNumberLeadsToTheStoredPathElseToTheDevicePresentElseNowhere) {
    MemorySettingsStore settings;
    FixedSerialDeviceLister lister({{"/dev/ttyS0", "16550A", false},
                                    {"/dev/ttyUSB1", "USB-Serial", true},
                                    {"/dev/ttyUSB0", "USB-Serial", true}});
    SavePortDevicePath(settings, 2, "/tmp/ketrel-sim");
    struct Case {
        int number;
        std::string expected;
    };
    const Case cases[] = {
        {1, "/dev/ttyUSB0"},     // first USB adapter
        {2, "/tmp/ketrel-sim"},  // typed in by the user
        {3, "/dev/ttyS0"},       // third device present
        {4, ""},                 // past the devices
        {0, ""},
        {-1, ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(PortDevicePath(settings, lister, c.number), c.expected) << c.number;
    }
    EXPECT_EQ(settings.get("Ketrel", "Ports", "2"), "/tmp/ketrel-sim");
    // Where a path is required, a number leading nowhere is an invalid port.
    EXPECT_EQ(RequirePortDevicePath(settings, lister, 2), "/tmp/ketrel-sim");
    try {
        RequirePortDevicePath(settings, lister, 4);
        ADD_FAILURE() << "no device, yet a path";
    } catch (const SerialError& e) {
        EXPECT_EQ(e.code(), kErrInvalidPort);
    }

    // Clearing the entry gives the number back to the devices present.
    SavePortDevicePath(settings, 2, "");
    EXPECT_EQ(PortDevicePath(settings, lister, 2), "/dev/ttyUSB1");
}

TEST(PortMap, TheChoicesListShowsEveryNumberThatLeadsSomewhere) {
    MemorySettingsStore settings;
    FixedSerialDeviceLister lister({{"/dev/ttyUSB0", "FT232R USB UART", true}});
    SavePortDevicePath(settings, 4, "/dev/pts/3");
    std::string got;
    for (const auto& c : ListPortChoices(settings, lister))
        got += std::to_string(c.number) + " " + c.path + " " + c.description +
               (c.fromSettings ? " (stored)|" : "|");
    EXPECT_EQ(got, "1 /dev/ttyUSB0 FT232R USB UART|4 /dev/pts/3  (stored)|");
}

}  // namespace
}  // namespace ketrel
