#pragma once
#include <cstddef>
#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

namespace ketrel::soak {

// One list or buffer that grows with use, as it stood at the end of a soak, against the bound
// it must keep (0: nothing bounds it but the length of the run; reported, not judged).
struct BufferSize {
    std::string name;
    std::size_t size = 0;
    std::size_t cap = 0;
};

// What a long session of one link device against the simulated car left behind.
struct SoakReport {
    std::string device;
    double virtualHours = 0;
    double realSeconds = 0;
    long rssFirstMinuteKb = 0;
    long rssEndKb = 0;
    bool connected = false;  // the session was still up at the end
    long decoded = 0;        // frames with text that the decoders got while recording
    long recorded = 0;       // frames with text in the recorded log, read back from the file
    long emptyReads = 0;     // recorded reads that found nothing (they reach no decoder)
    long codeRequests = 0;   // presses of the code buttons
    long quietHours = 0;     // virtual hours in which no frame was decoded
    std::vector<std::string> messages;  // message boxes the session showed
    std::vector<BufferSize> buffers;
};

// The link devices by the short names the soak takes: DORVANE, BR3, KESH, TACTRIX.
const std::vector<std::string>& SoakDevices();

// Connects `device` to its simulated car on virtual time, records the whole session into a
// temporary program folder, presses a code button every `codesEveryMinutes` virtual minutes
// (stored, pending and freeze-frame code in turn) and runs for `virtualMinutes`. `progress`,
// when set, hears each virtual hour.
SoakReport RunSoak(const std::string& device, double virtualMinutes, int codesEveryMinutes = 15,
                   const std::function<void(const SoakReport&)>& progress = {});

// Why a soak failed; empty when it passed. `rssGrowthLimitKb` < 0 leaves memory unjudged.
std::vector<std::string> SoakFailures(const SoakReport& r, long rssGrowthLimitKb);

// The report as the bench prints it.
void PrintSoakReport(std::ostream& out, const SoakReport& r);

// Resident memory of this process in kB, from /proc/self/statm; 0 where it can't be read.
long ResidentKb();

}  // namespace ketrel::soak
