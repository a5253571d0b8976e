// The schema of the books: one text for both engines, changed only by numbered migrations.
//
// Tokens of the text: @ID@ a running id; @KEY@ a running id that is never given twice, for records
// that screens hold by their id (a stale screen must not write onto a newcomer); @WR@ a table kept
// in the order of its key.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/store/database.h"

namespace tolvex::store {

// The number of the newest migration: what this program reads and writes.
int schemaVersion();

// The text with the tokens of an engine.
std::string schemaFor(Engine engine, std::string_view text);

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
// Tables with a running id, whose counters PostgreSQL must be told after rows with fixed ids.
const std::vector<std::string>& tablesWithIds();
void moveIdCounters(Database& db);

}  // namespace tolvex::store
