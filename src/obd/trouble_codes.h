#pragma once

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

}  // namespace ketrel
