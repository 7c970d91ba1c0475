#pragma once
#include <string>

namespace ketrel {

// The port number of the ConnectPort setting; text that is no port number is error 8002.
int PortNumber(const std::string& text);

}  // namespace ketrel
