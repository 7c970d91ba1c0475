// Build step: checks data/dtc.tsv against data/dtc_keys.txt and writes the C++ tables.
// Usage: dtc_table_gen <dtc.tsv> <dtc_keys.txt> <output.cpp>. Any problem is printed and the
// step fails, so the program is never built from tables that lack or repeat a key.
#include <fstream>
#include <iostream>

#include "data/generator/dtc_table_check.h"

int main(int argc, char** argv) {
    using namespace ketrel::dtcgen;
    if (argc != 4) {
        std::cerr << "usage: dtc_table_gen <dtc.tsv> <dtc_keys.txt> <output.cpp>\n";
        return 2;
    }
    std::ifstream tsv(argv[1]), keys(argv[2]);
    if (!tsv || !keys) {
        std::cerr << "dtc_table_gen: cannot read " << (tsv ? argv[2] : argv[1]) << "\n";
        return 1;
    }
    std::vector<std::string> errors;
    std::vector<Row> rows = ParseRows(tsv, errors);
    std::vector<KeyList> lists = ParseKeyLists(keys, errors);
    if (errors.empty()) {
        for (const KeyList& list : lists)
            CheckTable(list, rows, errors);
    }
    if (!errors.empty()) {
        for (const std::string& e : errors)
            std::cerr << argv[1] << ": " << e << "\n";
        std::remove(argv[3]);
        return 1;
    }
    std::ofstream out(argv[3], std::ios::binary | std::ios::trunc);
    out << EmitTables(rows);
    out.close();
    if (!out) {
        std::cerr << "dtc_table_gen: cannot write " << argv[3] << "\n";
        std::remove(argv[3]);
        return 1;
    }
    return 0;
}
