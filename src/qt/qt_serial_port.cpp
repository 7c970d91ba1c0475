#include "qt/qt_serial_port.h"

#include <poll.h>

#include <QMetaObject>
#include <QStringList>

#include "link/port_map.h"

namespace ketrel {

bool ParseLineSettings(const std::string& text, LineSettings& out) {
    QStringList parts = QString::fromStdString(text).split(',');
    if (parts.size() != 4) return false;
    LineSettings s;
    bool ok = false;
    s.baud = parts[0].trimmed().toInt(&ok);
    if (!ok || s.baud <= 0) return false;
    QString parity = parts[1].trimmed().toLower();
    if (parity == "n") {
        s.parity = QSerialPort::NoParity;
    } else if (parity == "e") {
        s.parity = QSerialPort::EvenParity;
    } else if (parity == "o") {
        s.parity = QSerialPort::OddParity;
    } else if (parity == "m") {
        s.parity = QSerialPort::MarkParity;
    } else if (parity == "s") {
        s.parity = QSerialPort::SpaceParity;
    } else {
        return false;
    }
    int bits = parts[2].trimmed().toInt(&ok);
    if (!ok || bits < 5 || bits > 8) return false;
    s.dataBits = static_cast<QSerialPort::DataBits>(bits);
    QString stop = parts[3].trimmed();
    if (stop == "1") {
        s.stopBits = QSerialPort::OneStop;
    } else if (stop == "1.5") {
        s.stopBits = QSerialPort::OneAndHalfStop;
    } else if (stop == "2") {
        s.stopBits = QSerialPort::TwoStop;
    } else {
        return false;
    }
    out = s;
    return true;
}

QtSerialPort::QtSerialPort(SettingsStore& settings, SerialDeviceLister& devices,
                           std::string objectName)
    : settingsStore_(settings), devices_(devices), name_(std::move(objectName)) {
    port_.setObjectName(QString::fromStdString(name_));
    QObject::connect(&port_, &QSerialPort::readyRead, &port_, [this] { onReadyRead(); });
    QObject::connect(&port_, &QSerialPort::errorOccurred, &port_,
                     [this](QSerialPort::SerialPortError e) { onError(e); });
}

QtSerialPort::~QtSerialPort() {
    *alive_ = false;
    if (port_.isOpen()) port_.close();
}

void QtSerialPort::setSettings(const std::string& settings) {
    settingsText_ = settings;
    if (!ParseLineSettings(settings, line_)) return;
    if (port_.isOpen()) applyLine();
}

void QtSerialPort::applyLine() {
    port_.setBaudRate(line_.baud);
    port_.setParity(line_.parity);
    port_.setDataBits(line_.dataBits);
    port_.setStopBits(line_.stopBits);
    port_.setFlowControl(QSerialPort::NoFlowControl);
    port_.clearError();
}

void QtSerialPort::setPortOpen(bool open) {
    if (!open) {
        if (port_.isOpen()) port_.close();
        return;
    }
    if (port_.isOpen()) throw SerialError(kErrPortOpen, "Port already open");
    std::string path = RequirePortDevicePath(settingsStore_, devices_, number_);
    port_.setPortName(QString::fromStdString(path));
    port_.clearError();
    if (!port_.open(QIODevice::ReadWrite)) {
        QSerialPort::SerialPortError error = port_.error();
        std::string text = port_.errorString().toStdString();
        port_.clearError();
        if (error == QSerialPort::PermissionError || error == QSerialPort::OpenError)
            throw SerialError(kErrPortOpen, text);
        throw SerialError(kErrInvalidPort, text);
    }
    applyLine();
    commEvent_ = 0;
}

void QtSerialPort::pull() const {
    if (!port_.isOpen()) return;
    port_.waitForReadyRead(0);
    if (port_.error() == QSerialPort::TimeoutError) port_.clearError();
}

void QtSerialPort::clearInput() {
    if (!port_.isOpen()) return;
    pull();
    port_.readAll();
    port_.clear(QSerialPort::Input);
}

int QtSerialPort::inBufferCount() const {
    pull();
    return port_.isOpen() ? static_cast<int>(port_.bytesAvailable()) : 0;
}

std::string QtSerialPort::input() {
    pull();
    if (!port_.isOpen()) return {};
    QByteArray data = inputLen_ > 0 ? port_.read(inputLen_) : port_.readAll();
    return std::string(data.constData(), static_cast<std::size_t>(data.size()));
}

void QtSerialPort::output(std::string_view bytes) {
    if (!port_.isOpen())
        throw SerialError(kErrPortClosed, "Operation valid only when the port is open");
    if (port_.write(bytes.data(), static_cast<qint64>(bytes.size())) < 0)
        throw SerialError(kErrPortIo, port_.errorString().toStdString());
    port_.flush();
    if (port_.bytesToWrite() > 0) {
        // The device did not take it all at once: wait the time the bytes need on the line.
        int ms = 50 + static_cast<int>(bytes.size() * 10'000 / std::max(line_.baud, 1));
        port_.waitForBytesWritten(ms);
        if (port_.error() == QSerialPort::TimeoutError) port_.clearError();
    }
}

void QtSerialPort::setBreak(bool on) {
    if (!port_.isOpen()) return;
    bool done = port_.setBreakEnabled(on);
    if (on) breakRefused_ = !done;
    if (port_.error() == QSerialPort::UnsupportedOperationError) port_.clearError();
}

bool QtSerialPort::setLowLatency() {
    return port_.isOpen() && SetAsyncLowLatency(int(port_.handle()));
}

bool QtSerialPort::setBaud(int rate) {
    if (!port_.isOpen() || rate <= 0) return false;
    bool ok = port_.setBaudRate(rate);
    if (ok) line_.baud = rate;
    port_.clearError();
    return ok;
}

namespace {

// True while the device behind an open descriptor answers without a hang-up or an error.
bool DeviceStillThere(int fd) {
    pollfd p{fd, 0, 0};
    return ::poll(&p, 1, 0) >= 0 && (p.revents & (POLLHUP | POLLERR | POLLNVAL)) == 0;
}

}  // namespace

void QtSerialPort::onReadyRead() {
    // Also raised by the reads inside input(); the queued event then finds the buffer empty
    // and does not fire.
    if (threshold_ < 1) return;
    postEvent();
}

void QtSerialPort::postEvent() {
    if (eventQueued_) return;
    eventQueued_ = true;
    // Queued, not run inside the signal: the handler may pump the loop, and arrivals during
    // that pump must raise their own, nested event.
    QMetaObject::invokeMethod(
        &port_,
        [this, alive = alive_] {
            if (!*alive) return;
            eventQueued_ = false;
            if (threshold_ < 1 || !port_.isOpen() || port_.bytesAvailable() == 0) return;
            commEvent_ = kCommEventReceive;
            fireOnComm();
        },
        Qt::QueuedConnection);
}

void QtSerialPort::onError(QSerialPort::SerialPortError error) {
    if (error != QSerialPort::ResourceError && error != QSerialPort::ReadError) return;
    if (!port_.isOpen() || closeQueued_) return;
    // input() reads the device itself, so a read notification queued before it can find the
    // bytes gone: Qt reports that empty read as a read error. The device is still there (no
    // hang-up), so the port stays open.
    if (error == QSerialPort::ReadError && DeviceStillThere(int(port_.handle()))) {
        port_.clearError();
        return;
    }
    // The device went away (an adapter pulled out). The port is closed outside the signal
    // (the notifier that raised it must not be destroyed under it), so nothing waits on the
    // device, and the handler is told.
    closeQueued_ = true;
    QMetaObject::invokeMethod(
        &port_,
        [this, alive = alive_] {
            if (!*alive) return;
            closeQueued_ = false;
            if (port_.isOpen()) port_.close();
            port_.clearError();
            commEvent_ = kCommEventError;
            fireOnComm();
        },
        Qt::QueuedConnection);
}

std::unique_ptr<SerialPort> QtSerialPortFactory::create(const std::string& objectName) {
    return std::make_unique<QtSerialPort>(settings_, devices_, objectName);
}

}  // namespace ketrel
