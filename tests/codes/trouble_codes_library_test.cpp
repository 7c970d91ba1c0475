#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <set>

#include "codes/code_sections.h"
#include "codes/trouble_codes_library.h"
#include "support/test_app.h"

namespace ketrel {
namespace {

using data::CodeTable;
using Lookup = void (*)(App&, const std::string&);

TEST(TroubleCodesLibrary, LookupsMatchWholeKeysExactlyAndLeaveEmptyWhenUnknown) {
    struct Case {
        Lookup lookup;
        const char* code;
        const char* text;
    } cases[] = {
        {LookupGeneric, "P0100", "Mass or Volume Air Flow Circuit Malfunction"},
        {LookupGeneric, "p0100", ""},
        {LookupGeneric, "P0101 ", ""},
        {LookupGeneric, "P010", ""},
        {LookupGeneric, "P1641", ""},  // no "P1" key in the generic table
        {LookupGeneric, "P0000", ""},
        {LookupGeneric, "C4123", ""},
        {LookupGM, "P1641", "A/C Relay Control Circuit"},
        {LookupGM, "P1641.", "Malfunction Indicator Lamp Control Circuit"},
        {LookupGM, "P1641..", "Fan Control Relay 1 COntrol Circuit"},
        {LookupGM, "P1641...", ""},
        {LookupGM, "P1530.", " Ignition Timing Adjustment Switch Circuit (M-Body)"},
        {LookupGM, "P1111-T", "IAT Sensor Intermittent Low Temp.(-T Is For Temperature, Saturn)"},
        {LookupGM, "P0100", ""},
        {LookupFord, "P1100", "MAF Sensor Intermittent Fault"},
        {LookupFord, "P1641.", ""},
        {LookupChrysler, "P1698", "No CCD/J1850 Messages From TCM"},
        {LookupChrysler, "P1698.", "PCM Fault, EEPROM Write Denied"},
    };
    test::TestApp t;
    for (const Case& c : cases) {
        t->CodeDescription = "left from before";
        c.lookup(*t, c.code);
        EXPECT_EQ(t->CodeDescription, c.text) << "\"" << c.code << "\"";
    }
}

TEST(TroubleCodesLibrary, QuotedRowsKeepTheirOddSpellingsAndPunctuation) {
    struct Case {
        CodeTable table;
        const char* key;
        const char* text;
    } cases[] = {
        {CodeTable::Generic, "P0420", "Catalyst System Efficiency Below Treshold (Bank1)"},
        {CodeTable::Generic, "P0804", "1-4 Upshift (Skip Shift) Lamp Control Circuit Malfunction"},
        {CodeTable::Ford, "P1001", "KOER Self-Test Not Able To Complete, KOER Aborted"},
        {CodeTable::GM, "P1031", "HO2S-11 Current Monitor Control (Bank 1 Sensor 1)"},
        {CodeTable::GM, "P1530..", "Air Conditioning Refrigerant Pressure Sensor Error"},
        {CodeTable::Chrysler, "P1198", "Radiator Temperator Sensor High Voltage"},
        {CodeTable::Chrysler, "P1695", "NO CCD?J1850 Messages From Body Control Module"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(FindCodeText(c.table, c.key).value_or("<none>"), c.text) << c.key;

    int misspelt = 0, transmissionFault = 0;
    for (const auto& row : data::CodeTableRows(CodeTable::Generic))
        misspelt += row.text.find("Tranasmission Fluid Temperature Sensor Circuit") == 0;
    for (const auto& row : data::CodeTableRows(CodeTable::Ford))
        transmissionFault += row.text == "Transmission System Fault";
    EXPECT_EQ(misspelt, 4);
    EXPECT_EQ(transmissionFault, 10);
}

// The compiled tables against data/dtc.tsv: same rows, same order, same bytes.
TEST(TroubleCodesLibrary, CompiledTablesAreTheDataFileByteForByte) {
    std::ifstream in(KETREL_DATA_DIR "/dtc.tsv", std::ios::binary);
    ASSERT_TRUE(in) << KETREL_DATA_DIR "/dtc.tsv";
    std::map<std::string, std::vector<std::pair<std::string, std::string>>> file;
    std::string line;
    std::getline(in, line);  // header
    while (std::getline(in, line)) {
        std::size_t a = line.find('\t'), b = line.find('\t', a + 1), c = line.find('\t', b + 1);
        file[line.substr(0, a)].emplace_back(line.substr(a + 1, b - a - 1),
                                             line.substr(b + 1, c - b - 1));
    }
    struct Case {
        const char* name;
        CodeTable table;
        std::size_t rows;
    } cases[] = {{"generic", CodeTable::Generic, 455},
                 {"gm", CodeTable::GM, 264},
                 {"ford", CodeTable::Ford, 169},
                 {"chrysler", CodeTable::Chrysler, 80}};
    for (const Case& c : cases) {
        auto rows = data::CodeTableRows(c.table);
        ASSERT_EQ(rows.size(), c.rows) << c.name;
        ASSERT_EQ(file[c.name].size(), c.rows) << c.name;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            EXPECT_EQ(rows[i].key, file[c.name][i].first) << c.name << " row " << i;
            EXPECT_EQ(rows[i].text, file[c.name][i].second) << c.name << " " << rows[i].key;
        }
    }
}

TEST(CodeSections, EachSectionListsItsKeysInOrder) {
    struct Case {
        const char* tab;
        const char* option;
        std::size_t count;
        const char* first;
        const char* last;
    } cases[] = {
        {"&SAE", "P100", 93, "P0100", "P0199"},
        {"&SAE", "P200", 96, "P0200", "P0296"},
        {"&SAE", "P300", 67, "P0300", "P0389"},
        {"&SAE", "P400", 65, "P0400", "P0485"},
        {"&SAE", "P500", 36, "P0500", "P0574"},
        {"&SAE", "P600", 13, "P0600", "P0650"},
        {"&SAE", "P700", 82, "P0700", "P0790"},
        {"&SAE", "P800", 3, "P0801", "P0804"},
        {"&GM", "GMP1000", 1, "P1031", "P1031"},
        {"&GM", "GMP1100", 32, "P1106", "P1189"},
        {"&GM", "GMP1200", 22, "P1200", "P1286"},
        {"&GM", "GMP1300", 30, "P1300", "P1381"},
        {"&GM", "GMP1400", 18, "P1401", "P1483"},
        {"&GM", "GMP1500", 71, "P1500", "P1599."},
        {"&GM", "GMP1600", 81, "P1600", "P1696"},
        {"&GM", "GMP1700", 4, "P1700", "P1780"},
        {"&GM", "GMP1800", 5, "P1810", "P1860"},
        {"&FORD", "FP1000", 2, "P1000", "P1001"},
        {"&FORD", "FP1100", 30, "P1101", "P1184"},  // P1100 left out
        {"&FORD", "FP1200", 23, "P1220", "P1299"},
        {"&FORD", "FP1300", 10, "P1309", "P1390"},
        {"&FORD", "FP1400", 36, "P1400", "P1487"},
        {"&FORD", "FP1500", 21, "P1500", "P1572"},
        {"&FORD", "FP1600", 9, "P1605", "P1651"},
        {"&FORD", "FP1700", 36, "P1701", "P1789"},
        {"&FORD", "FP1900", 1, "P1900", "P1900"},
        {"&CHRYSLER", "CP1100", 5, "P1195", "P1199"},
        {"&CHRYSLER", "CP1200", 14, "P1281", "P1299"},
        {"&CHRYSLER", "CP1300", 7, "P1300", "P1399"},
        {"&CHRYSLER", "CP1400", 23, "P1400", "P1498"},
        {"&CHRYSLER", "CP1500", 7, "P1500", "P1599"},
        {"&CHRYSLER", "CP1600", 15, "P1680", "P1698."},
        {"&CHRYSLER", "CP1700", 8, "P1719", "P1765"},
        {"&CHRYSLER", "CP1800", 1, "P1899", "P1899"},
    };
    ASSERT_EQ(CodeSections().size(), std::size(cases));
    ListBox List1(nullptr, "List1");
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        const Case& c = cases[i];
        const CodeSection& s = CodeSections()[i];
        EXPECT_EQ(s.tab, c.tab);
        EXPECT_EQ(s.option, c.option);
        List1.addItem("left from the last section");
        ListCodeSection(List1, c.option);
        const auto& keys = List1.items();
        ASSERT_EQ(keys.size(), c.count) << c.option;
        EXPECT_EQ(keys.front(), c.first) << c.option;
        EXPECT_EQ(keys.back(), c.last) << c.option;
        EXPECT_TRUE(std::is_sorted(keys.begin(), keys.end())) << c.option;
        // Every key listed can be looked up on its own tab.
        for (const std::string& key : keys)
            EXPECT_TRUE(FindCodeText(s.table, key)) << c.option << " " << key;
    }
    ListCodeSection(List1, "P900");
    EXPECT_EQ(List1.count(), 0);
}

TEST(CodeSections, KeysLieInsideTheirCaptionAndEachKeyIsListedOnceSaveFordP1100) {
    std::map<CodeTable, std::multiset<std::string>> listed;
    for (const CodeSection& s : CodeSections()) {
        // "P0100 - P0199 (...)", "P1200- P1286 (...)" or a single "P1031".
        std::string caption(s.caption);
        std::string from = caption.substr(0, 5);
        std::size_t dash = caption.find('-');
        std::string to = (dash != std::string::npos && dash < 8)
                             ? caption.substr(caption.find('P', dash), 5)
                             : from;
        for (const std::string& key : SectionKeys(s)) {
            EXPECT_GE(key.substr(0, 5), from) << s.option << " " << key;
            EXPECT_LE(key.substr(0, 5), to) << s.option << " " << key;
            listed[s.table].insert(key);
        }
    }
    for (CodeTable table :
         {CodeTable::Generic, CodeTable::GM, CodeTable::Ford, CodeTable::Chrysler}) {
        std::multiset<std::string> all;
        for (const auto& row : data::CodeTableRows(table))
            all.emplace(row.key);
        if (table == CodeTable::Ford) all.erase("P1100");
        EXPECT_EQ(listed[table], all);
    }
    // The one key the browser cannot show still has its text.
    EXPECT_EQ(FindCodeText(CodeTable::Ford, "P1100").value_or(""), "MAF Sensor Intermittent Fault");
}

}  // namespace
}  // namespace ketrel
