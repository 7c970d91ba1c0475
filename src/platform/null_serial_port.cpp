#include "platform/null_serial_port.h"

namespace ketrel {

void NullSerialPort::setPortOpen(bool open) {
    if (open) throw SerialError(kErrInvalidPort, "Invalid Port Number");
}

}  // namespace ketrel
