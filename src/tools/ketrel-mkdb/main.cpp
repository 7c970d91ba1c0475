// ketrel-mkdb: makes one of the program's small SQLite databases from a schema file, then loads
// rows kept as tab-separated text into its tables, for the build and the install.
// Usage: ketrel-mkdb OUT.db SCHEMA.sql [TABLE=FILE.tsv ...]
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include "tsv_loader.h"

#include "platform/sqlite_db.h"

namespace {

// Runs the schema, then every TABLE=FILE.tsv load, on an open database; false with the
// reason printed.
bool fill(ketrel::SqliteDb& db, const std::string& schemaFile, char** loads, int count) {
    std::ifstream in(schemaFile, std::ios::binary);
    if (!in) {
        std::cerr << "ketrel-mkdb: cannot read " << schemaFile << "\n";
        return false;
    }
    std::stringstream sql;
    sql << in.rdbuf();
    if (!db.execScript(sql.str())) {
        std::cerr << "ketrel-mkdb: " << schemaFile << ": " << db.error() << "\n";
        return false;
    }
    for (int i = 0; i < count; ++i) {
        const std::string arg = loads[i];
        const auto eq = arg.find('=');
        std::string error;
        if (eq == std::string::npos || eq == 0) {
            std::cerr << "ketrel-mkdb: expected TABLE=FILE.tsv, got " << arg << "\n";
            return false;
        }
        if (!ketrel::LoadTsvIntoTable(db, arg.substr(0, eq), arg.substr(eq + 1), error)) {
            std::cerr << "ketrel-mkdb: " << arg.substr(eq + 1) << ": " << error << "\n";
            return false;
        }
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: ketrel-mkdb OUT.db SCHEMA.sql [TABLE=FILE.tsv ...]\n";
        return 2;
    }
    const std::filesystem::path out = argv[1];
    // Made afresh under a temporary name, then moved into place, so a failed run never
    // leaves a half-made database where the program looks for one.
    const std::filesystem::path tmp = out.string() + ".tmp";
    std::error_code ec;
    std::filesystem::remove(tmp, ec);
    std::filesystem::create_directories(out.parent_path().empty() ? "." : out.parent_path(), ec);
    ketrel::SqliteDb db;
    if (!db.open(tmp, true)) {
        std::cerr << "ketrel-mkdb: " << tmp.string() << ": " << db.error() << "\n";
        return 1;
    }
    if (!fill(db, argv[2], argv + 3, argc - 3)) {
        db.close();
        std::filesystem::remove(tmp, ec);
        return 1;
    }
    db.close();
    std::filesystem::rename(tmp, out, ec);
    if (ec) {
        std::cerr << "ketrel-mkdb: " << out.string() << ": " << ec.message() << "\n";
        return 1;
    }
    return 0;
}
