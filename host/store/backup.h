// Copying the base tables of books from one database to another, of either engine.
#pragma once

#include "host/store/books.h"

namespace tolvex::store {

// Fills the empty base tables of `to`. Both must have the present schema; `to` is in a transaction.
// Throws Stopped.
void copyBaseTables(Database& from, Database& to, const Progress& progress);
// Empties all tables, base and derived, but for the rows that the schema itself brings.
void emptyTables(Database& db);

}  // namespace tolvex::store
