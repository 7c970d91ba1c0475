#pragma once
#include <array>
#include <memory>
#include <string>
#include <vector>

#include "screens/screen.h"

namespace ketrel {

// The ten standard oxygen-sensor tests of one sensor: the sensor list, a row of raw value,
// scaled value and limits per test, and the two one-shot waits of the request sequence.
class FrmMode5 : public Screen {
  public:
    explicit FrmMode5(EventLoop& loop);

    ComboBox cmbO2{this, "cmbO2"};
    Field cmdOk{this, "cmdOk"};
    Field cmdManuf{this, "cmdManuf"};
    // Row captions, by the indices the rows use, and the column headings.
    ControlArray<Field> Label1{this, "Label1"};
    StatusPanel Panel1{this, "StatusBar1.Panels", 1};

    // Row n of 1 to 10: raw and scaled value; minimum and maximum on rows 5 to 10 only.
    Field& lblRaw(int n) { return *raw_.at(std::size_t(n - 1)); }
    Field& lblTest(int n) { return *test_.at(std::size_t(n - 1)); }
    Field& lblMin(int n) { return *min_.at(std::size_t(n - 5)); }
    Field& lblMax(int n) { return *max_.at(std::size_t(n - 5)); }
    static bool hasLimits(int n) { return n >= 5 && n <= 10; }
    // The index of row n's caption in Label1.
    static int captionIndex(int n);

    Timer& BR3Delay;
    Timer& KeshDelay;

    // The sequence's own variables: busy while the ten tests run (the screen may not close),
    // and the decimal texts of the last reply's three bytes per test ("" when none came).
    bool Mode5Busy = false;
    std::array<std::string, 10> Mode5Test{}, Mode5Min{}, Mode5Max{};

  private:
    std::vector<std::unique_ptr<Field>> raw_, test_, min_, max_;
};

}  // namespace ketrel
