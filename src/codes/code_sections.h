#pragma once
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/dtc_tables.h"

namespace ketrel {

class ListBox;

// One section of the code library as the browser offers it: the tab it stands on, the name
// and caption of its option, its table and the numbers it counts through (first and last,
// bare five-character numbers, both included).
struct CodeSection {
    std::string_view tab;
    std::string_view option;
    std::string_view caption;
    data::CodeTable table;
    std::string_view first;
    std::string_view last;
};

// The thirty-four sections, tab by tab, in the order of their options.
std::span<const CodeSection> CodeSections();

// The section of an option ("P100", "GMP1300", "FP1100", "CP1800"); null if there is none.
const CodeSection* FindCodeSection(std::string_view option);

// The keys a section lists: every key of its table whose number lies in the section, in
// table order, so each suffixed key follows its bare number. The Ford section "P1100 - P1184"
// counts from P1101, so the key P1100 is in no list.
std::vector<std::string> SectionKeys(const CodeSection& section);

// What each section option runs: List1 is cleared and takes the keys of the section. An
// unknown option leaves the list empty.
void ListCodeSection(ListBox& List1, std::string_view option);

}  // namespace ketrel
