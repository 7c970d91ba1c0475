#pragma once

namespace ketrel {

class App;

// A decoder of one PID: reads the reply cells and the unit settings, writes text into fields.
using PidDecoder = void (*)(App& app);

// The value decoder of a Mode 01 PID from 03 to 1F (main screen fields; PIDs 03 to 13 also
// write the freeze-frame fields when RxMode is "02"), or nullptr for any other PID.
PidDecoder MainValueDecoder(int pid);

// The value decoder of a Mode 01 PID from 21 to 4E (extended data screen), or nullptr.
PidDecoder ExtendedValueDecoder(int pid);

// Either of the two.
inline PidDecoder ValueDecoder(int pid) {
    PidDecoder d = MainValueDecoder(pid);
    return d ? d : ExtendedValueDecoder(pid);
}

}  // namespace ketrel
