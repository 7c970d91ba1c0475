#pragma once
#include <string>

namespace ketrel {

class App;

// Mode 03 reply: stored codes into lstCodes and gridTroubleCode.
void DecodeTroubleCodes(App& app);
// Mode 07 reply: pending codes into lstPendingCodes and gridPending.
void DecodePendingCodes(App& app);
// Mode 02 PID 02 reply: the code that stored the freeze frame.
void DecodeFreezeCode(App& app);
// Mode 04 reply: a "44" answer wipes every code field.
void ApplyClearReply(App& app);

// Headers and column widths of both code grids (run at start-up and after every wipe).
void FormatCodeGrids(App& app);
// gridTroubleCode: hidden column 0, "DTC", "TYPE", "DESCRIPTION"; row 1 is the freeze code.
void FormatTroubleGrid(App& app);
// gridPending: hidden column 0, "DTC", "DESCRIPTION".
void FormatPendingGrid(App& app);

// The letter of a code from the bit text of its first byte: "00" "P", "01" "C", "10" "B",
// "11" "U"; "" when the bit text is shorter than two characters.
std::string CodeLetter(const std::string& bits);
// The code text of byte pair n (1 to 9) of the reply: the letter, then ByteHex(2n-1) and
// ByteHex(2n). The two top bits stay in the first hex digit (0x41 0x23 gives "C4123"). An
// empty ByteBits(2n-1) gives "".
std::string CodeText(const App& app, int n);

// Handler of RequestTimer: empties what a code request that got no answer left behind.
void RequestTimerElapsed(App& app);

}  // namespace ketrel
