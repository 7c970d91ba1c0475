#include <gtest/gtest.h>

#include <algorithm>

#include "codes/trouble_code_browser.h"
#include "codes/trouble_codes_library.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

using Items = std::vector<std::string>;

int indexOf(const ListBox& l, const std::string& item) {
    auto it = std::find(l.items().begin(), l.items().end(), item);
    return it == l.items().end() ? -1 : int(it - l.items().begin());
}

TEST(TroubleCodeBrowser, TabsSectionsAndDefinitionsFollowTheChosenTable) {
    test::TestApp t;
    InstallTroubleCodeBrowser(*t);
    FrmTroubleCode& s = *TroubleCodeScreen(*t);
    ASSERT_EQ(s.options().size(), 34u);
    s.show();
    EXPECT_TRUE(s.option("P100")->value());
    EXPECT_EQ(s.List1.item(0), "P0100");

    struct Case {
        int tab;
        const char* firstOption;
        const char* option;
        const char* firstItem;
        int count;  // -1: not checked
        const char* code;
        const char* text;
    } cases[] = {
        {0, "P100", "P100", "P0100", -1, "P0171", "System Too Lean (Bank 1)"},
        {0, "P100", "P400", "P0400", -1, "P0420",
         "Catalyst System Efficiency Below Treshold (Bank1)"},
        {0, "P100", "P800", "P0801", 3, "P0804",
         "1-4 Upshift (Skip Shift) Lamp Control Circuit Malfunction"},
        {1, "GMP1000", "GMP1000", "P1031", 1, "P1031",
         "HO2S-11 Current Monitor Control (Bank 1 Sensor 1)"},
        {1, "GMP1000", "GMP1600", "P1600", -1, "P1641.",
         "Malfunction Indicator Lamp Control Circuit"},
        {1, "GMP1000", "GMP1100", "P1106", -1, "P1111-T",
         "IAT Sensor Intermittent Low Temp.(-T Is For Temperature, Saturn)"},
        {2, "FP1000", "FP1000", "P1000", 2, "P1001",
         "KOER Self-Test Not Able To Complete, KOER Aborted"},
        // The list is ascending and starts at P1101: P1100 is in none.
        {2, "FP1000", "FP1100", "P1101", -1, "P1101", nullptr},
        {3, "CP1100", "CP1100", "P1195", 5, "P1198", "Radiator Temperator Sensor High Voltage"},
        {3, "CP1100", "CP1600", "P1680", -1, "P1698.", "PCM Fault, EEPROM Write Denied"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.option);
        s.lblDefine.setText("left over");
        s.SSTab1.setTab((c.tab + 1) % 4);
        s.SSTab1.setTab(c.tab);
        // A tab change shows its first section, chosen, and no definition.
        EXPECT_TRUE(s.option(c.firstOption)->value());
        EXPECT_EQ(s.lblDefine.text(), "");
        s.option(c.option)->click();
        EXPECT_TRUE(s.option(c.option)->value());
        EXPECT_EQ(s.option(c.firstOption)->value(), std::string(c.option) == c.firstOption);
        ASSERT_GT(s.List1.count(), 0);
        EXPECT_EQ(s.List1.item(0), c.firstItem);
        if (c.count >= 0) {
            EXPECT_EQ(s.List1.count(), c.count);
        }
        const int at = indexOf(s.List1, c.code);
        ASSERT_GE(at, 0);
        s.List1Click(at);
        EXPECT_EQ(s.lblDefine.text(),
                  c.text ? c.text : *FindCodeText(data::CodeTable::Ford, c.code));
    }
}

TEST(TroubleCodeBrowser, OpeningCopiesTheVehiclesCodesOnlyWithASessionAndCodes) {
    const Items none{"No Codes Available!"};
    struct Case {
        const char* name;
        bool connected;
        Items codes, freeze, pending;
        Items current, pend;
    } cases[] = {
        {"no session", false, {"P0301"}, {}, {"P0420"}, none, none},
        {"no codes", true, {}, {}, {}, none, none},
        {"stored and freeze frame",
         true,
         {"P0301", "P0171"},
         {"P0300"},
         {},
         {"P0301", "P0171", "P0300 (FF)"},
         {}},
        {"pending only", true, {}, {}, {"P0420", "P1234"}, {}, {"P0420", "P1234"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        test::TestApp t;
        InstallTroubleCodeBrowser(*t);
        FrmMain& m = t->frmMain();
        m.show();
        t->Connected = c.connected;
        for (const auto& code : c.codes)
            m.lstCodes.addItem(code);
        for (const auto& code : c.freeze)
            m.lstFreezeCodes.addItem(code);
        for (const auto& code : c.pending)
            m.lstPendingCodes.addItem(code);
        FrmTroubleCode& s = *TroubleCodeScreen(*t);
        s.show();
        EXPECT_EQ(s.lstTCodes.items(), c.current);
        EXPECT_EQ(s.lstPend.items(), c.pend);
        EXPECT_FALSE(m.enabled());
        s.mnuFileExit.click();
        EXPECT_FALSE(s.loaded());
        EXPECT_TRUE(m.enabled());
        // Closed, the screen is back to its design state.
        EXPECT_EQ(s.lstTCodes.items(), none);
    }
}

}  // namespace
}  // namespace ketrel
