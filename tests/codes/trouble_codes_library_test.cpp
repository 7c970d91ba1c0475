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
    // More of them are read through the code browser.
    EXPECT_EQ(FindCodeText(CodeTable::GM, "P1530..").value_or(""),
              "Air Conditioning Refrigerant Pressure Sensor Error");
    EXPECT_EQ(FindCodeText(CodeTable::Chrysler, "P1695").value_or(""),
              "NO CCD?J1850 Messages From Body Control Module");

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

TEST(CodeSections, KeysLieInsideTheirCaptionAndEachKeyIsListedOnceSaveFordP1100) {
    std::map<CodeTable, std::multiset<std::string>> listed;
    ListBox List1(nullptr, "List1");
    EXPECT_EQ(CodeSections().size(), 34u);
    for (const CodeSection& s : CodeSections()) {
        // The option lists the section's keys in order, every one with a text on its tab.
        EXPECT_EQ(FindCodeSection(s.option), &s);
        List1.addItem("left from the last section");
        ListCodeSection(List1, s.option);
        EXPECT_EQ(List1.items(), SectionKeys(s)) << s.option;
        EXPECT_FALSE(List1.items().empty()) << s.option;
        EXPECT_TRUE(std::is_sorted(List1.items().begin(), List1.items().end())) << s.option;
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
            EXPECT_TRUE(FindCodeText(s.table, key)) << s.option << " " << key;
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
    ListCodeSection(List1, "P900");
    EXPECT_EQ(List1.count(), 0);
    // The one key the browser cannot show still has its text.
    EXPECT_EQ(FindCodeText(CodeTable::Ford, "P1100").value_or(""), "MAF Sensor Intermittent Fault");
}

}  // namespace
}  // namespace ketrel
