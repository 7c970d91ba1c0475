#pragma once
#include <algorithm>
#include <cstdint>

#include "screens/controls.h"

namespace ketrel {

// A horizontal bar that fills from its minimum to its value, in its own bar and background
// colours: the large display's gauge of one value.
class ProgressBar : public Control {
  public:
    using Control::Control;
    ControlKind kind() const override { return ControlKind::ProgressBar; }

    int min() const { return s_.min; }
    int max() const { return s_.max; }
    int value() const { return s_.value; }
    std::int64_t barColor() const { return s_.bar; }
    std::int64_t backColor() const { return s_.back; }

    // A new range keeps the value inside it.
    void setRange(int min, int max) {
        if (max < min) max = min;
        State n = s_;
        n.min = min;
        n.max = max;
        n.value = std::clamp(n.value, min, max);
        apply(n);
    }
    // A value outside the range is held at its nearer end.
    void setValue(int v) {
        State n = s_;
        n.value = std::clamp(v, s_.min, s_.max);
        apply(n);
    }
    void setBarColor(std::int64_t c) {
        State n = s_;
        n.bar = c;
        apply(n);
    }
    void setBackColor(std::int64_t c) {
        State n = s_;
        n.back = c;
        apply(n);
    }

  protected:
    void saveDesignState() override { d_ = s_; }
    void restoreDesignState() override { s_ = d_; }

  private:
    struct State {
        int min = 0, max = 100, value = 0;
        std::int64_t bar = kDefaultColor, back = kDefaultColor;
        bool operator==(const State&) const = default;
    } s_, d_;
    void apply(const State& n) {
        if (n == s_) return;
        s_ = n;
        notify();
    }
};

}  // namespace ketrel
