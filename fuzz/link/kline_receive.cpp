// The raw K-line reads as KeshDelay finds them in the port, our own request's echo in front.
// The first byte holds the session's options in its low four bits and, in bit 4, ISO 9141
// ("03") or KWP 2000 ("04"); the second picks the pending request (LinkFuzzSession::begin).
// That request goes out first and is the echo to strip; then each read (up to kReadsPerInput)
// is a length byte and
// that many bytes.
#include <cstddef>
#include <cstdint>
#include <string>

#include "link/kesh_receive.h"
#include "link/kesh_request.h"
#include "link/link_fuzz_session.h"

namespace {

ketrel::fuzz::LinkFuzzSession& Session() {
    static ketrel::fuzz::LinkFuzzSession* session = [] {
        auto* s = new ketrel::fuzz::LinkFuzzSession(ketrel::kKesh, "KeshMSComm");
        s->begin("03", 0, 0);
        // The support lists of an ISO 9141 car, read through the receive path.
        for (const std::string& answer :
             {std::string("\x48\x6B\x10\x41\x00\xBE\x1F\xA8\x13\x00", 10),
              std::string("\x48\x6B\x10\x42\x00\x00\x18\x00\x00\x00\x00", 11)}) {
            s->scan().buffer = answer;
            ketrel::KeshDelayTick(s->app());
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
    s.begin(options & 0x10 ? "04" : "03", options, in.byte());
    ketrel::KeshRequestNext(s.app());
    for (int read = 0; read < ketrel::fuzz::kReadsPerInput && !in.done(); ++read) {
        s.scan().buffer = in.bytes(in.byte());
        ketrel::KeshDelayTick(s.app());
    }
    return 0;
}
