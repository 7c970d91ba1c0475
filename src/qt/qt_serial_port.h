#pragma once
#include <QSerialPort>
#include <string>

#include "platform/serial_devices.h"
#include "platform/serial_port.h"
#include "platform/settings_store.h"

namespace ketrel {

// The line settings in a text such as "19200,n,8,1".
struct LineSettings {
    int baud = 9600;
    QSerialPort::Parity parity = QSerialPort::NoParity;
    QSerialPort::DataBits dataBits = QSerialPort::Data8;
    QSerialPort::StopBits stopBits = QSerialPort::OneStop;
};
// Reads a settings text; false (and `out` untouched) when it is not one.
bool ParseLineSettings(const std::string& text, LineSettings& out);

// A serial port of the desktop program on a Linux device through Qt Serial Port. The port
// number becomes a device path through the [Ports] table (or the devices present). Output
// leaves at once, input never blocks, and the received-data event is queued on the event
// thread for every arrival, so a handler that pumps the loop sees the next arrival nested
// inside it. A device that vanishes while open raises kCommEventError and closes the port.
class QtSerialPort : public SerialPort {
  public:
    QtSerialPort(SettingsStore& settings, SerialDeviceLister& devices, std::string objectName);
    ~QtSerialPort() override;

    const std::string& objectName() const { return name_; }
    // The device path of the open port (or of the last attempt to open).
    std::string devicePath() const { return port_.portName().toStdString(); }

    void setCommPort(int number) override { number_ = number; }
    int commPort() const override { return number_; }
    void setSettings(const std::string& settings) override;
    std::string settings() const override { return settingsText_; }
    bool portOpen() const override { return port_.isOpen(); }
    void setPortOpen(bool open) override;
    void setRThreshold(int count) override { threshold_ = count; }
    int rThreshold() const override { return threshold_; }
    void setInputLen(int count) override { inputLen_ = count; }
    void clearInput() override;
    int inBufferCount() const override;
    std::string input() override;
    void output(std::string_view bytes) override;
    void setBreak(bool on) override;
    bool setBaud(int rate) override;
    bool breakRefused() const override { return breakRefused_; }
    bool setLowLatency() override;
    int commEvent() const override { return commEvent_; }

  private:
    void applyLine();
    // Takes in whatever the system holds for the port, without waiting.
    void pull() const;
    void onReadyRead();
    void onError(QSerialPort::SerialPortError error);
    void postEvent();

    SettingsStore& settingsStore_;
    SerialDeviceLister& devices_;
    std::string name_;
    mutable QSerialPort port_;
    int number_ = 1;
    std::string settingsText_ = "9600,n,8,1";
    LineSettings line_;
    int threshold_ = 0;
    int inputLen_ = 0;
    int commEvent_ = 0;
    bool eventQueued_ = false;
    bool breakRefused_ = false;
    bool closeQueued_ = false;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

// Makes QtSerialPort objects that share the settings store and the device list.
class QtSerialPortFactory : public SerialPortFactory {
  public:
    QtSerialPortFactory(SettingsStore& settings, SerialDeviceLister& devices)
        : settings_(settings), devices_(devices) {}
    std::unique_ptr<SerialPort> create(const std::string& objectName) override;
    SerialDeviceLister* deviceLister() override { return &devices_; }
    SerialAdapterInspector* adapterInspector() override { return &adapters_; }

  private:
    SettingsStore& settings_;
    SerialDeviceLister& devices_;
    SysfsSerialAdapterInspector adapters_;
};

}  // namespace ketrel
