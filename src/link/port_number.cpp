#include "link/port_number.h"

#include <cctype>

#include "platform/serial_port.h"

namespace ketrel {

int PortNumber(const std::string& text) {
    std::size_t i = 0;
    while (i < text.size() && text[i] == ' ')
        ++i;
    long value = 0;
    std::size_t digits = 0;
    for (; i < text.size() && std::isdigit(static_cast<unsigned char>(text[i])); ++i, ++digits) {
        value = value * 10 + (text[i] - '0');
        if (value > 32767) break;
    }
    while (i < text.size() && text[i] == ' ')
        ++i;
    if (digits == 0 || i != text.size() || value < 1 || value > 32767) {
        throw SerialError(kErrInvalidPort, "Invalid Port Number");
    }
    return int(value);
}

}  // namespace ketrel
