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

namespace {

ketrel::fuzz::LinkFuzzSession& Session() {
    static ketrel::fuzz::LinkFuzzSession* session = [] {
        auto* s = new ketrel::fuzz::LinkFuzzSession(ketrel::kBr3, "BR3MSComm");
        s->begin("03", 0, 0);
        // The support lists of an ISO 9141 car, read through the receive path.
        for (const std::string& answer :
             {std::string("\x48\x6B\x10\x41\x00\xBE\x1F\xA8\x13\x00", 10),
              std::string("\x48\x6B\x10\x42\x00\x00\x18\x00\x00\x00\x00", 11)}) {
            s->scan().buffer = answer;
            ketrel::BR3DelayTick(s->app());
        }
        s->keepLinkState();
        return s;
    }();
    return *session;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ketrel::fuzz::LinkFuzzSession& s = Session();
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
