#include "qt/qt_serial_devices.h"

#include <QSerialPortInfo>

namespace ketrel {

std::vector<SerialDeviceInfo> QtSerialDeviceLister::devices() {
    std::vector<SerialDeviceInfo> out;
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
        SerialDeviceInfo d;
        d.path = info.systemLocation().toStdString();
        QString text = info.description();
        if (!info.manufacturer().isEmpty() && !text.contains(info.manufacturer()))
            text = text.isEmpty() ? info.manufacturer() : text + " (" + info.manufacturer() + ")";
        d.description = text.toStdString();
        d.usb = info.hasVendorIdentifier();
        out.push_back(std::move(d));
    }
    return out;
}

}  // namespace ketrel
