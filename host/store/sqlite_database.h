// SQLite behind the Database interface: one file, write-ahead log, every commit flushed.
#pragma once

#include <memory>
#include <string>

#include "host/store/database.h"

namespace tolvex::store {

std::unique_ptr<Database> openSqlite(const std::string& path, const Database::Options& options);

// Copies a whole open SQLite database, as of one moment, into a new file. False: stopped by
// `progress` (share 0..1).
bool copySqlite(Database& from, const std::string& file, bool (*progress)(void*, double),
                void* context);

}  // namespace tolvex::store
