// The raw K-line reads as KeshDelay finds them in the port, our own request's echo in front.
// The first byte holds the session's options in its low four bits and, in bit 4, ISO 9141
// ("03") or KWP 2000 ("04"); the second picks the pending request (LinkFuzzSession::begin).
// That request goes out first and is the echo to strip; then each read (up to kReadsPerInput)
// is a length byte and that many bytes.
#include <cstddef>
#include <cstdint>
#include <string>

#include "link/kesh_receive.h"
#include "link/kesh_request.h"
#include "link/link_fuzz_session.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ketrel::fuzz::LinkFuzzSession& s =
        ketrel::fuzz::IsoSession(ketrel::kKesh, "KeshMSComm", ketrel::KeshDelayTick);
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
