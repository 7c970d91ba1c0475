#pragma once

namespace ketrel {

// Raises the program to the highest scheduling priority the system allows it, so that the
// request delay and the K-line timing hold; does nothing when it may not.
void RaiseProcessPriority();

}  // namespace ketrel
