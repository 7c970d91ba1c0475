// ketrel-mkdb: makes one of the program's small SQLite databases from a schema file (and the
// rows that file inserts), for the build and the install. Usage: ketrel-mkdb OUT.db SCHEMA.sql
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include "platform/sqlite_db.h"

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: ketrel-mkdb OUT.db SCHEMA.sql\n";
        return 2;
    }
    const std::filesystem::path out = argv[1];
    std::ifstream in(argv[2], std::ios::binary);
    if (!in) {
        std::cerr << "ketrel-mkdb: cannot read " << argv[2] << "\n";
        return 1;
    }
    std::stringstream sql;
    sql << in.rdbuf();
    // Made afresh under a temporary name, then moved into place, so a failed run never
    // leaves a half-made database where the program looks for one.
    const std::filesystem::path tmp = out.string() + ".tmp";
    std::error_code ec;
    std::filesystem::remove(tmp, ec);
    std::filesystem::create_directories(out.parent_path().empty() ? "." : out.parent_path(), ec);
    ketrel::SqliteDb db;
    if (!db.open(tmp, true) || !db.execScript(sql.str())) {
        std::cerr << "ketrel-mkdb: " << argv[2] << ": " << db.error() << "\n";
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
