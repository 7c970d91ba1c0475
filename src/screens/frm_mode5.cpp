#include "screens/frm_mode5.h"

namespace ketrel {

namespace {

// Row captions of the ten tests and where each stands in Label1.
struct RowCaption {
    int index;
    const char* text;
};
constexpr RowCaption kRowCaptions[10] = {
    {16, "Threshold Voltage (Rich To Lean) - $01"},
    {15, "Threshold Voltage (Lean To Rich) - $02"},
    {14, "Time Cross Over 300 mV - $03"},
    {13, "Time Cross Over 600 mV - $04"},
    {20, "Switch Time (Rich To Lean) - $05"},
    {41, "Switch Time (Lean To Rich) - $06"},
    {12, "Minimum Voltage - $07"},
    {42, "Maximum Voltage - $08"},
    {43, "Time Between Transitions - $09"},
    {0, "Sensor Period (Calculated) - $0A"},
};

}  // namespace

int FrmMode5::captionIndex(int n) {
    return kRowCaptions[n - 1].index;
}

FrmMode5::FrmMode5(EventLoop& loop)
    : Screen(loop, "frmMode5", "MODE 5 (SAE)"),
      BR3Delay(makeTimer(250)),
      KeshDelay(makeTimer(250)) {
    for (int n = 1; n <= 10; ++n) {
        const std::string s = std::to_string(n);
        raw_.push_back(std::make_unique<Field>(this, "lblRaw" + s));
        test_.push_back(std::make_unique<Field>(this, "lblTest" + s));
        if (hasLimits(n)) {
            min_.push_back(std::make_unique<Field>(this, "lblMin" + s));
            max_.push_back(std::make_unique<Field>(this, "lblMax" + s));
        }
    }
    cmdOk.setText("&SAE");
    cmdManuf.setText("&MANUFACTURE");
    // Until a test has answered, each row reads "N/A" and is greyed out.
    for (int n = 1; n <= 10; ++n) {
        std::vector<Field*> row{&lblRaw(n), &lblTest(n)};
        if (hasLimits(n)) row.insert(row.end(), {&lblMin(n), &lblMax(n)});
        for (Field* f : row)
            f->setText("N/A");
        Field& caption = Label1[captionIndex(n)];
        caption.setText(kRowCaptions[n - 1].text);
        row.push_back(&caption);
        for (Field* f : row)
            f->setEnabled(false);
    }
    Panel1.setText("");
    markDesign();
}

}  // namespace ketrel
