#pragma once

namespace ketrel {

// Holds the calling thread at a real-time priority (SCHED_FIFO), and optionally all memory
// locked, while it lives, so that a few seconds of edge timing are not preempted or paged.
// Where the system refuses either, it carries on without; the previous policy comes back
// when the section ends. Sections nest, but only the outermost should lock memory. With
// `enabled` false (a loop on virtual time) it does nothing.
class RealtimeSection {
  public:
    explicit RealtimeSection(bool lockMemory, bool enabled = true);
    ~RealtimeSection();
    RealtimeSection(const RealtimeSection&) = delete;
    RealtimeSection& operator=(const RealtimeSection&) = delete;

    // Whether the thread runs at the real-time priority now.
    bool raised() const { return raised_; }
    // Whether memory is locked now.
    bool locked() const { return locked_; }

  private:
    bool raised_ = false;
    bool locked_ = false;
    int oldPolicy_ = 0;
    int oldPriority_ = 0;
};

}  // namespace ketrel
