#pragma once
#include <string_view>

namespace ketrel::data {

// The vehicle frame's lists, built into the program from data/vehicles/*.tsv: lines of
// tab-separated entries, the key (year or make) first; lines starting with '#' are notes.
std::string_view MakesByYearTsv();
std::string_view ModelsByMakeTsv();

}  // namespace ketrel::data
