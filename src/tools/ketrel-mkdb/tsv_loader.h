#pragma once
#include <string>

#include "platform/sqlite_db.h"

namespace ketrel {

// Loads a tab-separated file into a table: the first line names the columns, each further line
// is one row, inserted in file order. Columns the table does not have are left out, so notes
// kept beside the rows (their origin) stay in the file. False with the reason in error.
bool LoadTsvIntoTable(SqliteDb& db, const std::string& table, const std::string& file,
                      std::string& error);

}  // namespace ketrel
