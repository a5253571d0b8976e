// The schema of the books: one text for both engines, changed only by numbered migrations.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/store/database.h"

namespace tolvex::store {

// The number of the newest migration: what this program reads and writes.
int schemaVersion();

// Brings books from schema `from` (0: nothing at all) to schemaVersion(), inside the transaction of
// the caller, and notes the number.
void migrate(Database& db, int from);

// The schema number noted in the books; 0 when there are no books.
int storedSchema(Database& db);

std::string metaValue(Database& db, std::string_view name);  // "" when absent
void setMetaValue(Database& db, std::string_view name, std::string_view value);
int storedEpoch(Database& db);
void raiseEpoch(Database& db);  // other clients must reopen

// Tables that hold what was entered, in the order in which they can be filled. The others are made
// from these.
const std::vector<std::string>& baseTables();
// Base and derived tables and that of the books themselves, those that refer before those referred
// to.
std::vector<std::string> allTables();
// Takes every table of the books away.
void dropTables(Database& db);
// After rows with fixed ids: tells PostgreSQL from where the counters of ids go on.
void moveIdCounters(Database& db);

}  // namespace tolvex::store
