#include "codes/code_sections.h"

#include <algorithm>

#include "screens/controls.h"

namespace ketrel {

namespace {

using data::CodeTable;

constexpr CodeSection kSections[] = {
    {"&SAE", "P100", "P0100 - P0199 (Fuel And Air Metering)", CodeTable::Generic, "P0100", "P0199"},
    {"&SAE", "P200", "P0200 - P0296 (Fuel And Air Metering)", CodeTable::Generic, "P0200", "P0299"},
    {"&SAE", "P300", "P0300 - P0389 ( Ignition System Or Misfire)", CodeTable::Generic, "P0300",
     "P0399"},
    {"&SAE", "P400", "P0400 - P0485 ( Auxiliary Emission Controls)", CodeTable::Generic, "P0400",
     "P0499"},
    {"&SAE", "P500", "P0500 - P0574 (Vehicle Speed, Idle Control, Auxiliary Input)",
     CodeTable::Generic, "P0500", "P0599"},
    {"&SAE", "P600", "P0600 - P0650 (Computer And Auxiliary Output Devices)", CodeTable::Generic,
     "P0600", "P0699"},
    {"&SAE", "P700", "P0700 - P0790 (Transmission)", CodeTable::Generic, "P0700", "P0799"},
    {"&SAE", "P800", "P0801 - P0804 (Transmission)", CodeTable::Generic, "P0800", "P0899"},
    {"&GM", "GMP1000", "P1031", CodeTable::GM, "P1000", "P1099"},
    {"&GM", "GMP1100", "P1106 - P1189 (Fuel And Air Metering)", CodeTable::GM, "P1100", "P1199"},
    {"&GM", "GMP1200", "P1200- P1286 (Fuel And Air Metering)", CodeTable::GM, "P1200", "P1299"},
    {"&GM", "GMP1300", "P1300 - P1381 ( Ignition System Or Misfire)", CodeTable::GM, "P1300",
     "P1399"},
    {"&GM", "GMP1400", "P1401 - P1483 ( Auxiliary Emission Controls)", CodeTable::GM, "P1400",
     "P1499"},
    {"&GM", "GMP1500", "P1500- P1599 (Vehicle Speed, Idle Control, Auxiliary Input)", CodeTable::GM,
     "P1500", "P1599"},
    {"&GM", "GMP1600", "P1600 - P1696 (Computer And Auxiliary Output Devices)", CodeTable::GM,
     "P1600", "P1699"},
    {"&GM", "GMP1700", "P1700 - P1780 (Transmission)", CodeTable::GM, "P1700", "P1799"},
    {"&GM", "GMP1800", "P1810 - P1860 (Transmission)", CodeTable::GM, "P1800", "P1899"},
    {"&FORD", "FP1000", "P1000 - P1001", CodeTable::Ford, "P1000", "P1099"},
    // Counts from P1101: the key P1100 stays out of every list.
    {"&FORD", "FP1100", "P1100 - P1184 (Fuel And Air Metering)", CodeTable::Ford, "P1101", "P1199"},
    {"&FORD", "FP1200", "P1220 - P1299 (Fuel And Air Metering)", CodeTable::Ford, "P1200", "P1299"},
    {"&FORD", "FP1300", "P1309 - P1390 ( Ignition System Or Misfire)", CodeTable::Ford, "P1300",
     "P1399"},
    {"&FORD", "FP1400", "P1400 - P1487 ( Auxiliary Emission Controls)", CodeTable::Ford, "P1400",
     "P1499"},
    {"&FORD", "FP1500", "P1500 - P1572 (Vehicle Speed, Idle Control, Auxiliary Input)",
     CodeTable::Ford, "P1500", "P1599"},
    {"&FORD", "FP1600", "P1605 - P1651 (Computer And Auxiliary Output Devices)", CodeTable::Ford,
     "P1600", "P1699"},
    {"&FORD", "FP1700", "P1701 - P1789 (Transmission)", CodeTable::Ford, "P1700", "P1799"},
    {"&FORD", "FP1900", "P1900 (Transmission)", CodeTable::Ford, "P1900", "P1999"},
    {"&CHRYSLER", "CP1100", "P1195 - P1199 (Fuel And Air Metering)", CodeTable::Chrysler, "P1100",
     "P1199"},
    {"&CHRYSLER", "CP1200", "P1200 - P1299 (Fuel And Air Metering)", CodeTable::Chrysler, "P1200",
     "P1299"},
    {"&CHRYSLER", "CP1300", "P1300 - P1399 ( Ignition System Or Misfire)", CodeTable::Chrysler,
     "P1300", "P1399"},
    {"&CHRYSLER", "CP1400", "P1400 - P1498 ( Auxiliary Emission Controls)", CodeTable::Chrysler,
     "P1400", "P1499"},
    {"&CHRYSLER", "CP1500", "P1500 - P1599 (Vehicle Speed, Idle Control, Auxiliary Input)",
     CodeTable::Chrysler, "P1500", "P1599"},
    {"&CHRYSLER", "CP1600", "P1680 - P1698 (Computer And Auxiliary Output Devices)",
     CodeTable::Chrysler, "P1600", "P1699"},
    {"&CHRYSLER", "CP1700", "P1719- P1765 (Transmission)", CodeTable::Chrysler, "P1700", "P1799"},
    {"&CHRYSLER", "CP1800", "P1899 (Transmission)", CodeTable::Chrysler, "P1800", "P1899"},
};

}  // namespace

std::span<const CodeSection> CodeSections() {
    return kSections;
}

const CodeSection* FindCodeSection(std::string_view option) {
    auto it = std::find_if(std::begin(kSections), std::end(kSections),
                           [&](const CodeSection& s) { return s.option == option; });
    return it == std::end(kSections) ? nullptr : &*it;
}

std::vector<std::string> SectionKeys(const CodeSection& section) {
    std::vector<std::string> keys;
    for (const data::CodeRow& row : data::CodeTableRows(section.table)) {
        // The number is the first five characters; a suffix rides along with it.
        std::string_view number = row.key.substr(0, 5);
        if (number >= section.first && number <= section.last) keys.emplace_back(row.key);
    }
    return keys;
}

void ListCodeSection(ListBox& List1, std::string_view option) {
    List1.clear();
    const CodeSection* section = FindCodeSection(option);
    if (!section) return;
    for (const std::string& key : SectionKeys(*section))
        List1.addItem(key);
}

}  // namespace ketrel
