#pragma once
#include <ostream>

#include "core/headless_replay.h"

namespace ketrel::exporter {

// Message boxes of the tool: on the standard error behind the program's name, answered with
// Cancel where the box has one, else with its default button.
class StreamDialogs : public ketrel::StreamDialogs {
  public:
    explicit StreamDialogs(std::ostream& err) : ketrel::StreamDialogs(err, "ketrel-export: ") {}
};

using ketrel::NoLauncher;

}  // namespace ketrel::exporter
