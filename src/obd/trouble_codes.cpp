#include "obd/trouble_codes.h"

#include "state/app.h"

namespace ketrel {

// The trouble-code replies are decoded by the trouble-code work that follows; until then the
// receive path consumes these replies without effect.
void DecodeTroubleCodes(App&) {}
void DecodePendingCodes(App&) {}
void DecodeFreezeCode(App&) {}
void ApplyClearReply(App&) {}

}  // namespace ketrel
