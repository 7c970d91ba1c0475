// The text converter's replies as the scanning port hands them over. The first byte holds the
// session's options, the second picks the pending request (LinkFuzzSession::begin); after them
// each line of the input (up to kReadsPerInput) is one read of the port, its received-data event
// run on it. A chunk "S" asks the next request, a chunk starting with "V" closes the frame gathered
// so far and decodes it.
#include <cstddef>
#include <cstdint>

#include "link/dorvane_link.h"
#include "link/link_fuzz_session.h"

namespace {

ketrel::fuzz::LinkFuzzSession& Session() {
    static ketrel::fuzz::LinkFuzzSession* session = [] {
        auto* s = new ketrel::fuzz::LinkFuzzSession(ketrel::kDorvane, "MSComm");
        s->begin("", 0, 0);
        // The support lists the connect read, through the same chunk handler.
        for (const char* chunk : {"V486B104100BE1FA813", "V486B10420000180000000", "S"})
            ketrel::HandleDorvaneChunk(s->app(), chunk);
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
    s.begin("", options, in.byte());
    for (int read = 0; read < ketrel::fuzz::kReadsPerInput && !in.done(); ++read) {
        s.scan().buffer = in.until('\n');
        ketrel::DorvaneScanReceive(s.app());
    }
    return 0;
}
