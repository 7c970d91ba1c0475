#include "core/ff_report.h"

#include <gtest/gtest.h>

#include "core_fixture.h"
#include "screens/frm_print_ff.h"

namespace ketrel {
namespace {

using test::StartedApp;

std::string describe(const std::string& code) {
    return "text of " + code;
}

// The code block: the edge cases of the three lists and of codes that are not "P0".
TEST(FreezeFrameReport, CodeLines) {
    using V = std::vector<std::string>;
    struct Case {
        V stored, pending, freeze;
        std::string text;
    } cases[] = {
        {{}, {}, {}, ""},
        {{}, {"P0301"}, {}, "P0301 - text of P0301 (Pending)\r\n"},
        {{"P1234", "P0420"},
         {},
         {"P0420"},
         "P1234 - P0420 - text of P0420 (TC)\r\nP0420 - text of P0420 (FF)\r\n"},
        {{"C0035", "U0100"}, {"p0301"}, {}, "C0035 - U0100 - p0301 - "},
        {{"P0171"},
         {"P0172"},
         {"P0173"},
         "P0171 - text of P0171 (TC)\r\nP0172 - text of P0172 (Pending)\r\n"
         "P0173 - text of P0173 (FF)\r\n"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(FaultCodesText(c.stored, c.pending, c.freeze, describe), c.text) << c.text;
}

const PageText* item(const PrintPage& page, const std::string& name) {
    for (const PageText& t : page.items)
        if (t.name == name) return &t;
    return nullptr;
}

// A print from the main screen: "N/A" for an empty vehicle frame, the freeze-frame copies,
// the library's text for a P0 code, and the page order of captions and values.
TEST(FreezeFrameReport, PrintedPage) {
    StartedApp t;
    RecordingPrinter printer;
    t->printer = &printer;
    FrmMain& m = t->frmMain();
    m.lblFFLoad.setText("25.1");
    m.lblFFSTFTB1.setText("-3.1");
    m.lblFFSTFTB2.setText("4.7");
    m.lblFFRPM.setText("812");
    m.lstPendingCodes.addItem("P0301");
    m.lstCodes.addItem("P1234");
    m.cmdPrintFFData.setEnabled(true);
    m.cmdPrintFFData.click();
    ASSERT_EQ(printer.pages.size(), 1u);
    const PrintPage& page = printer.pages[0];
    EXPECT_EQ(page.items.front().text, "KETREL REPORT");
    EXPECT_DOUBLE_EQ(page.items.front().x, 36 + (540 - page.items.front().width) / 2);
    for (const char* f : {"lblYear", "lblMake", "lblModel", "lblAC", "lblCylinder",
                          "lblTransmission", "lblMileage", "lblVin"}) {
        ASSERT_TRUE(item(page, f)) << f;
        EXPECT_EQ(item(page, f)->text, "N/A") << f;
    }
    EXPECT_EQ(item(page, "lblLoad")->text + item(page, "lblSTFTB1")->text, "25.1-3.1");
    EXPECT_EQ(item(page, "lblSTFTB2")->text + item(page, "lblRPM.caption")->text, "");
    const std::string codes = item(page, "txtFaultCodes")->text;
    EXPECT_EQ(codes.rfind("P1234 - P0301 - Cylinder 1 Misfire", 0), 0u) << codes;
    EXPECT_EQ(codes.substr(codes.size() - 12), " (Pending)\r\n") << codes;
    // Captions come in page order, each above the next.
    double lastY = 0;
    for (const PageText& i : page.items) {
        if (i.name.find(".caption") == std::string::npos) continue;
        EXPECT_GT(i.y, lastY) << i.name;
        lastY = i.y;
    }
    EXPECT_GT(lastY, 0);

    // A chosen vehicle prints as chosen; the page is made anew for each print.
    m.cmbYear.setText("1999");
    m.txtVin.setText("-SELECT-");
    m.lstCodes.clear();
    m.lstPendingCodes.clear();
    m.mnuFilePrintFF.setEnabled(true);
    m.mnuFilePrintFF.click();
    ASSERT_EQ(printer.pages.size(), 2u);
    for (auto [field, text] : {std::pair{"lblYear", "1999"},
                               {"lblMake", "N/A"},
                               {"lblVin", "-SELECT-"},
                               {"txtFaultCodes", ""}})
        EXPECT_EQ(item(printer.pages[1], field)->text, text) << field;
    // No printer: the print is passed over.
    t->printer = nullptr;
    m.mnuFilePrintFF.click();
    EXPECT_EQ(printer.pages.size(), 2u);
}

}  // namespace
}  // namespace ketrel
