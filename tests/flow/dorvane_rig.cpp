#include "flow/dorvane_rig.h"

#include <fstream>
#include <sstream>

namespace ketrel::test {

std::string DorvaneRig::log() const {
    std::ifstream in(ConnectLog::pathFor(t.dir.path()), std::ios::binary);
    std::stringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

}  // namespace ketrel::test
