// The count-byte converter's answers as BR3Delay finds them in the port. The first byte holds
// the session's options in its low four bits and the protocol in the next two ("01" J1850 PWM
// to "04" KWP 2000), the second picks the pending request (LinkFuzzSession::begin). The
// request of that tick goes out first; then each read (up to kReadsPerInput) is a length byte
// and that many bytes.
#include <cstddef>
#include <cstdint>
#include <string>

#include "link/br3_receive.h"
#include "link/br3_request.h"
#include "link/link_fuzz_session.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ketrel::fuzz::LinkFuzzSession& s =
        ketrel::fuzz::IsoSession(ketrel::kBr3, "BR3MSComm", ketrel::BR3DelayTick);
    ketrel::fuzz::InputReader in(data, size);
    const std::uint8_t options = in.byte();
    const std::string protocol = "0" + std::to_string(((options >> 4) & 0x03) + 1);
    s.begin(protocol, options, in.byte());
    ketrel::BR3Request(s.app(), ketrel::Br3LineFor(protocol));
    for (int read = 0; read < ketrel::fuzz::kReadsPerInput && !in.done(); ++read) {
        s.scan().buffer = in.bytes(in.byte());
        ketrel::BR3DelayTick(s.app());
    }
    return 0;
}
